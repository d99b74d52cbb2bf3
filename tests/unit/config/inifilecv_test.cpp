// The settings folder, profiles and the storage modes, with real files and a registry of their own.
#include "config/InifileCV.h"

#include <doctest.h>
#include <windows.h>

#include <string>

#include "config/IniFile.h"
#include "config/Paths.h"
#include "platform/Err.h"
#include "support/Files.h"
#include "testing/AnsweringPrompt.h"
#include "testing/ComForTests.h"
#include "testing/DebugLog.h"
#include "testing/ImportPatch.h"
#include "testing/OwnTemp.h"
#include "testing/PrivateRegistry.h"
#include "testing/RealFunction.h"
#include "testing/TempFolder.h"

using namespace InifileCV;
using IniFile::location;
using WindowsMisc::paths;
using WindowsMisc::PathsInit;

namespace {

const std::string productKey = "Software\\Quillmark\\Corvella";
const std::string settingsKey = productKey + "\\Settings";
const std::string shellFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

std::string addInFolder;
std::string AddInFolder() { return addInFolder; }

int languagesSetUp = 0;
void CountLanguageSetUp() { ++languagesSetUp; }

double windowsVersion = 6.0;
double Version() { return windowsVersion; }

// Made, and its type library loaded by a first call, while the registry is still that of the machine.
const platform::Dispatch& ScriptingObject() {
    static const auto* const object = new platform::Dispatch(platform::CreateObject("Scripting.FileSystemObject"));
    return *object;
}
struct WithScriptingObject {
    WithScriptingObject() { REQUIRE(ScriptingObject().Text("GetFileName", "C:\\a\\b") == "b"); }
};

// A machine of its own: an empty registry but for the user's folders, which lie in a folder of the test.
class Machine : WithScriptingObject {
  public:
    Machine() {
        for (const char* name : {"AddIn", "Windows temp", "Users", "Users\\Maria", "Users\\Maria\\Local"}) Make(name);
        Make("Roaming");
        addInFolder = folder.Path("AddIn");
        windowsVersion = 6.0;
        Files::Plug({AddInFolder, [] { return ScriptingObject(); }, nullptr, Version});
        WindowsMisc::Plug({GetIniFile});
        Plug({CountLanguageSetUp});
        languagesSetUp = 0;
        SetAppData(folder.Path("Roaming"));
        Start();
    }
    ~Machine() {
        Start();
        IniFile::IniInit(false);
        Plug({});
        WindowsMisc::Plug({});
        Files::Plug({});
    }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // As if the process had just begun.
    static void Start() {
        location = {};
        paths = {};
        state = {};
        IniFile::IniInit(false);
    }
    void Make(const std::string& name) const { CreateDirectoryA(folder.Path(name).c_str(), nullptr); }
    static void SetAppData(const std::string& path) {
        PrivateRegistry::PutText(HKEY_CURRENT_USER, shellFolders, "AppData", path);
    }
    static void SetIniFiles(const std::string& path) {
        PrivateRegistry::PutText(HKEY_CURRENT_USER, productKey, "IniFiles", path);
    }
    [[nodiscard]] static std::string IniFilesValue() {
        return PrivateRegistry::Raw(HKEY_CURRENT_USER, productKey, "IniFiles").bytes;
    }
    [[nodiscard]] std::string Default(const std::string& name = {}) const {
        return folder.Path("Roaming\\Corvella\\" + name);
    }
    void Settings(const std::string& text) const {
        Make("Roaming\\Corvella");
        folder.Write("Roaming\\Corvella\\corvella.ini", text);
    }

    PrivateRegistry registry;
    TempFolder folder;
    AnsweringPrompt user;
};

// The first question about the attributes of that file fails.
std::string unseenFile;
DWORD unseenError = 0;
DWORD WINAPI AttributesButOnce(LPCSTR path) {
    if (lstrcmpiA(path, unseenFile.c_str()) == 0) {
        unseenFile.clear();
        SetLastError(unseenError);
        return INVALID_FILE_ATTRIBUTES;
    }
    return GetFileAttributesW(std::wstring(path, path + lstrlenA(path)).c_str());
}
// Of what the product keeps, nothing can be read.
LONG WINAPI FailToRead(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    if (lstrcmpiA(name, "SaveIn") == 0 || lstrcmpiA(name, "IniFiles") == 0) return ERROR_NOT_ENOUGH_MEMORY;
    return Real<decltype(&RegQueryValueExA)>("advapi32.dll", "RegQueryValueExA")(key, name, reserved, type, data, size);
}
class UnseenOnce {
  public:
    UnseenOnce(const std::string& file, DWORD error) {
        const ImportPatch::Import imports[] = {
            {"KERNEL32.dll", "GetFileAttributesA", reinterpret_cast<void*>(AttributesButOnce)}};
        REQUIRE(patch_.Replace(GetModuleHandleA(nullptr), imports) == 1);
        unseenFile = file;
        unseenError = error;
    }

  private:
    ImportPatch patch_;
};

}  // namespace

TEST_SUITE_BEGIN("the well-known folders");

TEST_CASE("the folders of the system are taken from the scripting object, with a backslash at their end") {
    const Machine machine;
    PathsInit();
    char windows[MAX_PATH];
    GetWindowsDirectoryA(windows, sizeof windows);
    char system[MAX_PATH];
    GetSystemDirectoryA(system, sizeof system);
    CHECK(lstrcmpiA(paths.WindowsFolder.c_str(), (std::string(windows) + "\\").c_str()) == 0);
    CHECK(lstrcmpiA(paths.SystemFolder.c_str(), (std::string(system) + "\\").c_str()) == 0);
    CHECK(paths.TemporaryFolder.size() > 3);
    CHECK(paths.TemporaryFolder.back() == '\\');
    CHECK(Files::FolderExists(paths.TemporaryFolder));
    CHECK(paths.AddInFolder == addInFolder + "\\");
}

TEST_CASE("the product's data folders lie in those of the user and of all users") {
    const Machine machine;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, shellFolders, "Local AppData", "C:\\Local");
    PrivateRegistry::PutText(HKEY_LOCAL_MACHINE, shellFolders, "Common AppData", "C:\\Common\\");
    PathsInit();
    CHECK(paths.AppData == machine.folder.Path("Roaming\\"));
    CHECK(paths.RoamingDataFolder == machine.Default());
    CHECK(paths.LocalDataFolder == "C:\\Local\\Corvella\\");
    CHECK(paths.CommonDataFolder == "C:\\Common\\Corvella\\");
}

TEST_CASE("without local and common data folders the roaming one takes their place") {
    const Machine machine;
    PathsInit();
    CHECK(paths.LocalDataFolder == machine.Default());
    CHECK(paths.CommonDataFolder == machine.Default());
}

TEST_CASE("without AppData the temporary folder takes its place and the roaming data folder is the add-in folder") {
    const Machine machine;
    Machine::SetAppData("C:");
    location.CurrentFile = "C:\\known.ini";
    PathsInit();
    CHECK(paths.AppData == paths.TemporaryFolder);
    CHECK(paths.RoamingDataFolder == paths.AddInFolder);
    CHECK(paths.LocalDataFolder == paths.AddInFolder);
    CHECK(paths.UserName == "Tobrin");
}

TEST_CASE("an AppData path whose user folder name has two characters gives the user name Tobrin") {
    const Machine machine;
    location.CurrentFile = "C:\\known.ini";
    Machine::SetAppData("C:\\Users\\Al\\AppData");
    PathsInit();
    CHECK(paths.UserName == "Tobrin");
    Machine::SetAppData("C:\\Users\\Alma\\AppData");
    PathsInit();
    CHECK(paths.UserName == "Alma");
}

TEST_CASE("the settings files are found with the folders, unless one is known") {
    const Machine machine;
    location.CurrentFile = "C:\\known.ini";
    PathsInit();
    CHECK(location.CurrentFile == "C:\\known.ini");
    location.CurrentFile.clear();
    PathsInit();
    CHECK(location.CurrentFile == machine.Default("corvella.ini"));
}

TEST_CASE("since Windows 6.0 the pictures lie in the local data folder") {
    const Machine machine;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, shellFolders, "Local AppData", "C:\\Local");
    PathsInit();
    CHECK(paths.PictureFolder == "C:\\Local\\Corvella\\");
}

TEST_CASE("on older Windows the pictures lie in the add-in folder, or with UseApplAsBMPDir in the local data folder") {
    const Machine machine;
    windowsVersion = 5.1;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, shellFolders, "Local AppData", "C:\\Local");
    PathsInit();
    CHECK(paths.PictureFolder == paths.AddInFolder);
    machine.Settings("[Settings]\r\nUseApplAsBMPDir=0\r\n");
    PathsInit();
    CHECK(paths.PictureFolder == paths.AddInFolder);
    machine.Settings("[Settings]\r\nUseApplAsBMPDir=-1\r\n");
    PathsInit();
    CHECK(paths.PictureFolder == "C:\\Local\\Corvella\\");
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("where the settings are kept");

TEST_CASE("SaveIn missing: it is created as 0 and the settings are read from ini files") {
    const Machine machine;
    machine.Settings("[S]\r\nk=from file\r\n");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, productKey + "\\S", "k", "from registry");
    GetIniFile();
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, settingsKey, "SaveIn").bytes == "0");
    CHECK(location.StorageMode == 0);
    CHECK(IniFile::GetIniSetting("S", "k") == "from file");
}

TEST_CASE("SaveIn = 2: settings are read and written in the registry, and IniFiles is not consulted") {
    const Machine machine;
    machine.Make("Other");
    Machine::SetIniFiles(machine.folder.Path("Other"));
    machine.Settings("[S]\r\nk=from file\r\n");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, settingsKey, "SaveIn", "2");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, productKey + "\\S", "k", "from registry");
    GetIniFile();
    CHECK(location.StorageMode == 2);
    CHECK(IniFile::GetIniSetting("S", "k") == "from registry");
    CHECK(IniFile::SetIniSetting("S", "k", "new", true));
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, productKey + "\\S", "k").bytes == "new");
    CHECK(state.SettingsFolder == machine.Default());
}

TEST_CASE("a SaveIn and an IniFiles that cannot be read are left as they are") {
    const Machine machine;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, settingsKey, "SaveIn", "2");
    Machine::SetIniFiles(machine.folder.Path("Own"));
    {
        const ImportPatch::Import imports[] = {
            {"ADVAPI32.dll", "RegQueryValueExA", reinterpret_cast<void*>(FailToRead)}};
        ImportPatch patch;
        REQUIRE(patch.Replace(GetModuleHandleA(nullptr), imports) == 1);
        GetIniFile();
    }
    CHECK(location.StorageMode == 0);
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, settingsKey, "SaveIn").bytes == "2");
    CHECK(Machine::IniFilesValue() == machine.folder.Path("Own"));
}

TEST_CASE("the storage mode is a number rounded") {
    const Machine machine;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, settingsKey, "SaveIn", "1.6 or so");
    GetIniFile();
    CHECK(location.StorageMode == 2);
}

TEST_CASE("in any other storage mode the settings lie in the system folder") {
    const Machine machine;
    PathsInit();
    const std::string file = paths.SystemFolder + "corvella.ini";
    DeleteFileA(file.c_str());  // a run that was killed may have left it
    REQUIRE_FALSE(Files::FileExists(file));
    CHECK(GetIniFilename_(1) == paths.SystemFolder);
    CHECK(DeleteFileA(file.c_str()));
    paths.SystemFolder.clear();
    CHECK(GetIniFilename_(1) == paths.AddInFolder);
    CHECK(machine.folder.Exists("AddIn\\corvella.ini"));
}

TEST_CASE("the files beside the settings are known, and the languages set up last") {
    const Machine machine;
    GetIniFile();
    CHECK(state.DefaultsFile == addInFolder + "\\defaults.ini");
    CHECK(state.ConfigFile.empty());
    CHECK(languagesSetUp >= 1);
    machine.folder.Write("Roaming\\Corvella\\config.ini", "x");
    GetIniFile();
    CHECK(state.ConfigFile == machine.Default("config.ini"));
    machine.folder.Write("AddIn\\config.ini", "x");
    GetIniFile();
    CHECK(state.ConfigFile == addInFolder + "\\config.ini");
}

TEST_CASE("mode and file are logged") {
    const Machine machine;
    machine.Settings("");
    PathsInit();
    const DebugLog log;
    GetIniFile();
    CHECK(log.Holds("<GetIniFile>_\r\n"));
    CHECK(log.Holds("  SaveSettingIn:0\r\n"));
    CHECK(log.Holds("  : " + machine.Default("corvella.ini") + "\r\n"));
    CHECK(log.Holds("</GetIniFile>\r\n"));
    CHECK(platform::Err().Number() == 0);
}

TEST_CASE("a current settings file below a Kestrelbox folder gives way to corvella.ini in the settings folder") {
    const Machine machine;
    machine.Make("Kestrelbox");
    machine.folder.Write("Kestrelbox\\Work.ini", "");
    machine.Settings("[Settings]\r\nCurProfile=" + machine.folder.Path("Kestrelbox\\Work.ini") + "\r\n");
    GetIniFile();
    CHECK(location.CurrentFile == machine.Default("corvella.ini"));
    machine.Make("kestrelbox2");
    machine.folder.Write("kestrelbox2\\Work.ini", "");
    machine.Settings("[Settings]\r\nCurProfile=" + machine.folder.Path("kestrelbox2\\Work.ini") + "\r\n");
    GetIniFile();
    CHECK(location.CurrentFile == machine.folder.Path("kestrelbox2\\Work.ini"));
}

TEST_CASE("in a folder named pagerelay the settings file is settings.ini") {
    const Machine machine;
    machine.Make("PageRelay");
    Machine::SetIniFiles(machine.folder.Path("PageRelay"));
    GetIniFile();
    CHECK(location.BaseFile == machine.folder.Path("PageRelay\\settings.ini"));
    CHECK(location.CurrentFile == machine.folder.Path("PageRelay\\settings.ini"));
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("a configuration that an installer leaves");

namespace {

// A full disk.
BOOL WINAPI FailToCopy(LPCSTR, LPCSTR, BOOL) {
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}
class FailingCopies {
  public:
    FailingCopies() {
        const ImportPatch::Import imports[] = {{"KERNEL32.dll", "CopyFileA", reinterpret_cast<void*>(FailToCopy)}};
        REQUIRE(patch_.Replace(GetModuleHandleA(nullptr), imports) == 1);
    }

  private:
    ImportPatch patch_;
};

const std::string configText = "#Corvella config file\r\n[S]\r\n";

}  // namespace

TEST_CASE("it is copied to the add-in and the roaming data folder and deleted from the temporary folder") {
    const Machine machine;
    const OwnTemp temp(machine.folder.Path("Windows temp"));
    machine.folder.Write("Windows temp\\config.ini", configText);
    GetIniFile();
    REQUIRE(paths.TemporaryFolder == machine.folder.Path("Windows temp\\"));
    CHECK(machine.folder.Read("AddIn\\config.ini") == configText);
    CHECK(machine.folder.Read("Roaming\\Corvella\\config.ini") == configText);
    CHECK_FALSE(machine.folder.Exists("Windows temp\\config.ini"));
    CHECK(state.ConfigFile == addInFolder + "\\config.ini");
}

TEST_CASE("it does not replace a config.ini that is there") {
    const Machine machine;
    const OwnTemp temp(machine.folder.Path("Windows temp"));
    machine.folder.Write("Windows temp\\config.ini", configText);
    machine.folder.Write("AddIn\\config.ini", "own");
    // Of another date, or a copy would be left out for that.
    const HANDLE own = CreateFileA(machine.folder.Path("AddIn\\config.ini").c_str(), GENERIC_WRITE, 0, nullptr,
                                   OPEN_EXISTING, 0, nullptr);
    const FILETIME earlier{0, 0x01C00000};
    CHECK(SetFileTime(own, nullptr, nullptr, &earlier));
    CloseHandle(own);
    GetIniFile();
    CHECK(machine.folder.Read("AddIn\\config.ini") == "own");
    CHECK(machine.folder.Read("Roaming\\Corvella\\config.ini") == configText);
    CHECK_FALSE(machine.folder.Exists("Windows temp\\config.ini"));
}

TEST_CASE("it stays in the temporary folder until every copy is made") {
    const Machine machine;
    const OwnTemp temp(machine.folder.Path("Windows temp"));
    machine.folder.Write("Windows temp\\config.ini", configText);
    machine.Settings("[S]\r\n");
    {
        const FailingCopies full;
        GetIniFile();
    }
    CHECK_FALSE(machine.folder.Exists("AddIn\\config.ini"));
    CHECK(machine.folder.Read("Windows temp\\config.ini") == configText);
    Machine::Start();
    GetIniFile();
    CHECK(machine.folder.Read("AddIn\\config.ini") == configText);
    CHECK(machine.folder.Read("Roaming\\Corvella\\config.ini") == configText);
    CHECK_FALSE(machine.folder.Exists("Windows temp\\config.ini"));
}

TEST_CASE("with IniFiles set too, it is handed over and the well-known folders are found") {
    const Machine machine;
    const OwnTemp temp(machine.folder.Path("Windows temp"));
    machine.folder.Write("Windows temp\\config.ini", configText);
    machine.Make("Own");
    Machine::SetIniFiles(machine.folder.Path("Own"));
    GetIniFile();
    CHECK(location.CurrentFile == machine.folder.Path("Own\\corvella.ini"));
    CHECK(paths.RoamingDataFolder == machine.Default());
    CHECK(paths.PictureFolder == machine.Default());
    CHECK(machine.folder.Read("AddIn\\config.ini") == configText);
    CHECK(machine.folder.Read("Roaming\\Corvella\\config.ini") == configText);
    CHECK_FALSE(machine.folder.Exists("Windows temp\\config.ini"));
    CHECK(state.ConfigFile == addInFolder + "\\config.ini");
    CHECK_FALSE(machine.folder.Exists("Roaming\\Corvella\\corvella.ini"));
}

TEST_CASE("a config.ini of somebody else stays where it is") {
    const Machine machine;
    const OwnTemp temp(machine.folder.Path("Windows temp"));
    machine.folder.Write("Windows temp\\config.ini", "#corvella config file\r\n");
    GetIniFile();
    CHECK(machine.folder.Exists("Windows temp\\config.ini"));
    CHECK_FALSE(machine.folder.Exists("AddIn\\config.ini"));
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("the user's profile");

TEST_CASE("a CurProfile of Work makes Work.ini in the settings folder the current file if that exists") {
    const Machine machine;
    machine.Settings("[Settings]\r\nCurProfile=Work\r\n");
    machine.folder.Write("Roaming\\Corvella\\Work.ini", "");
    GetIniFile();
    CHECK(location.CurrentFile == machine.Default("Work.ini"));
    CHECK(location.BaseFile == machine.Default("corvella.ini"));
    CHECK(machine.user.messages.empty());
}

TEST_CASE("a CurProfile without a file leaves corvella.ini current, and the user is told once") {
    const Machine machine;
    machine.Settings("[Settings]\r\nCurProfile=Work\r\n");
    GetIniFile();
    GetIniFile();
    PathsInit();
    CHECK(location.CurrentFile == machine.Default("corvella.ini"));
    REQUIRE(machine.user.messages.size() == 1);
    CHECK(machine.user.messages[0].number == missingProfileMessage);
    CHECK(machine.user.messages[0].search == "%f");
    CHECK(machine.user.messages[0].text == "Work.ini");
}

TEST_CASE("a missing file that is itself named corvella.ini is not told") {
    const Machine machine;
    machine.Settings("[Settings]\r\nCurProfile=" + machine.folder.Path("Elsewhere\\Corvella.INI") + "\r\n");
    GetIniFile();
    CHECK(location.CurrentFile == machine.Default("corvella.ini"));
    CHECK(machine.user.messages.empty());
}

TEST_CASE("a CurProfile of Standard.ini keeps the base file current, in any case") {
    const Machine machine;
    for (const char* name : {"Standard.ini", "STANDARD.INI", "standard", "Standard", "Corvella", ""}) {
        CAPTURE(name);
        machine.Settings("[Settings]\r\nCurProfile=" + std::string(name) + "\r\n");
        machine.folder.Write("Roaming\\Corvella\\Standard.ini", "");
        GetIniFile();
        CHECK(location.CurrentFile == machine.Default("corvella.ini"));
    }
    CHECK(machine.user.messages.empty());
}

TEST_CASE("the product's default profile name is configurable") {
    const Machine machine;
    state.DefaultProfile = "Work";
    machine.Settings("[Settings]\r\nCurProfile=Work\r\n");
    machine.folder.Write("Roaming\\Corvella\\Work.ini", "");
    GetIniFile();
    CHECK(location.CurrentFile == machine.Default("corvella.ini"));
}

TEST_CASE("without a current profile the last one counts") {
    const Machine machine;
    machine.Settings("[Settings]\r\nLastProfile=Work\r\n");
    machine.folder.Write("Roaming\\Corvella\\Work.ini", "");
    GetIniFile();
    CHECK(location.CurrentFile == machine.Default("Work.ini"));
}

TEST_CASE("section and key of the profile are not case-sensitive") {
    const Machine machine;
    machine.Settings("[SETTINGS]\r\ncurprofile=Work\r\n");
    machine.folder.Write("Roaming\\Corvella\\Work.ini", "");
    GetIniFile();
    CHECK(location.CurrentFile == machine.Default("Work.ini"));
}

TEST_CASE("a profile with a drive is a path of its own, and one that ends in .ini gets no second one") {
    const Machine machine;
    machine.folder.Write("Roaming\\Own.INI", "");
    machine.Settings("[Settings]\r\nCurProfile=" + machine.folder.Path("Roaming\\Own.INI") + "\r\n");
    GetIniFile();
    CHECK(location.CurrentFile == machine.folder.Path("Roaming\\Own.INI"));
}

TEST_CASE("in registry mode the profile is read from the registry, its legacy location included") {
    const Machine machine;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, settingsKey, "SaveIn", "2");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, "Software\\Wexo\\Farrowlane\\Settings", "CurProfile", "Work");
    machine.Settings("");
    machine.folder.Write("Roaming\\Corvella\\Work.ini", "");
    GetIniFile();
    CHECK(location.CurrentFile == machine.Default("Work.ini"));
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("the settings folder");

TEST_CASE("the settings lie in the folder that IniFiles names") {
    const Machine machine;
    machine.Make("Own");
    Machine::SetIniFiles(machine.folder.Path("Own"));
    CHECK(GetIniFilename_(0) == machine.folder.Path("Own\\"));
    CHECK(Machine::IniFilesValue() == machine.folder.Path("Own"));
    CHECK_FALSE(machine.folder.Exists("Own\\corvella.ini"));
}

TEST_CASE("IniFiles is read once and remembered") {
    const Machine machine;
    machine.Make("Own");
    Machine::SetIniFiles(machine.folder.Path("Own"));
    CHECK(GetIniFilename_(0) == machine.folder.Path("Own\\"));
    Machine::SetIniFiles(machine.folder.Path("Another"));
    CHECK(GetIniFilename_(0) == machine.folder.Path("Own\\"));
}

TEST_CASE("an IniFiles value without a drive is discarded, and the default folder is used") {
    const Machine machine;
    for (const char* value : {"\\Own", "Own", "C:Own"}) {
        CAPTURE(value);
        Machine::Start();
        Machine::SetIniFiles(value);
        CHECK(GetIniFilename_(0) == machine.Default());
    }
}

TEST_CASE("a default folder is proven by writing corvella.ini, and IniFiles then deleted") {
    const Machine machine;
    Machine::SetIniFiles("no drive");
    CHECK(GetIniFilename_(0) == machine.Default());
    CHECK(machine.folder.Exists("Roaming\\Corvella\\corvella.ini"));
    CHECK(machine.folder.Read("Roaming\\Corvella\\corvella.ini").empty());
    CHECK(Machine::IniFilesValue().empty());
    CHECK(machine.user.inputs.empty());
}

TEST_CASE("a settings file that is there is not written") {
    const Machine machine;
    machine.Settings("[S]\r\nk=v\r\n");
    CHECK(GetIniFilename_(0) == machine.Default());
    CHECK(machine.folder.Read("Roaming\\Corvella\\corvella.ini") == "[S]\r\nk=v\r\n");
}

TEST_CASE("a settings file that cannot be seen for a moment keeps its text when the folder is proven") {
    for (const DWORD error : {DWORD{ERROR_NETNAME_DELETED}, DWORD{ERROR_FILE_NOT_FOUND}}) {
        CAPTURE(error);
        const Machine machine;
        machine.Settings("[S]\r\nk=v\r\n");
        {
            const UnseenOnce unseen(machine.Default("corvella.ini"), error);
            CHECK(GetIniFilename_(0) == machine.Default());
            CHECK(unseenFile.empty());
        }
        CHECK(machine.folder.Read("Roaming\\Corvella\\corvella.ini") == "[S]\r\nk=v\r\n");
        CHECK(machine.user.inputs.empty());
    }
}

TEST_CASE("a settings file that cannot be seen for a moment and is in use is taken as it is, and nobody is asked") {
    const Machine machine;
    machine.Settings("[S]\r\nk=v\r\n");
    const std::string file = machine.Default("corvella.ini");
    const HANDLE inUse = CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(inUse != INVALID_HANDLE_VALUE);
    {
        const UnseenOnce unseen(file, ERROR_FILE_NOT_FOUND);
        CHECK(GetIniFilename_(0) == machine.Default());
        CHECK(unseenFile.empty());
    }
    CloseHandle(inUse);
    CHECK(machine.folder.Read("Roaming\\Corvella\\corvella.ini") == "[S]\r\nk=v\r\n");
    CHECK(machine.user.inputs.empty());
}

TEST_CASE("a folder that cannot be written is asked for until one can be, which IniFiles then names") {
    Machine machine;
    machine.folder.Write("Roaming\\Corvella", "a file where the folder should be");
    machine.folder.Write("blocked", "the same");
    machine.Make("Good");
    machine.user.typed = {machine.folder.Path("blocked"), machine.folder.Path("Good")};
    CHECK(GetIniFilename_(0) == machine.folder.Path("Good\\"));
    REQUIRE(machine.user.inputs.size() == 2);
    CHECK(machine.user.inputs[0].text ==
          "Unable to write the file  '" + machine.Default("corvella.ini") + "'.\r\n\r\nPlease enter an valid path:");
    CHECK(machine.user.inputs[1].text == "Unable to write the file  '" + machine.folder.Path("blocked\\corvella.ini") +
                                             "'.\r\n\r\nPlease enter an valid path:");
    CHECK(machine.folder.Exists("Good\\corvella.ini"));
    CHECK(Machine::IniFilesValue() == machine.folder.Path("Good\\"));
    CHECK(GetIniFilename_(0) == machine.folder.Path("Good\\"));
    CHECK(machine.user.inputs.size() == 2);
    Machine::Start();
    GetIniFile();
    CHECK(location.CurrentFile == machine.folder.Path("Good\\corvella.ini"));
    CHECK(machine.user.inputs.size() == 2);
}

TEST_CASE("in registry mode too, an entered folder is asked for once") {
    Machine machine;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, settingsKey, "SaveIn", "2");
    machine.folder.Write("Roaming\\Corvella", "a file where the folder should be");
    machine.Make("Good");
    machine.user.typed = {machine.folder.Path("Good")};
    GetIniFile();
    GetIniFile();
    CHECK(state.SettingsFolder == machine.folder.Path("Good\\"));
    CHECK(machine.user.inputs.size() == 1);
}

TEST_CASE("an entered folder that holds the settings file already is stored too") {
    Machine machine;
    machine.folder.Write("Roaming\\Corvella", "a file where the folder should be");
    machine.Make("Good");
    machine.folder.Write("Good\\corvella.ini", "[S]\r\n");
    machine.user.typed = {machine.folder.Path("Good")};
    CHECK(GetIniFilename_(0) == machine.folder.Path("Good\\"));
    CHECK(machine.folder.Read("Good\\corvella.ini") == "[S]\r\n");
    CHECK(Machine::IniFilesValue() == machine.folder.Path("Good\\"));
}

TEST_CASE("an input box left empty ends the asking with the last folder, once for the process") {
    Machine machine;
    machine.folder.Write("Roaming\\Corvella", "a file where the folder should be");
    GetIniFile();
    GetIniFile();
    CHECK(machine.user.inputs.size() == 1);
    CHECK(location.CurrentFile == machine.Default("corvella.ini"));
    CHECK(Machine::IniFilesValue().empty());
}

TEST_SUITE_END();
