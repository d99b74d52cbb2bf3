// config/SettingsFiles.h: the names of the settings files in a folder of settings. Pure text.
//
// Shapes  ANSI bytes, folders separated by "\\" and ending in one.
// Errors  none: every text has a reading.
#pragma once
#include <string>
#include <string_view>

namespace SettingsFiles {

inline constexpr std::string_view Base = "corvella.ini";

// The base settings file of that folder; one that is called "PageRelay" has a name of its own for it.
[[nodiscard]] std::string BaseFileIn(const std::string& folder);
// Whether the profile is the base file itself.
[[nodiscard]] bool IsBaseProfile(const std::string& profile, std::string_view defaultProfile);
// The whole path of a profile that is named by its path, or by its name in that folder.
[[nodiscard]] std::string ProfileFileIn(const std::string& folder, const std::string& profile);

}  // namespace SettingsFiles
