// config/Paths.h: the well-known folders, found once and kept for the process.
//
// Shapes  ANSI text; every folder ends in a backslash.
// Errors  What the system does not tell is replaced as each member says; nothing is shown to the user.
// Effects PathsInit reads the registry and asks the scripting object; GetIniFile, which it runs, may ask the user.
#pragma once
#include <string>

namespace WindowsMisc {

struct Paths {
    std::string WindowsFolder;
    std::string SystemFolder;
    std::string TemporaryFolder;
    std::string AddInFolder;        // of the add-in's library
    std::string AppData;            // the user's; the temporary folder where the system names none
    std::string RoamingDataFolder;  // the product's, in AppData; the add-in's where there is none
    std::string LocalDataFolder;    // as the roaming one where the system names none
    std::string CommonDataFolder;   // the same
    std::string PictureFolder;      // the add-in's or the local data folder
    std::string UserName;
};
extern Paths paths;

// Fills them, and runs GetIniFile if no current settings file is known yet.
void PathsInit();

struct Ports {
    void (*findSettings)() = nullptr;  // which PathsInit runs to find the settings files (InifileCV)
};

// Returns what was plugged in before.
Ports Plug(const Ports& ports) noexcept;

}  // namespace WindowsMisc
