#include "platform/com/Unicode.h"

#include "platform/com/Com.h"

namespace platform {

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
