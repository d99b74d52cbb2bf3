// support/Files.h: tolerant file operations.
//
// Shapes  Paths are ANSI text; folders end in a backslash.
// Errors  the neutral result of each procedure.
#pragma once
#include <string>

namespace Files {

// The folder of the add-in's library; empty where it is not known.
[[nodiscard]] std::string AppFolder();

// Where AppFolder takes the application's path from (null: the module that this code is linked into). Answers what
// was plugged in before.
using PathSource = std::string (*)();
PathSource PlugApplicationPath(PathSource source) noexcept;

}  // namespace Files
