#include "platform/com/Com.h"

namespace platform {

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
