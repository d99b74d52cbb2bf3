#include "outlook/SwitchedOff.h"

#include <windows.h>

#include <objbase.h>

#include <cstring>
#include <vector>

#include "outlook/ClassLookup.h"
#include "outlook/Words.h"

namespace standin {

namespace {

std::string Branch(const char* office, int version, const char* rest) {
    return std::string("Software\\") + office + "\\Office\\" + std::to_string(version) + ".0\\Outlook\\" + rest;
}

// A text or a number as text; empty where there is none.
std::string Word(HKEY root, const std::string& path, const std::string& name) {
    HKEY key = nullptr;
    char bytes[256] = "";
    DWORD size = sizeof bytes - 1, type = 0;
    if (RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return {};
    const LONG status = RegQueryValueExA(key, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(bytes), &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS) return {};
    DWORD number = 0;
    std::memcpy(&number, bytes, sizeof number);
    return type == REG_DWORD ? std::to_string(number) : type == REG_SZ ? std::string(bytes) : std::string();
}

std::wstring DefaultOf(HKEY root, const std::wstring& path) {
    wchar_t text[1024] = L"";
    LONG size = sizeof text - sizeof(wchar_t);
    return RegQueryValueW(root, path.c_str(), text, &size) == ERROR_SUCCESS ? text : L"";
}

// The file of the class, in small letters.
std::wstring LibraryOf(const std::string& progId) {
    CLSID classId;
    wchar_t text[64] = L"";
    if (!FindClassId(progId, classId)) return {};
    StringFromGUID2(classId, text, 64);
    const std::wstring path = std::wstring(L"CLSID\\") + text + L"\\InprocServer32";
    std::wstring library = DefaultOf(HKEY_CURRENT_USER, L"Software\\Classes\\" + path);
    if (library.empty()) library = DefaultOf(HKEY_CLASSES_ROOT, path);
    CharLowerBuffW(library.data(), static_cast<DWORD>(library.size()));
    return library;
}

bool Names(const std::vector<BYTE>& item, const std::wstring& library) {
    constexpr std::size_t head = 12;
    const std::size_t length = sizeof(wchar_t) * (library.size() + 1);
    DWORD stated = 0;
    if (item.size() < head + length) return false;
    std::memcpy(&stated, item.data() + 4, sizeof stated);
    return stated == length && std::memcmp(item.data() + head, library.c_str(), length) == 0;
}

bool IsDisabledItem(int version, const std::wstring& library) {
    HKEY key = nullptr;
    const std::string path = Branch("Microsoft", version, "Resiliency\\DisabledItems");
    if (library.empty() || RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    bool found = false;
    char name[256];
    std::vector<BYTE> item(4096);
    for (DWORD i = 0, length = sizeof name, size = 4096; !found; ++i, length = sizeof name, size = 4096) {
        item.resize(4096);
        const LONG status = RegEnumValueA(key, i, name, &length, nullptr, nullptr, item.data(), &size);
        if (status == ERROR_MORE_DATA) continue;
        if (status != ERROR_SUCCESS) break;
        item.resize(size);
        found = Names(item, library);
    }
    RegCloseKey(key);
    return found;
}

bool IsForbidden(HKEY root, int version, const std::string& progId) {
    const std::string resiliency = Branch("Policies\\Microsoft", version, "Resiliency");
    const std::string security = Branch("Policies\\Microsoft", version, "Security");
    const std::string listed = Word(root, resiliency + "\\AddinList", progId);
    return listed == "0" || (Word(root, resiliency, "RestrictToList") == "1" && listed.empty()) ||
           Word(root, security, "DisableAllAddins") == "1" || Word(root, security, "RequireAddinSig") == "1";
}

}  // namespace

bool IsSwitchedOff(int version, const std::string& progId) {
    return (version >= 10 && IsDisabledItem(version, LibraryOf(progId))) ||
           Word(HKEY_CURRENT_USER, Branch("Microsoft", version, "Resiliency\\AddinList"), progId) == "0" ||
           IsForbidden(HKEY_CURRENT_USER, version, progId) || IsForbidden(HKEY_LOCAL_MACHINE, version, progId);
}

}  // namespace standin
