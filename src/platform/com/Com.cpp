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
    const int length = WideCharToMultiByte(CP_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

std::string TextOf(BSTR text) { return text ? Narrow({text, SysStringLen(text)}) : std::string(); }

Bstr::Bstr(std::string_view text) {
    const std::wstring wide = Widen(text);
    text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

BSTR* Bstr::Put() noexcept {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
}

std::string Bstr::Text() const { return TextOf(text_); }

}  // namespace platform
