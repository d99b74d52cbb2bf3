#include "World.h"

#include <doctest.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "check/Resiliency.h"
#include "outlook/Outlook.h"
#include "testing/ChildProcess.h"
#include "testing/RemoveFolder.h"

namespace check_test {
namespace {

constexpr const char* shellFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

void Copy(const std::string& from, const std::string& to) { REQUIRE(CopyFileA(from.c_str(), to.c_str(), FALSE)); }

// The front of a library of 64 bits; nothing more is looked at where it cannot be loaded.
std::string Library64() {
    std::string bytes(512, '\0');
    const auto put = [&](std::size_t at, std::uint32_t number, int length) {
        for (int i = 0; i < length; ++i)
            bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(number >> 8 * i & 0xFF);
    };
    bytes[0] = 'M';
    bytes[1] = 'Z';
    put(0x3C, 0x80, 4);
    put(0x80, 0x4550, 4);
    put(0x84, 0x8664, 2);
    put(0x94, 0xF0, 2);
    put(0x96, 0x2022, 2);
    return bytes;
}

void Collect(HKEY root, const std::string& path, std::map<std::string, std::string>& found) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    found[path] = "key";
    std::vector<char> name(16384);
    std::vector<BYTE> bytes(2 << 20);
    DWORD length = 16384, size = 2 << 20, type = 0;
    for (DWORD i = 0; RegEnumValueA(key, i, name.data(), &length, nullptr, &type, bytes.data(), &size) == ERROR_SUCCESS;
         ++i) {
        found[path + "\\\\" + name.data()] =
            std::to_string(type) + ":" + std::string(bytes.data(), bytes.data() + size);
        length = 16384;
        size = 2 << 20;
    }
    for (DWORD i = 0; length = 16384,
               RegEnumKeyExA(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i) {
        Collect(root, path + "\\" + name.data(), found);
    }
    RegCloseKey(key);
}

void CollectFiles(const std::string& folder, std::map<std::string, std::string>& found) {
    WIN32_FIND_DATAA file;
    const HANDLE search = FindFirstFileA((folder + "*").c_str(), &file);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::string name = file.cFileName;
        if (name == "." || name == ".." || name == "report.txt") continue;
        if ((file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) CollectFiles(folder + name + "\\", found);
        const auto& time = file.ftLastWriteTime;
        found[folder + name] = std::to_string(file.nFileSizeLow) + " " + std::to_string(file.dwFileAttributes) + " " +
                               ((file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0
                                    ? ""
                                    : std::to_string(time.dwHighDateTime) + "." + std::to_string(time.dwLowDateTime));
    } while (FindNextFileA(search, &file));
    FindClose(search);
}

void Forget() {
    for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        for (const auto view : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
            for (const char* key :
                 {"Software\\Quillmark", "Software\\Microsoft\\Office", "Software\\Policies\\Microsoft\\Office"}) {
                RemoveTree(root, key, static_cast<REGSAM>(view));
            }
            RemoveTree(root, "Software\\Classes\\CLSID\\" + classId, static_cast<REGSAM>(view));
            RemoveTree(root, nameKey, static_cast<REGSAM>(view));
        }
    }
}

bool Has(const std::vector<standin::ControlView>& controls, const std::string& caption) {
    return std::any_of(controls.begin(), controls.end(),
                       [&](const standin::ControlView& control) { return control.caption == caption; });
}

}  // namespace

void Put(HKEY root, const std::string& key, const std::string& name, DWORD type, const std::string& bytes) {
    HKEY opened = nullptr;
    REQUIRE(RegCreateKeyA(root, key.c_str(), &opened) == ERROR_SUCCESS);
    const std::string guarded = bytes + '.';
    const LONG status = RegSetValueExA(opened, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(guarded.data()),
                                       static_cast<DWORD>(bytes.size()));
    RegCloseKey(opened);
    REQUIRE(status == ERROR_SUCCESS);
}

void PutText(HKEY root, const std::string& key, const std::string& name, const std::string& text) {
    Put(root, key, name, REG_SZ, text + '\0');
}

void PutNumber(HKEY root, const std::string& key, const std::string& name, DWORD number) {
    Put(root, key, name, REG_DWORD, std::string(reinterpret_cast<const char*>(&number), sizeof number));
}

void RemoveValue(HKEY root, const std::string& key, const std::string& name) {
    HKEY opened = nullptr;
    if (RegOpenKeyExA(root, key.c_str(), 0, KEY_SET_VALUE, &opened) != ERROR_SUCCESS) return;
    RegDeleteValueA(opened, name.c_str());
    RegCloseKey(opened);
}

void RemoveTree(HKEY root, const std::string& key, REGSAM view) {
    HKEY opened = nullptr;
    if (RegOpenKeyExA(root, key.c_str(), 0, KEY_READ | KEY_WRITE | view, &opened) != ERROR_SUCCESS) return;
    char child[256];
    DWORD length = sizeof child;
    std::vector<std::string> children;
    for (DWORD i = 0; RegEnumKeyExA(opened, i, child, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i) {
        children.emplace_back(child);
        length = sizeof child;
    }
    for (const std::string& each : children) RemoveTree(opened, each, view);
    std::vector<std::string> values;
    std::vector<char> name(16384);
    for (DWORD i = 0; length = 16384,
               RegEnumValueA(opened, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i) {
        values.emplace_back(name.data());
    }
    for (const std::string& each : values) RegDeleteValueA(opened, each.c_str());
    RegDeleteKeyA(opened, "");
    RegCloseKey(opened);
}

World::World(int version, For scope, int bits)
    : version_(version), bits_(bits), scope_(scope), folder_(own_program::Folder() + "world\\") {
    Forget();
    RemoveFolder(Path("AppData\\"));
    MakeFiles();
    Register();
}

World::~World() { Forget(); }

std::string World::Path(const std::string& name) const { return folder_ + name; }

void World::MakeFiles() const {
    const std::string parts = own_program::Folder() + "parts\\";
    for (const char* name : {"", "Office", "Corvella", "AddIn", "AddIn\\x64", "AppData", "AppData\\Corvella"}) {
        CreateDirectoryA(Path(name).c_str(), nullptr);
    }
    Copy(parts + "recorder.exe", Path("Corvella\\Corvella.exe"));
    Copy(parts + "CorvellaCheck.exe", Path("AddIn\\CorvellaCheck.exe"));
    // The library may be in this process already.
    if (!GetModuleHandleA("CVOutlookAddIn.dll")) Copy(parts + "CVOutlookAddIn.dll", Path("AddIn\\CVOutlookAddIn.dll"));
    for (const std::string language : {"English.lng", "Deutsch.lng", "Polski.lng"}) {
        for (const std::string folder : {"AddIn\\", "AddIn\\x64\\"}) {
            DeleteFileA(Path(folder + language).c_str());
            Copy(parts + language, Path(folder + language));
        }
    }
    DeleteFileA(Path("AddIn\\CorvellaAddIn.dbg.xml").c_str());
    Write("AddIn\\x64\\CVOutlookAddIn.dll", Library64());
    DeleteFileA(Path("Office\\OUTLOOK.EXE").c_str());
    if (bits_ == 32) Copy(parts + "recorder.exe", Path("Office\\OUTLOOK.EXE"));
    if (bits_ == 64) Write("Office\\OUTLOOK.EXE", Library64());
}

// What the add-in's setup writes, and what Office's does.
void World::Register() const {
    const std::string version = std::to_string(version_) + ".0";
    PutText(HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Office\\" + version + "\\Outlook\\InstallRoot", "Path",
            Path("Office\\"));
    PutText(HKEY_CURRENT_USER, shellFolders, "AppData", Path("AppData"));
    PutText(HKEY_CURRENT_USER, "Control Panel\\International", "sLanguage", "ENU");
    PutText(Root(), classKey, "", Path(bits_ == 64 ? "AddIn\\x64\\CVOutlookAddIn.dll" : "AddIn\\CVOutlookAddIn.dll"));
    PutText(Root(), classKey, "ThreadingModel", "Apartment");
    PutText(Root(), nameKey, "", "CVOutlookAddIn.Connect");
    PutText(Root(), nameKey + "\\CLSID", "", classId);
    PutText(Root(), addIns, "FriendlyName", "Corvella");
    PutNumber(Root(), addIns, "LoadBehavior", 3);
    PutText(HKEY_CURRENT_USER, product, "Path", Path("Corvella"));
    PutText(HKEY_CURRENT_USER, product + "\\Settings", "SaveIn", "0");
    Write("AppData\\Corvella\\corvella.ini", "[Settings]\r\nLanguage=English\r\n");
}

void World::Write(const std::string& name, const std::string& bytes) const {
    std::FILE* const file = std::fopen(Path(name).c_str(), "wb");
    REQUIRE(file != nullptr);
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
}

std::string World::Read(const std::string& name) const {
    std::string bytes;
    if (std::FILE* const file = std::fopen(Path(name).c_str(), "rb")) {
        char block[4096];
        for (std::size_t count; (count = std::fread(block, 1, sizeof block, file)) > 0;) bytes.append(block, count);
        std::fclose(file);
    }
    return bytes;
}

int World::Run(const std::string& arguments) {
    return static_cast<int>(ChildProcess("\"" + Path("AddIn\\CorvellaCheck.exe") + "\" " + arguments).End());
}

std::string World::Check() {
    DeleteFileA(Path("report.txt").c_str());
    std::string found = std::to_string(Run("\"/report=" + Path("report.txt") + "\""));
    const std::string report = Report();
    for (std::size_t at = 0; at < report.size();) {
        const std::size_t end = report.find("\r\n", at);
        const std::string line = report.substr(at, end - at);
        at = end + 2;
        const std::size_t open = line.find("  [");
        // What is fine has no second line.
        if (open == std::string::npos || line.starts_with(' ') || report.compare(at, 6, "      ") != 0) continue;
        found += " " + line.substr(open + 3, line.find(']') - open - 3);
    }
    return found;
}

int World::Repair(const std::string& more) { return Run("/repair " + more); }

bool World::Shows(bool button) {
    DWORD before = 0, size = sizeof before, type = 0;
    HKEY key = nullptr;
    RegOpenKeyExA(HKEY_CURRENT_USER, addIns.c_str(), 0, KEY_READ, &key);
    const bool had = RegQueryValueExA(key, "LoadBehavior", nullptr, &type, reinterpret_cast<BYTE*>(&before), &size) ==
                         ERROR_SUCCESS &&
                     type == REG_DWORD;
    if (key) RegCloseKey(key);
    standin::Options options;
    options.version = version_;
    options.ribbon.asked = standin::RibbonAsked::Never;
    bool shown = false;
    {
        standin::Outlook outlook(options);
        outlook.Start();
        const standin::Window window = outlook.Windows().front();
        shown = button ? !outlook.FindTag(window, "103").tag.empty()
                       : Has(outlook.Controls(window, "Menu Bar"), "C&orvella");
        outlook.Quit();
    }
    if (had) PutNumber(HKEY_CURRENT_USER, addIns, "LoadBehavior", before);
    RemoveValue(HKEY_CURRENT_USER, addInKey, "Active");
    return shown;
}

bool World::ShowsMenu() { return Shows(false); }
bool World::ShowsButton() { return Shows(true); }

std::string World::Resiliency(const std::string& list) const {
    return "Software\\Microsoft\\Office\\" + std::to_string(version_) + ".0\\Outlook\\Resiliency\\" + list;
}

void World::Disable(DWORD kind, const std::string& list) const {
    std::string path = Path("AddIn\\CVOutlookAddIn.dll");
    std::transform(path.begin(), path.end(), path.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    const std::string bytes = ::Resiliency::Bytes({kind, {path.begin(), path.end()}, u"cvoutlookaddin.connect"});
    Put(HKEY_CURRENT_USER, Resiliency(list), "12EF23A9", REG_BINARY, bytes);
}

std::map<std::string, std::string> World::Registry() {
    std::map<std::string, std::string> found;
    Collect(HKEY_CURRENT_USER, "Software", found);
    Collect(HKEY_CURRENT_USER, "Control Panel", found);
    for (const char* key : {"Software\\Quillmark", "Software\\Microsoft\\Office", "Software\\Policies"}) {
        std::map<std::string, std::string> machine;
        Collect(HKEY_LOCAL_MACHINE, key, machine);
        for (const auto& [name, value] : machine) found["machine " + name] = value;
    }
    return found;
}

std::map<std::string, std::string> World::Files() const {
    std::map<std::string, std::string> found;
    CollectFiles(folder_, found);
    return found;
}

}  // namespace check_test
