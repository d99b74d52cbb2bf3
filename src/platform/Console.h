// platform/Console.h: words of a program with windows to the console, file or pipe from which it was started.
#pragma once
#include <string_view>

namespace platform {

// ANSI text; a console gets it in its own code page. False where there is none: Windows 2000 gives a program with
// windows only what its output was redirected to.
bool WriteToConsole(std::string_view text);

}  // namespace platform
