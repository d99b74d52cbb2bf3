// platform/MessageBox.h: the standard message box.
//
// Shapes  `style` is Windows' style word; bits that Windows would refuse are left out. Answers are the standard
//         numbers (1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No), 0 where no box could be shown.
// Effects modal over the thread's active window; pumps messages.
#pragma once
#include <cstdint>
#include <string>

namespace platform {

// An empty title stands for "Corvella Outlook AddIn".
std::int32_t ShowMessageBox(const std::string& text, std::int32_t style, const std::string& title = {}) noexcept;

}  // namespace platform
