#include "platform/com/Registration.h"

#include <windows.h>

#include "platform/Guard.h"

namespace platform {
namespace {

// A place where classes are registered.
struct ClassesPlace {
    HKEY root;
    const char* prefix;
};
const ClassesPlace machineClasses{HKEY_CLASSES_ROOT, ""};
const ClassesPlace userClasses{HKEY_CURRENT_USER, "Software\\Classes\\"};

constexpr const char* outlookAddins = "Software\\Microsoft\\Office\\Outlook\\Addins\\";

// A key that is open for writing, made when it is missing; every write fails where it could not be.
class WritableKey {
  public:
    WritableKey(HKEY root, const std::string& path) {
        if (RegCreateKeyExA(root, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr, &key_,
                            nullptr) != ERROR_SUCCESS) {
            key_ = nullptr;
        }
    }
    WritableKey(const WritableKey&) = delete;
    WritableKey& operator=(const WritableKey&) = delete;
    ~WritableKey() {
        if (key_) RegCloseKey(key_);
    }

    bool Write(const char* name, const std::string& text) const {
        return Write(name, REG_SZ, text.c_str(), text.size() + 1);
    }
    bool Write(const char* name, DWORD number) const { return Write(name, REG_DWORD, &number, sizeof number); }

  private:
    bool Write(const char* name, DWORD type, const void* data, std::size_t size) const {
        return key_ && RegSetValueExA(key_, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)) ==
                           ERROR_SUCCESS;
    }
    HKEY key_ = nullptr;
};

constexpr const char* defaultValue = nullptr;

bool WriteClasses(const ClassesPlace& place, const ServerDescription& server, const std::string& libraryPath) {
    const std::string classKey = std::string(place.prefix) + "CLSID\\" + server.clsid;
    const std::string programKey = std::string(place.prefix) + server.progId;
    const WritableKey library(place.root, classKey + "\\InprocServer32");
    return WritableKey(place.root, classKey).Write(defaultValue, server.className) &&
           library.Write(defaultValue, libraryPath) && library.Write("ThreadingModel", "Apartment") &&
           WritableKey(place.root, classKey + "\\ProgID").Write(defaultValue, server.progId) &&
           WritableKey(place.root, programKey).Write(defaultValue, server.className) &&
           WritableKey(place.root, programKey + "\\CLSID").Write(defaultValue, server.clsid);
}

bool WriteAddin(const ServerDescription& server) {
    const WritableKey addin(HKEY_CURRENT_USER, std::string(outlookAddins) + server.progId);
    return addin.Write("FriendlyName", server.friendlyName) && addin.Write("Description", server.description) &&
           addin.Write("LoadBehavior", server.loadBehavior);
}

// Windows NT deletes only keys without subkeys. True when the key is not there any more.
bool DeleteTree(HKEY root, const std::string& path) {
    HKEY key = nullptr;
    const LONG opened = RegOpenKeyExA(root, path.c_str(), 0, KEY_ENUMERATE_SUB_KEYS, &key);
    if (opened == ERROR_FILE_NOT_FOUND) return true;
    if (opened != ERROR_SUCCESS) return false;
    char child[256];
    DWORD length = sizeof child;
    bool deleting = true;
    while (deleting && RegEnumKeyExA(key, 0, child, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
        deleting = DeleteTree(key, child);
        length = sizeof child;
    }
    RegCloseKey(key);
    return RegDeleteKeyA(root, path.c_str()) == ERROR_SUCCESS;
}

void DeleteIfEmpty(HKEY root, const char* path) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(root, path, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) return;
    DWORD subkeys = 1;
    DWORD values = 1;
    RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr, nullptr, nullptr,
                     nullptr);
    RegCloseKey(key);
    if (subkeys == 0 && values == 0) RegDeleteKeyA(root, path);
}

std::string ClassKey(const ClassesPlace& place, const ServerDescription& server) {
    return std::string(place.prefix) + "CLSID\\" + server.clsid;
}

bool DeleteClass(const ClassesPlace& place, const ServerDescription& server) {
    return DeleteTree(place.root, ClassKey(place, server));
}

bool DeleteName(const ClassesPlace& place, const ServerDescription& server) {
    return DeleteTree(place.root, std::string(place.prefix) + server.progId);
}

bool IsThere(const ClassesPlace& place, const ServerDescription& server, REGSAM view) {
    HKEY key = nullptr;
    const std::string path = ClassKey(place, server) + "\\InprocServer32";
    if (RegOpenKeyExA(place.root, path.c_str(), 0, KEY_QUERY_VALUE | view, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
}

// Whether the library of the other size of pointers is registered, in the view of the registry that is its own. A
// Windows without such views refuses to be asked for one, or shows what is in the only one.
bool IsOtherLibraryThere(const ClassesPlace& place, const ServerDescription& server) {
    constexpr REGSAM otherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    return !IsThere(place, server, 0) && IsThere(place, server, otherView);
}

bool DeleteClassAndName(const ClassesPlace& place, const ServerDescription& server) {
    const bool classGone = DeleteClass(place, server);
    return (IsOtherLibraryThere(place, server) || DeleteName(place, server)) && classGone;
}

bool DeleteAddin(const ServerDescription& server) {
    const bool gone = DeleteTree(HKEY_CURRENT_USER, std::string(outlookAddins) + server.progId);
    for (const char* parent : {"Software\\Microsoft\\Office\\Outlook\\Addins", "Software\\Microsoft\\Office\\Outlook",
                               "Software\\Microsoft\\Office"}) {
        DeleteIfEmpty(HKEY_CURRENT_USER, parent);
    }
    return gone;
}

// What both libraries share: the name and the add-in.
bool DeleteShared(const ServerDescription& server) {
    const bool userGone = DeleteName(userClasses, server);
    const bool machineGone = DeleteName(machineClasses, server);
    const bool addinGone = DeleteAddin(server);
    return userGone && machineGone && addinGone;
}

// The user's own entries first: they hide those of the machine behind HKEY_CLASSES_ROOT.
bool DeleteAll(const ServerDescription& server) {
    const bool userGone = DeleteClass(userClasses, server);
    DeleteIfEmpty(HKEY_CURRENT_USER, "Software\\Classes\\CLSID");
    const bool machineGone = DeleteClass(machineClasses, server);
    const bool gone = userGone && machineGone;
    if (IsOtherLibraryThere(machineClasses, server) || IsOtherLibraryThere(userClasses, server)) return gone;
    return DeleteShared(server) && gone;
}

bool WriteClassesSomewhere(const ServerDescription& server, const std::string& libraryPath) {
    if (WriteClasses(machineClasses, server, libraryPath)) return true;
    DeleteClassAndName(machineClasses, server);
    return WriteClasses(userClasses, server, libraryPath);
}

// A folder whose name the ANSI code page cannot hold reads back as one that does not exist.
bool Exists(const std::string& path) { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

}  // namespace

bool RegisterServer(const ServerDescription& server, const std::string& libraryPath) noexcept {
    bool registered = false;
    RunGuarded(
        [&] { registered = Exists(libraryPath) && WriteClassesSomewhere(server, libraryPath) && WriteAddin(server); });
    if (!registered) RunGuarded([&] { DeleteAll(server); });
    return registered;
}

bool UnregisterServer(const ServerDescription& server) noexcept {
    bool gone = false;
    RunGuarded([&] { gone = DeleteAll(server); });
    return gone;
}

}  // namespace platform
