#include "day/Observed.h"

#include <tlhelp32.h>

#include <utility>

namespace program::day {

std::optional<std::string> Value(const char* key, const char* name) {
    HKEY opened = nullptr;
    if (RegOpenKeyA(HKEY_CURRENT_USER, key, &opened) != ERROR_SUCCESS) return std::nullopt;
    std::string text(4096, '\0');
    DWORD size = static_cast<DWORD>(text.size());
    const LONG status = RegQueryValueExA(opened, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &size);
    RegCloseKey(opened);
    if (status != ERROR_SUCCESS) return std::nullopt;
    text.resize(size);
    while (!text.empty() && text.back() == '\0') text.pop_back();
    return text;
}

std::string Shown(const std::optional<std::string>& value) {
    if (!value) return "missing";
    return value->size() <= 40
               ? "\"" + *value + "\""
               : "\"" + value->substr(0, 20) + "...\" (" + std::to_string(value->size()) + " characters)";
}

std::string Folder() { return Value(productKey, "Path").value_or(""); }

namespace {

std::string IniText(const std::string& file, const char* section, const char* key) {
    char text[512] = {};
    GetPrivateProfileStringA(section, key, "", text, sizeof text, file.c_str());
    return text;
}

}  // namespace

std::string Language() { return IniText(Folder() + "\\corvella.ini", "Settings", "Language"); }

std::string LanguageText(const char* section, const char* key) {
    return IniText(Folder() + "\\" + Language() + ".lng", section, key);
}

std::string AddInVersion() {
    const std::string file = Folder() + "\\CVOutlookAddIn.dll";
    DWORD ignored = 0;
    std::string record(GetFileVersionInfoSizeA(file.c_str(), &ignored), '\0');
    void* fixed = nullptr;
    UINT size = 0;
    if (!GetFileVersionInfoA(file.c_str(), 0, static_cast<DWORD>(record.size()), record.data()) ||
        !VerQueryValueA(record.data(), "\\", &fixed, &size))
        return {};
    const auto& info = *static_cast<const VS_FIXEDFILEINFO*>(fixed);
    return std::to_string(HIWORD(info.dwFileVersionMS)) + "." + std::to_string(LOWORD(info.dwFileVersionMS)) + "." +
           std::to_string(HIWORD(info.dwFileVersionLS));
}

std::optional<DWORD> WaitUntil(const Stage& stage, const std::function<bool()>& condition) {
    constexpr DWORD longest = 10000;
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start > longest) return std::nullopt;
        stage.Pump(10);
    }
    return GetTickCount() - start;
}

std::string ClassOf(HWND window) {
    char name[64] = {};
    GetClassNameA(window, name, sizeof name);
    return name;
}

// Asked by a message: GetWindowText reads no control of another program.
std::string TextOf(HWND window) {
    const LRESULT length = SendMessageA(window, WM_GETTEXTLENGTH, 0, 0);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    SendMessageA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return text.c_str();
}

std::vector<HWND> ChildrenOf(HWND window) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (IsWindowVisible(child)) children.push_back(child);
    return children;
}

HWND WindowTitled(const char* className, const std::string& part) {
    for (HWND window = FindWindowA(className, nullptr); window;
         window = FindWindowExA(nullptr, window, className, nullptr)) {
        char title[256] = {};
        GetWindowTextA(window, title, sizeof title);
        if (std::string(title).find(part) != std::string::npos) return window;
    }
    return nullptr;
}

std::string ProgramOf(HWND window) {
    DWORD wanted = 0;
    GetWindowThreadProcessId(window, &wanted);
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    std::string name;
    for (BOOL more = Process32First(list, &entry); more; more = Process32Next(list, &entry))
        if (entry.th32ProcessID == wanted) name = entry.szExeFile;
    CloseHandle(list);
    CharLowerA(name.data());
    return name;
}

}  // namespace program::day
