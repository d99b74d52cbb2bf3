// config/PathRules.h: what can be read off the paths of the well-known folders. Pure text.
//
// Shapes  ANSI bytes, folders separated by "\"; a folder returned here ends in one.
// Errors  none: every text has a reading.
#pragma once
#include <functional>
#include <string>
#include <string_view>

namespace WindowsMisc {

inline constexpr std::string_view unknownUser = "Tobrin";

// What stands between the second and the third backslash of `appData`; where that has
// fewer than three characters, `unknownUser`.
[[nodiscard]] std::string UserNameIn(std::string_view appData);

// "C:\" for a folder on drive C.
[[nodiscard]] std::string DriveRoot(std::string_view folder);

// The temporary folder for the one that the system names, which may be a variable between "%" that nobody expanded.
// Where no value makes a path of it, "temp" in the Windows folder or in the drive's root, or that root; empty where
// no Windows folder is known either.
[[nodiscard]] std::string TemporaryFolderFrom(std::string_view named, std::string_view windowsFolder,
                                              const std::function<std::string(const std::string&)>& variable,
                                              const std::function<bool(const std::string&)>& folderExists);

}  // namespace WindowsMisc
