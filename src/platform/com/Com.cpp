#include "platform/com/Com.h"

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

std::string TextOf(BSTR text) { return text ? Narrow({text, SysStringLen(text)}) : std::string(); }

Bstr::Bstr(std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
    text_ = SysAllocStringLen(nullptr, static_cast<UINT>(length));
    if (text_ && MultiByteToWideChar(CP_ACP, 0, text.data(), size, text_, length) != length)
        SysFreeString(std::exchange(text_, nullptr));
}

BSTR* Bstr::Put() noexcept {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
}

std::string Bstr::Text() const { return TextOf(text_); }

}  // namespace platform
