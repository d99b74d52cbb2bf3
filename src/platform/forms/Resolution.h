// platform/forms/Resolution.h: the dots an inch that a form is drawn with.
//
// A host may count one resolution for all screens, as Windows did before 10, or each screen's own; which one it is, is a
// matter of the thread at the time when a window is made. A form takes it as it finds it.
#pragma once
#include <windows.h>

#include <cstdint>

#include "platform/Geometry.h"

namespace platform {

// Told to a window that came to a screen of another resolution; Windows has no name for it in the headers of 2000.
inline constexpr UINT resolutionChanged = 0x02E0;  // WM_DPICHANGED

// Those of the screen which `window` is on, where the window counts each screen's own; else the thread's for all screens.
[[nodiscard]] std::int32_t DotsAnInchOf(HWND window);

// The same place and size after such a change.
[[nodiscard]] Rect Rescaled(const Rect& place, std::int32_t dotsBefore, std::int32_t dotsNow);

}  // namespace platform
