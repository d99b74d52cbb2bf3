// config/IniFile.h: the settings, wherever they are kept: in ini files shared with the main application, or in the
// registry. All other modules read and write settings here, and none opens an ini file itself.
//
// Shapes  ANSI text; names, values and files as in IniText.h; numbers are decimal text. In the registry a section is
//         a key below "Software\Quillmark\Corvella\" and a setting a text value in it.
// Errors  All swallowed: a read yields its default. Of a write the procedures tell whether there was anything to write,
//         not whether it reached the disk: a flush that fails changes nothing in that. False also where the file
//         cannot be read, which is then not written. The caller's pending error stays as it was. With an empty file
//         name every read yields its default and nothing is written.
// Owns    one cache of files (IniCache.h); what is not flushed is lost if the process ends without IniInit.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "config/IniText.h"

namespace IniFile {

// Where the settings are kept; InifileCV sets it before the first setting is read.
inline constexpr std::int32_t inRegistry = 2;  // any other mode: in files
struct Location {
    std::string CurrentFile;  // of the user's profile
    std::string BaseFile;     // the one in which the profile is chosen
    std::int32_t StorageMode = 0;
};
extern Location location;

// Writes back every changed file, empties the cache and reads the size limit "MaxSize" of section "Files". With
// `onlyOnce` nothing is done when it has run before.
void IniInit(bool onlyOnce);

// The value, or the default where it is missing or empty.
//   Registry  A result equal to the default is, with `useLegacyLocation`, replaced by what the
//             product's earlier location holds.
//   Files     A section name that ends in a backslash is also looked for without it.
//   With `textComparison` the names in a file are compared without regard to case.
[[nodiscard]] std::string GetIniSetting(std::string_view section, std::string_view key,
                                        std::string_view defaultText = {}, bool useLegacyLocation = false,
                                        bool textComparison = false);
[[nodiscard]] std::int32_t GetIniSettingLong(std::string_view section, std::string_view key, std::int32_t defaultNumber,
                                             bool useLegacyLocation = false);

// The empty value deletes. In a file the result is whether there was anything to write, in the registry whether the
// value now reads as written. `option` has no effect.
bool SetIniSetting(std::string_view section, std::string_view key, std::string_view value, bool flush,
                   std::int32_t option = 0);
bool SetIniSettingLong(std::string_view section, std::string_view key, std::int32_t number, bool flush,
                       std::int32_t option = 0);

// The same in the base settings file.
[[nodiscard]] std::string GetIniSettingDefault(std::string_view section, std::string_view key,
                                               std::string_view defaultText = {}, bool useLegacyLocation = false,
                                               bool textComparison = false);
bool SetIniSettingDefault(std::string_view section, std::string_view key, std::string_view value, bool flush,
                          std::int32_t option = 0);

// Any ini file; `defaultText` only where nothing is found.
[[nodiscard]] std::string ReadFromIniFile(const std::string& fileName, std::string_view section, std::string_view key,
                                          std::string_view defaultText = {},
                                          IniText::Comparison comparison = IniText::Comparison::Exact);
bool WriteToIniFile(const std::string& fileName, std::string_view section, std::string_view key, std::string_view value,
                    bool flush, std::int32_t option = 0);

}  // namespace IniFile
