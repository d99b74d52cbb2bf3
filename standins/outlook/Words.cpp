#include "outlook/Words.h"

#include <algorithm>
#include <cstdio>

namespace standin {

std::wstring Wide(std::string_view ansi) {
    const int size = static_cast<int>(ansi.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, ansi.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, ansi.data(), size, wide.data(), length);
    return wide;
}

std::string Ansi(std::wstring_view wide) {
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(CP_ACP, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string ansi(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), size, ansi.data(), length, nullptr, nullptr);
    return ansi;
}

bool SameText(std::wstring_view left, std::wstring_view right) {
    return CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, left.data(), static_cast<int>(left.size()), right.data(),
                          static_cast<int>(right.size())) == CSTR_EQUAL;
}

bool SameName(std::string_view left, std::string_view right) {
    const auto lowered = [](char letter) { return letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char one, char other) { return lowered(one) == lowered(other); });
}

std::wstring Readable(std::wstring_view caption) {
    std::wstring readable;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == L'&' && ++i == caption.size()) break;
        readable.push_back(caption[i]);
    }
    return readable;
}

std::string Hex(unsigned long value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08lX", value);
    return text;
}

std::string Quote(std::string_view text) { return '"' + std::string(text) + '"'; }

}  // namespace standin
