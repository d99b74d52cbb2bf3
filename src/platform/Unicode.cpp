#include "platform/Unicode.h"

#include <windows.h>

namespace platform {

std::wstring Widen(std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string Narrow(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    const auto convert = [&](char* to, int room) {
        return WideCharToMultiByte(CP_ACP, 0, text.data(), size, to, room, nullptr, nullptr);
    };
    std::string narrow(text.size(), '\0');  // a byte for a letter suffices in most code pages
    int length = convert(narrow.data(), size);
    if (length == 0 && size > 0) {
        length = convert(nullptr, 0);
        narrow.resize(static_cast<std::size_t>(length));
        length = convert(narrow.data(), length);
    }
    narrow.resize(static_cast<std::size_t>(length));
    return narrow;
}

std::string Utf16Bytes(std::string_view text) {
    const std::wstring wide = Widen(text);
    static_assert(sizeof(wchar_t) == 2);
    return std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t));
}

std::string Utf8(std::string_view text) {
    const std::wstring wide = Widen(text);
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, bytes.data(), length, nullptr, nullptr);
    return bytes;
}

}  // namespace platform
