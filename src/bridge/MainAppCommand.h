// bridge/MainAppCommand.h: the command lines with which the main application is started. Pure text.
//
// Shapes  ANSI bytes; the program's path in double quotes, a blank, the argument.
// Errors  none: every folder and argument has a command line.
#pragma once
#include <string>
#include <string_view>

namespace MainAppCommand {

// A command of the user. `folder` gets a backslash where it has none; an argument with "sync" in it, in any case, is
// marked as a request from Outlook.
[[nodiscard]] std::string Call(std::string_view folder, std::string_view argument);

// The change-watch timer's. A folder that ends in a backslash gets another one.
[[nodiscard]] std::string Update(std::string_view folder);

}  // namespace MainAppCommand
