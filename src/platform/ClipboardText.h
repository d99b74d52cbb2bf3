// platform/ClipboardText.h: a text on the clipboard.
#pragma once
#include <string_view>

namespace platform {

// ANSI text in place of what is there; false while another program holds the clipboard.
bool PutTextOnClipboard(std::string_view text) noexcept;

}  // namespace platform
