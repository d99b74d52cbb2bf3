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

// A path that holds no blank loses the double quotes around it; any other keeps them.
[[nodiscard]] std::string WithoutQuotesAround(std::string_view path);

// Behind the last "\"; the whole path where there is none.
[[nodiscard]] std::string_view GetFileNamePart(std::string_view path);

// Up to the last "\", without it; empty where there is none.
[[nodiscard]] std::string_view FolderPart(std::string_view path);

// Whether `path` names a folder by its looks: no "." behind its last "\".
[[nodiscard]] bool LooksLikeFolder(std::string_view path);

// A path that can be written: "_" in place of every "?" and "/".
[[nodiscard]] std::string WritablePath(std::string_view path);

}  // namespace Files
