// shell/WindowsMiscLaunch.h: starting documents, web pages and e-mail, and what is registered to open them.
//
// Shapes  ANSI text; commands as in ExecText.h.
// Errors  swallowed, after they were logged; nothing is shown. What is not registered is the empty text, a window
//         that is not there null. The caller's pending error stays as it was.
// Effects processes; FindWindowByTitle handles pending messages.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Desktop.h"

namespace WindowsMisc {

// Opens a document, a program with arguments, a web address or a "mailto:" address. A registered program gets a normal
// window; what the desktop is to open ("start ...") gets a minimised one. `style` is not used.
void ExecApp(const std::string& command, std::int32_t style = -1);

// The command that opens files of the extension, its marks for the file written as "%l" in double quotes.
[[nodiscard]] std::string GetApplForExt(const std::string& extension);

// The first top-level window whose title holds `title`, case-sensitive.
[[nodiscard]] platform::WindowHandle FindWindowByTitle(std::string_view title,
                                                       platform::Whose whose = platform::Whose::Anybodys);

}  // namespace WindowsMisc
