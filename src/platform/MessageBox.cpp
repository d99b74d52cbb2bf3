#include "platform/MessageBox.h"

#include <windows.h>

namespace platform {
namespace {

// Buttons, icon, default button, help button, foreground, topmost, right-aligned and right-to-left text.
constexpr std::uint32_t understood = 0x001D4F7Fu;

}  // namespace

std::int32_t ShowMessageBox(const std::string& text, std::int32_t style, const std::string& title) noexcept {
    const HWND owner = GetActiveWindow();
    const UINT modality = owner == nullptr ? MB_TASKMODAL | MB_SETFOREGROUND : MB_APPLMODAL;
    const UINT buttons = static_cast<std::uint32_t>(style) & understood;
    return MessageBoxA(owner, text.c_str(), title.empty() ? "Corvella Outlook AddIn" : title.c_str(),
                       buttons | modality);
}

}  // namespace platform
