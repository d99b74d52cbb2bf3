// platform/Desktop.h: the top-level windows of all programs, and the screen that they are on.
//
// Shapes  Pixels of the screen; a window's rectangle with its border. Titles are ANSI, read up to 255 characters.
// Errors  a window that is not there (any more), or does not answer, changes nothing and returns the neutral value.
// Effects windows of other programs; RunPendingMessages handles whatever this thread has been sent, and with it
//         whatever else the host does.
#pragma once
#include <optional>
#include <string_view>

#include "platform/Geometry.h"

struct HWND__;

namespace platform {

using WindowHandle = HWND__*;

// The first, from the top of the screen down, whose title holds `part`, case-sensitive; null where none does.
// OtherPrograms: the windows of this process are passed over.
enum class Whose { Anybodys, OtherPrograms };
[[nodiscard]] WindowHandle TopWindowWithTitle(std::string_view part, Whose whose = Whose::Anybodys);

// Asks the window to close, and waits for its answer unless its program hangs.
void AskToClose(WindowHandle window);

[[nodiscard]] std::optional<Rect> WindowRect(WindowHandle window);
// Leaves the order of the windows and the active one as they are.
void MoveWindowTo(WindowHandle window, const Rect& position);
// Before all windows that are not; leaves its place, its size and the active window as they are.
void MakeTopmost(WindowHandle window);

[[nodiscard]] Size ScreenSize();
// The resolution that Windows tells this process; 96 where it tells none.
[[nodiscard]] int DotsPerInch();

void RunPendingMessages();

}  // namespace platform
