#include "platform/com/Com.h"

namespace platform {

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
