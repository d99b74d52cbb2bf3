// config/InifileCV.h: where the settings shared with the main application are kept, decided once per process: the
// storage mode and the settings files (IniFile::location), their folder, and the files that lie beside them.
//
// Shapes  ANSI text; folders end in a backslash.
// Errors  trapped and logged; missing registry values fall back as each procedure says.
// Effects GetIniFile reads and writes the registry, may move an installer's "config.ini" to its place, and may ask
//         the user for a folder that can be written (Prompt) or tell of a profile whose file is missing, once.
#pragma once
#include <cstdint>
#include <string>

namespace InifileCV {

struct State {
    std::string SettingsFolder;  // holds "corvella.ini"
    std::string DefaultsFile;    // "defaults.ini" in the add-in folder
    std::string ConfigFile;  // "config.ini" in the add-in folder or in the roaming data folder; empty: there is none
    std::string DefaultProfile = "Corvella";  // this profile, like "standard", is the base settings file itself

    std::string IniFiles;             // the folder that the registry names, or that the user entered
    bool IniFilesRead = false;        // the registry was asked
    bool IniFilesUnreadable = false;  // and is therefore left as it is
    bool PathsSought = false;         // PathsInit was run for them
    bool PromptEnded = false;         // the user left the question for a folder unanswered, and is not asked again
    bool Asking = false;              // the user is being asked for a folder
    bool MissingProfileTold = false;
};
extern State state;

// The message of the language file for a profile whose settings file is missing; "%f" in it is that file's name.
inline constexpr std::int32_t missingProfileMessage = 139;

// Everything above; the language files are set up last.
void GetIniFile();

// The current settings file; it, the base settings file and the settings folder are set.
std::string GetMainIniFile(std::int32_t storageMode);

// The settings folder.
[[nodiscard]] std::string GetIniFilename_(std::int32_t storageMode);

struct Ports {
    void (*setUpLanguage)() = nullptr;  // which GetIniFile runs at its end
};

// Returns what was plugged in before.
Ports Plug(const Ports& ports) noexcept;

}  // namespace InifileCV
