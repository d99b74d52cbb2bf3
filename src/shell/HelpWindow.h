// shell/HelpWindow.h: how large the help viewer is made the first time. Pure: no Windows header, no globals.
//
// Shapes  Pixels of the screen; the window's with its border.
// Errors  none: every rectangle has an answer.
#pragma once
#include <optional>

#include "platform/forms/Control.h"

namespace HelpWindow {

// A window narrower than 600 grows to the left, one lower than 500 downwards. None where it is to stay as it is: large
// enough, or with no room for its new left edge on the screen.
[[nodiscard]] std::optional<platform::Rect> Enlarge(const platform::Rect& window, platform::Size screen);

}  // namespace HelpWindow
