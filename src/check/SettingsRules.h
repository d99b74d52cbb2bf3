// check/SettingsRules.h: which settings and which language the add-in will find, by the same rules but without its
// effects: the add-in makes what is missing, a check does not. Pure.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Check {

// The folder of the settings, with a backslash at its end. `otherwise` is where they go without AppData.
[[nodiscard]] std::string SettingsFolder(std::int32_t storageMode, std::string_view iniFiles, std::string_view appData,
                                         const std::string& otherwise);
// The file of the profile that the base file's text chooses; empty for the base file itself.
[[nodiscard]] std::string ProfileFile(std::string_view baseText, const std::string& folder);

// What the settings hide ("Hide") or disable ("Disable") in any of the add-in's forms.
[[nodiscard]] std::vector<std::string> RestrictedControls(std::string_view baseText, std::string_view key);

// The settings of `english` that `other` lacks.
[[nodiscard]] int MissingKeys(std::string_view english, std::string_view other);

// That the letters of a language file need; 0 where it has none beyond ASCII, or does not say.
[[nodiscard]] std::uint32_t CodePageOf(std::string_view languageFile);

}  // namespace Check
