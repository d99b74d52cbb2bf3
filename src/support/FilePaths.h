// support/FilePaths.h: paths as text. Pure: no Windows header, no globals.
//
// Shapes  ANSI bytes, folders separated by "\".
// Errors  none: every text has a reading.
#pragma once
#include <string>
#include <string_view>

namespace Files {

// The add-in's folder for an application that runs from `applicationPath`: with a backslash at its end. A path with
// "\j Projects\" in it is a development tree, whose parent folder it is. The empty path stays empty.
[[nodiscard]] std::string AppFolderOf(std::string_view applicationPath);

}  // namespace Files
