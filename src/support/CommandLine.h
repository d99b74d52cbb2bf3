// support/CommandLine.h: command lines as text. Pure: no Windows header, no globals.
//
// Shapes  ANSI bytes; the program's path comes first, in double quotes where it has blanks.
// Errors  none: every text has a reading.
#pragma once
#include <string_view>

namespace CommandLine {

// What stands behind the program's path, without the blanks around it.
[[nodiscard]] std::string_view Arguments(std::string_view commandLine);

}  // namespace CommandLine
