#include "config/Paths.h"

#include <utility>

#include "config/IniFile.h"
#include "config/PathRules.h"
#include "platform/Environment.h"
#include "platform/Err.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/Product.h"
#include "support/RegEdit.h"

using platform::WithBackslash;
using RegEdit::GetRegString;
using RegEdit::Root;

namespace WindowsMisc {

Paths paths;

namespace {

constexpr std::string_view shellFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr std::size_t shortestPath = 3;
constexpr double vista = 6.0;

enum SpecialFolder : std::int32_t { Windows = 0, System = 1, Temporary = 2 };  // the scripting object's numbers

Ports plugged;

std::string PathOfFolder(SpecialFolder folder) {
    return Files::FileSystem().Object("GetSpecialFolder", static_cast<std::int32_t>(folder)).Text("Path");
}

void FindSystemFolders() {
    paths.WindowsFolder = WithBackslash(PathOfFolder(Windows));
    paths.SystemFolder = WithBackslash(PathOfFolder(System));
    paths.TemporaryFolder = TemporaryFolderFrom(PathOfFolder(Temporary), paths.WindowsFolder,
                                                platform::EnvironmentVariable, Files::FolderExists);
}

void FindUserFolders() {
    paths.AppData = GetRegString(Root::CurrentUser, shellFolders, "AppData");
    if (paths.AppData.size() < shortestPath) {
        paths.AppData = paths.TemporaryFolder;
        paths.RoamingDataFolder = paths.AddInFolder;
        paths.UserName = unknownUser;
    } else {
        paths.AppData = WithBackslash(paths.AppData);
        paths.RoamingDataFolder = paths.AppData + Product::Folder;
        paths.UserName = UserNameIn(paths.AppData);
    }
}

std::string ProductFolderIn(Root root, std::string_view name) {
    const std::string folder = GetRegString(root, shellFolders, name);
    return folder.empty() ? paths.RoamingDataFolder : WithBackslash(folder).append(Product::Folder);
}

// Required in this sense, whatever the setting's name suggests.
bool PicturesLieWithTheUsersData() {
    return Files::WindowsVersion() >= vista ||
           platform::Val(IniFile::GetIniSetting("Settings", "UseApplAsBMPDir", {}, true)) != 0;
}

}  // namespace

void PathsInit() {
    const platform::ErrorScope ownErrors;
    const Debug::Trace trace("PathsInit");
    Files::EnsureFileSystemObject();
    FindSystemFolders();
    if (paths.AddInFolder.empty()) paths.AddInFolder = Files::AppFolder();
    FindUserFolders();
    paths.LocalDataFolder = ProductFolderIn(Root::CurrentUser, "Local AppData");
    paths.CommonDataFolder = ProductFolderIn(Root::LocalMachine, "Common AppData");
    if (IniFile::location.CurrentFile.empty() && plugged.findSettings != nullptr) plugged.findSettings();
    paths.PictureFolder = PicturesLieWithTheUsersData() ? paths.LocalDataFolder : paths.AddInFolder;
}

Ports Plug(const Ports& ports) noexcept { return std::exchange(plugged, ports); }

}  // namespace WindowsMisc
