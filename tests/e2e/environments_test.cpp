// A user's day in bad surroundings: start, menu, a contact, sending it, the options, the end. Whatever the disk, the
// registry, the screen or another program are like, each of them works, nothing that was there is changed, and nothing
// asks more than once.
//
// The library is a copy of its own for every environment, loaded afresh; files and registry are real ones.
#include <doctest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "e2e/Session.h"
#include "outlook/Outlook.h"
#include "testing/ChildProcess.h"
#include "testing/ClassFactory.h"
#include "testing/ImportPatch.h"
#include "testing/MenuTable.h"
#include "testing/PrivateRegistry.h"
#include "testing/TempFolder.h"
#include "weather/Person.h"

using e2e::productKey;
using standin::ItemClass;
using standin::Window;
using weather::Person;

namespace {

constexpr const char* shellFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr const char* settings = "[Settings]\r\nLanguage=English\r\nPort=COM3\r\n\r\n[Phone]\r\nModel=K-700\r\n";
constexpr CLSID addInClass{0x6B0C1E52, 0x3D8F, 0x4C0A, {0x9A, 0x5E, 0x7F, 0x21, 0xC7, 0xB4, 0xD9, 0x13}};

// --- another process

// A process of this program that runs one of its test cases until it is ended.
class Other {
  public:
    Other(const char* testCase, const std::string& file, const std::string& sign) {
        SetEnvironmentVariableA("CV_OTHER_FILE", file.c_str());
        SetEnvironmentVariableA("CV_OTHER_SIGN", sign.c_str());
        process_.emplace(CommandLineOfCase(testCase));
        for (int i = 0; i < 500 && GetFileAttributesA(sign.c_str()) == INVALID_FILE_ATTRIBUTES; ++i) Sleep(20);
        REQUIRE(GetFileAttributesA(sign.c_str()) != INVALID_FILE_ATTRIBUTES);
    }

    static std::string Told(const char* variable) {
        char text[MAX_PATH] = "";
        GetEnvironmentVariableA(variable, text, sizeof text);
        return text;
    }
    static void Ready() {
        CloseHandle(CreateFileA(Told("CV_OTHER_SIGN").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }

  private:
    std::optional<ChildProcess> process_;
};

void Put(const std::string& path, const std::string& bytes) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size() / 2), &written, nullptr);
    WriteFile(file, bytes.data() + written, static_cast<DWORD>(bytes.size()) - written, &written, nullptr);
    CloseHandle(file);
}

// --- one environment

class World {
  public:
    World() {
        CreateDirectoryA((AddIn()).c_str(), nullptr);
        CreateDirectoryA(Data().c_str(), nullptr);
        CreateDirectoryA(SettingsFolder().c_str(), nullptr);
        CreateDirectoryA(folder.Path("main").c_str(), nullptr);
        const std::string installed = e2e::AddInFolder();
        for (const char* file : {"CVOutlookAddIn.dll", "English.lng", "Deutsch.lng"}) {
            REQUIRE(CopyFileA((installed + file).c_str(), (AddIn() + file).c_str(), FALSE));
        }
        Put(SettingsFile(), settings);
        e2e::WriteValue(shellFolders, "AppData", folder.Path("data"));
        e2e::WriteValue(shellFolders, "Local AppData", folder.Path("data"));
        e2e::WriteValue(productKey, "Path", folder.Path("main"));
        e2e::WriteValue(e2e::outlookKey, "ChangedC", ";EARLIER");
        e2e::WriteValue(e2e::outlookKey, "Delay", "5");
    }
    ~World() {
        for (const auto& [name, value] : variables_) SetEnvironmentVariableA(name.c_str(), value.c_str());
        if (held != INVALID_HANDLE_VALUE) CloseHandle(held);
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    [[nodiscard]] std::string AddIn() const { return folder.Path("addin\\"); }
    [[nodiscard]] std::string Data() const { return folder.Path("data\\"); }
    [[nodiscard]] std::string SettingsFolder() const { return folder.Path("data\\Corvella\\"); }
    [[nodiscard]] std::string SettingsFile() const { return folder.Path("data\\Corvella\\corvella.ini"); }
    [[nodiscard]] std::string LogFile() const { return AddIn() + "CorvellaAddIn.dbg.xml"; }

    void Hold(const std::string& path) {
        held = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        REQUIRE(held != INVALID_HANDLE_VALUE);
    }
    void LetGo() { CloseHandle(std::exchange(held, INVALID_HANDLE_VALUE)); }
    // For the life of this world; null: there is none of that name.
    void SetVariable(const char* name, const char* value) {
        char earlier[MAX_PATH] = "";
        GetEnvironmentVariableA(name, earlier, sizeof earlier);
        variables_.emplace_back(name, earlier);
        SetEnvironmentVariableA(name, value);
    }
    void Replace(const char* library, const char* function, void* instead) {
        replaced.push_back({library, function, instead});
    }

    PrivateRegistry registry;
    TempFolder folder;
    std::optional<Other> other;
    HANDLE held = INVALID_HANDLE_VALUE;
    std::vector<ImportPatch::Import> replaced;
    std::size_t mostBoxes = 0;    // before the options are opened
    bool listIsReadable = true;   // else the list of contacts is of no use
    bool keepsSettings = true;    // the file has to be as it was
    bool delayIsReadable = true;  // and the options show it
    bool hasCaptions = true;      // from a language file
    LONG height = 0;              // that the options may have at most; 0: any

  private:
    std::vector<std::pair<std::string, std::string>> variables_;
};

// --- the library in the host

class Host {
  public:
    explicit Host(World& world) {
        library_ = LoadLibraryA((world.AddIn() + "CVOutlookAddIn.dll").c_str());
        REQUIRE(library_);
        CHECK(patch_.emplace().Replace(library_, world.replaced) == static_cast<int>(world.replaced.size()));
        factory_ = ClassFactoryOf(library_, addInClass);
        REQUIRE(factory_ != nullptr);
        outlook_.emplace(standin::Options{.version = 11});
        outlook_->IgnoreRegistry();
        outlook_->UseAddIn(e2e::progId, factory_);
    }
    ~Host() {
        outlook_.reset();
        e2e::Pump(0);
        factory_->Release();
        CHECK(Function<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")() == S_OK);
        patch_.reset();
        FreeLibrary(library_);
        CHECK(GetModuleHandleA("CVOutlookAddIn.dll") == nullptr);
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    standin::Outlook* operator->() { return &*outlook_; }

  private:
    template <class Type>
    Type Function(const char* name) const {
        return reinterpret_cast<Type>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
    }
    HMODULE library_ = nullptr;
    IClassFactory* factory_ = nullptr;
    std::optional<ImportPatch> patch_;
    std::optional<standin::Outlook> outlook_;
};

// --- the day

struct Boxes {
    std::set<HWND> seen;
    std::vector<std::string> texts;
    RECT largest{};  // of the last one

    void Meet(HWND box) {
        GetWindowRect(box, &largest);
        if (!seen.insert(box).second) return;
        std::string text = Person::TextOf(box);
        for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            if (IsWindowVisible(child)) text += "|" + Person::TextOf(child);
        }
        texts.push_back(text);
    }
};

void Decline(HWND box) { Person::Press(box, Person::Child(box, "Button", "Cancel") ? "Cancel" : "OK"); }

// It can be clicked and hands the contact over.
void SendContact(Host& host, const World& world) {
    const standin::Item contact = host->NewItem(ItemClass::Contact, {{"FullName", "Ann"}});
    const Window window = host->OpenInspector(contact);
    const standin::ControlView button = host->FindTag(window, "102");
    REQUIRE(button);
    CHECK((!button.caption.empty() || !world.hasCaptions));
    host->Click(button);
    e2e::Pump(400);
    const std::string list = e2e::ReadValue(e2e::outlookKey, "ChangedC").value_or("");
    if (!world.listIsReadable) return;
    CHECK(list.find(";EARLIER") != std::string::npos);
    CHECK(list.find(";" + host->EntryId(contact)) != std::string::npos);
}

void ClickEntry(Host& host, const char* key) {
    host->Click(host->FindCaption(host->Windows().front(), "Corvella").entries.at(MenuPlace(key)));
}

void ShowInfo(Host& host) {
    Boxes boxes;
    const Person person([&](HWND box) {
        boxes.Meet(box);
        Decline(box);
    });
    ClickEntry(host, "mAbout");
    CHECK(boxes.seen.size() == 1);
}

void OpenOptions(Host& host, const World& world) {
    Boxes boxes;
    bool delayShown = false;
    const Person person([&](HWND box) {
        boxes.Meet(box);
        delayShown |= Person::Child(box, "Edit", "5") != nullptr;
        Decline(box);
    });
    ClickEntry(host, "mOptions");
    CHECK(boxes.seen.size() >= 1);
    CHECK(delayShown == world.delayIsReadable);
    if (world.height != 0) CHECK(boxes.largest.bottom - boxes.largest.top <= world.height);
}

void LiveThrough(World& world) {
    Host host(world);
    {
        Boxes boxes;
        const Person person([&](HWND box) {
            boxes.Meet(box);
            Decline(box);
        });
        host->Start();
        SendContact(host, world);
        CAPTURE(boxes.texts);
        CHECK(boxes.seen.size() <= world.mostBoxes);
    }
    const standin::ControlView menu = host->FindCaption(host->Windows().front(), "Corvella");
    CHECK(menu.entries.size() == std::size(menuTable));
    for (const standin::ControlView& entry : menu.entries) CHECK((!entry.caption.empty() || !world.hasCaptions));
    ShowInfo(host);
    OpenOptions(host, world);
    host->Quit();
    CHECK(host->References() == 0);
    CHECK(host->Advises() == 0);
    CHECK(host->AddIns().front().loadBehavior == 3);
    CHECK_FALSE(e2e::ReadValue(e2e::addInKey, "Active").has_value());
}

// --- what Windows says of the screen, the fonts and the code page

int WINAPI ManyDotsAnInch(HDC device, int what) {
    return what == LOGPIXELSX || what == LOGPIXELSY ? 192 : GetDeviceCaps(device, what);
}
BOOL WINAPI SmallMonitor(HMONITOR monitor, LPMONITORINFO information) {
    const BOOL done = GetMonitorInfoA(monitor, information);
    information->rcMonitor = {0, 0, 800, 600};
    information->rcWork = {0, 0, 800, 570};
    return done;
}
int WINAPI SmallScreen(int what) {
    return what == SM_CXSCREEN ? 800 : what == SM_CYSCREEN ? 600 : GetSystemMetrics(what);
}
HFONT WINAPI NoFont(const LOGFONTA*) { return nullptr; }
int WINAPI NoFace(HDC, int, LPSTR) { return 0; }

BOOL WINAPI NoProgram(LPCSTR, LPSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID, LPCSTR,
                      LPSTARTUPINFOA, LPPROCESS_INFORMATION) {
    SetLastError(ERROR_FILE_NOT_FOUND);
    return FALSE;
}

// No memory, once, for the beginning of a file, by which the profiles are told from other files: 502 bytes and a zero.
bool refused = false;
void* __cdecl NoMemoryForBeginning(std::size_t size) {
    const bool refuses = !refused && size == 503;
    refused |= refuses;
    return refuses ? nullptr : std::malloc(size);
}

UINT codePage = 1252;
UINT Page(UINT asked) { return asked == CP_ACP ? codePage : asked; }
int WINAPI WidenInPage(UINT page, DWORD flags, LPCCH text, int size, LPWSTR wide, int room) {
    return MultiByteToWideChar(Page(page), flags, text, size, wide, room);
}
int WINAPI NarrowInPage(UINT page, DWORD flags, LPCWCH wide, int size, LPSTR text, int room, LPCCH other, LPBOOL used) {
    return WideCharToMultiByte(Page(page), flags, wide, size, text, room, other, used);
}
BOOL WINAPI LeadByteInPage(BYTE byte) { return IsDBCSLeadByteEx(codePage, byte); }
LPSTR WINAPI NextInPage(LPCSTR text) { return CharNextExA(static_cast<WORD>(codePage), text, 0); }

void UsePage(World& world, UINT page) {
    codePage = page;
    world.Replace("KERNEL32.dll", "MultiByteToWideChar", reinterpret_cast<void*>(&WidenInPage));
    world.Replace("KERNEL32.dll", "WideCharToMultiByte", reinterpret_cast<void*>(&NarrowInPage));
    world.Replace("KERNEL32.dll", "IsDBCSLeadByte", reinterpret_cast<void*>(&LeadByteInPage));
    world.Replace("USER32.dll", "CharNextA", reinterpret_cast<void*>(&NextInPage));
}

// --- the table

void PutNumber(const char* key, const char* name) {
    PrivateRegistry::Put(HKEY_CURRENT_USER, key, name, REG_DWORD, std::string("\x05\0\0\0", 4));
}
void PutBytes(const char* key, const char* name) {
    PrivateRegistry::Put(HKEY_CURRENT_USER, key, name, REG_BINARY, std::string("\xFF\0\x01\xFE\0", 5));
}

std::string Bytes(std::size_t count) {
    std::string bytes;
    for (std::uint32_t i = 0, state = 1; i < count; ++i) {
        state = state * 1664525u + 1013904223u;
        bytes.push_back(static_cast<char>(state >> 24));
    }
    return bytes;
}

std::string LongSettings() {
    std::string text = settings;
    for (int i = 0; text.size() < 2000000; ++i) text += "[Section" + std::to_string(i) + "]\r\nKey=Value\r\n";
    return text;
}

struct Environment {
    const char* name;
    std::function<void(World&)> prepare;
};

const Environment environments[] = {
    {"everything is as it should be", [](World&) {}},
    {"AppData lies on a missing drive",
     [](World& world) {
         e2e::WriteValue(shellFolders, "AppData", "Q:\\Nobody\\Application Data");
         world.mostBoxes = 1;
     }},
    {"AppData cannot be written",
     [](World& world) {
         e2e::WriteValue(shellFolders, "AppData", "Z:\\proc");
         world.mostBoxes = 1;
     }},
    {"AppData is a file",
     [](World& world) {
         e2e::WriteValue(shellFolders, "AppData", world.AddIn() + "English.lng");
         world.mostBoxes = 1;
     }},
    {"the settings hide every button of the boxes",
     [](World& world) {
         Put(world.SettingsFile(), std::string(settings) +
                                       "[FormQuestion]\r\nHide=ButtonOKYes;ButtonNo;ButtonCancel;ButtonAll\r\n"
                                       "[FormOlAddInOptions]\r\nHide=ButtonOK;ButtonCancel\r\n");
     }},
    {"AppData is not told",
     [](World& world) {
         PrivateRegistry::Put(HKEY_CURRENT_USER, shellFolders, "AppData", REG_BINARY, std::string());
         world.keepsSettings = true;
     }},
    {"TEMP is missing",
     [](World& world) {
         world.SetVariable("TEMP", nullptr);
         world.SetVariable("TMP", nullptr);
     }},
    {"TEMP is a file", [](World& world) { world.SetVariable("TEMP", world.SettingsFile().c_str()); }},
    {"the log is on and cannot be written",
     [](World& world) {
         CreateDirectoryA(world.LogFile().c_str(), nullptr);
         e2e::WriteValue(e2e::addInKey, "DebugMode", "1");
         world.mostBoxes = 2;
     }},
    {"there is no settings file",
     [](World& world) {
         DeleteFileA(world.SettingsFile().c_str());
         world.keepsSettings = false;
     }},
    {"there is no settings folder",
     [](World& world) {
         DeleteFileA(world.SettingsFile().c_str());
         RemoveDirectoryA(world.SettingsFolder().c_str());
         world.keepsSettings = false;
     }},
    {"the settings file is empty", [](World& world) { Put(world.SettingsFile(), ""); }},
    {"the settings file is binary", [](World& world) { Put(world.SettingsFile(), Bytes(50000)); }},
    {"the settings file has two megabytes", [](World& world) { Put(world.SettingsFile(), LongSettings()); }},
    {"the settings file is locked", [](World& world) { world.Hold(world.SettingsFile()); }},
    {"the settings file is read-only",
     [](World& world) { SetFileAttributesA(world.SettingsFile().c_str(), FILE_ATTRIBUTE_READONLY); }},
    {"the settings file is a folder",
     [](World& world) {
         DeleteFileA(world.SettingsFile().c_str());
         CreateDirectoryA(world.SettingsFile().c_str(), nullptr);
         world.keepsSettings = false;
         world.mostBoxes = 1;
     }},
    {"another process rewrites the settings file without pause",
     [](World& world) {
         world.other.emplace("the process that rewrites a file", world.SettingsFile(), world.folder.Path("sign"));
     }},
    {"the settings name a profile that is missing",
     [](World& world) {
         Put(world.SettingsFile(), std::string(settings) + "[Settings]\r\nLastProfile=Nobody\r\n");
         Put(world.SettingsFile(), "[Settings]\r\nLastProfile=Nobody\r\n");
         world.mostBoxes = 1;
     }},
    {"\"IniFiles\" names a missing folder", [](World&) { e2e::WriteValue(productKey, "IniFiles", "Q:\\Nobody\\"); }},
    {"the settings are kept in the registry", [](World&) { e2e::WriteValue(e2e::settingsKey, "SaveIn", "2"); }},
    {"there are no language files",
     [](World& world) {
         world.hasCaptions = false;
         for (const char* file : {"English.lng", "Deutsch.lng"}) DeleteFileA((world.AddIn() + file).c_str());
         world.mostBoxes = 1;
     }},
    {"the language file is binary",
     [](World& world) {
         world.hasCaptions = false;
         Put(world.AddIn() + "English.lng", Bytes(100000));
     }},
    {"the language file is empty",
     [](World& world) {
         world.hasCaptions = false;
         Put(world.AddIn() + "English.lng", "");
         world.mostBoxes = 1;
     }},
    {"the language file hides what it can",
     [](World& world) {
         world.hasCaptions = false;
         std::string text =
             "[FormQuestion]\r\nHide=ButtonOKYes\r\n[FormOlAddInOptions]\r\nHide=ButtonOK\r\n[OutlookAddIn]\r\n";
         for (const char* key : {"mEditor", "mSync", "mOptions", "mAbout"})
             text += std::string(key) + "=" + std::string(5000, '&') + "\r\n";
         Put(world.AddIn() + "Hostile.lng", text);
         Put(world.SettingsFile(), "[Settings]\r\nLanguage=Hostile\r\n");
     }},
    {"the values of the registry are numbers",
     [](World& world) {
         for (const char* name : {"Delay", "Remain", "NoDlg", "Profile"}) PutNumber(e2e::outlookKey, name);
         for (const char* name : {"DebugFile", "103Bar", "103Pos"}) PutNumber(e2e::addInKey, name);
         for (const char* name : {"Path", "IniFiles"}) PutNumber(productKey, name);
         world.delayIsReadable = true;
     }},
    {"the values of the registry are bytes",
     [](World& world) {
         for (const char* name : {"Delay", "Remain", "NoDlg", "Profile"}) PutBytes(e2e::outlookKey, name);
         for (const char* name : {"DebugFile", "103Bar", "103Pos"}) PutBytes(e2e::addInKey, name);
         for (const char* name : {"Path", "IniFiles"}) PutBytes(productKey, name);
         world.delayIsReadable = false;
     }},
    {"another process holds the clipboard",
     [](World& world) { world.other.emplace("the process that holds the clipboard", "", world.folder.Path("sign")); }},
    {"no program can be started",
     [](World& world) { world.Replace("KERNEL32.dll", "CreateProcessA", reinterpret_cast<void*>(&NoProgram)); }},
    {"Corvella.exe is a text file", [](World& world) { Put(world.folder.Path("main\\Corvella.exe"), "Corvella\r\n"); }},
    {"nobody says where Corvella.exe is", [](World&) { e2e::WriteValue(productKey, "Path", ""); }},
    {"the screen has 800 by 600 pixels at 192 dots an inch",
     [](World& world) {
         world.height = 570;
         world.Replace("GDI32.dll", "GetDeviceCaps", reinterpret_cast<void*>(&ManyDotsAnInch));
         world.Replace("USER32.dll", "GetMonitorInfoA", reinterpret_cast<void*>(&SmallMonitor));
         world.Replace("USER32.dll", "GetSystemMetrics", reinterpret_cast<void*>(&SmallScreen));
     }},
    {"there are no fonts",
     [](World& world) {
         world.Replace("GDI32.dll", "CreateFontIndirectA", reinterpret_cast<void*>(&NoFont));
         world.Replace("GDI32.dll", "GetTextFaceA", reinterpret_cast<void*>(&NoFace));
     }},
    {"the code page is 1250", [](World& world) { UsePage(world, 1250); }},
    {"the code page is 1251", [](World& world) { UsePage(world, 1251); }},
    {"the code page is 932", [](World& world) { UsePage(world, 932); }},
};

}  // namespace

TEST_CASE("the process that rewrites a file" * doctest::skip()) {
    Other::Ready();
    for (const std::string file = Other::Told("CV_OTHER_FILE");;) Put(file, settings);
}

TEST_CASE("the process that holds the clipboard" * doctest::skip()) {
    while (!OpenClipboard(nullptr)) Sleep(5);
    Other::Ready();
    Sleep(600000);
}

TEST_CASE("in every environment the menu is there, a contact is sent, the options open, and nothing is held or lost") {
    for (const Environment& environment : environments) {
        SUBCASE(environment.name) {
            std::printf("%s\n", environment.name);  // so that a crash has a name
            std::fflush(stdout);
            World world;
            environment.prepare(world);
            const std::string before = world.held == INVALID_HANDLE_VALUE
                                           ? world.folder.Read("data\\Corvella\\corvella.ini")
                                           : std::string(settings);
            LiveThrough(world);
            if (world.held != INVALID_HANDLE_VALUE) world.LetGo();
            if (world.other) {
                world.other.reset();
                continue;  // it may have been ended while it wrote
            }
            if (world.keepsSettings) CHECK(world.folder.Read("data\\Corvella\\corvella.ini") == before);
        }
    }
}

TEST_CASE("where memory ends while a profile is looked at its file is let go of, and the options open the next time") {
    World world;
    world.Replace("msvcrt.dll", "malloc", reinterpret_cast<void*>(&NoMemoryForBeginning));
    Host host(world);
    host->Start();
    refused = false;
    ClickEntry(host, "mOptions");
    CHECK(refused);
    CHECK(DeleteFileA(world.SettingsFile().c_str()));
    CHECK_FALSE(world.folder.Exists("data\\Corvella\\corvella.ini"));
    OpenOptions(host, world);
    host->Quit();
}
