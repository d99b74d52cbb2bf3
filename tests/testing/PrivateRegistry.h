// testing/PrivateRegistry.h: a registry of its own for the life of one test. While it lives, what this process reads
// and writes below HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE and HKEY_CLASSES_ROOT lies in a fresh, empty key; other
// processes, also those that this one starts, see the real roots. Keys that an earlier run left behind are removed.
#pragma once
#include <doctest.h>
#include <windows.h>

#include <string>
#include <vector>

class PrivateRegistry {
  public:
    PrivateRegistry() {
        SweepStaleKeys();
        REQUIRE(RegCreateKeyA(HKEY_CURRENT_USER, OwnPath().c_str(), &home_) == ERROR_SUCCESS);
        for (Replaced& root : roots_) {
            REQUIRE(RegCreateKeyA(home_, root.name, &root.key) == ERROR_SUCCESS);
        }
        for (const Replaced& root : roots_) REQUIRE(RegOverridePredefKey(root.root, root.key) == ERROR_SUCCESS);
    }
    ~PrivateRegistry() {
        for (const Replaced& root : roots_) {
            RegOverridePredefKey(root.root, nullptr);
            RegCloseKey(root.key);
        }
        RegCloseKey(home_);
        RemoveTree(HKEY_CURRENT_USER, OwnPath());
    }
    PrivateRegistry(const PrivateRegistry&) = delete;
    PrivateRegistry& operator=(const PrivateRegistry&) = delete;

    // Stores exactly these bytes. Strings: with the terminating NUL only if it is among them.
    static void Put(HKEY root, const std::string& subkey, const std::string& name, DWORD type,
                    const std::string& bytes) {
        HKEY key = nullptr;
        REQUIRE(RegCreateKeyA(root, subkey.c_str(), &key) == ERROR_SUCCESS);
        const std::string guarded = bytes + '.';  // Windows would count a NUL that stands behind the data
        const LONG status = RegSetValueExA(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(guarded.data()),
                                           static_cast<DWORD>(bytes.size()));
        RegCloseKey(key);
        REQUIRE(status == ERROR_SUCCESS);
    }
    static void PutText(HKEY root, const std::string& subkey, const std::string& name, const std::string& text) {
        Put(root, subkey, name, REG_SZ, text);
    }

    struct Value {
        bool present = false;
        DWORD type = REG_NONE;
        std::string bytes;
    };
    // As it is stored, whatever its type.
    static Value Raw(HKEY root, const std::string& subkey, const std::string& name) {
        Value value;
        HKEY key = nullptr;
        if (RegOpenKeyA(root, subkey.c_str(), &key) != ERROR_SUCCESS) return value;
        DWORD size = 0;
        if (RegQueryValueExA(key, name.c_str(), nullptr, &value.type, nullptr, &size) == ERROR_SUCCESS) {
            value.bytes.resize(size);
            value.present = RegQueryValueExA(key, name.c_str(), nullptr, nullptr,
                                             reinterpret_cast<BYTE*>(value.bytes.data()), &size) == ERROR_SUCCESS;
            value.bytes.resize(size);
        }
        RegCloseKey(key);
        return value;
    }

    static bool KeyExists(HKEY root, const std::string& subkey) {
        HKEY key = nullptr;
        if (RegOpenKeyA(root, subkey.c_str(), &key) != ERROR_SUCCESS) return false;
        RegCloseKey(key);
        return true;
    }

  private:
    struct Replaced {
        HKEY root;
        const char* name;
        HKEY key = nullptr;
    };

    static constexpr const char* parent = "Software\\Corvella Tests";

    static std::string OwnPath() { return std::string(parent) + "\\" + std::to_string(GetCurrentProcessId()); }

    static std::vector<std::string> Subkeys(HKEY root, const std::string& path) {
        std::vector<std::string> names;
        HKEY key = nullptr;
        if (RegOpenKeyA(root, path.c_str(), &key) != ERROR_SUCCESS) return names;
        char name[256];
        for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof name) == ERROR_SUCCESS; ++i) names.emplace_back(name);
        RegCloseKey(key);
        return names;
    }

    static void RemoveTree(HKEY root, const std::string& path) {
        for (const std::string& name : Subkeys(root, path)) RemoveTree(root, path + "\\" + name);
        RegDeleteKeyA(root, path.c_str());
    }

    static bool IsRunning(DWORD processId) {
        const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, processId);
        if (process == nullptr) return false;
        const bool running = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
        CloseHandle(process);
        return running;
    }

    static void SweepStaleKeys() {
        for (const std::string& name : Subkeys(HKEY_CURRENT_USER, parent)) {
            const DWORD processId = std::strtoul(name.c_str(), nullptr, 10);
            if (processId == GetCurrentProcessId() || !IsRunning(processId)) {
                RemoveTree(HKEY_CURRENT_USER, std::string(parent) + "\\" + name);
            }
        }
    }

    HKEY home_ = nullptr;
    Replaced roots_[3] = {{HKEY_CURRENT_USER, "User"}, {HKEY_LOCAL_MACHINE, "Machine"}, {HKEY_CLASSES_ROOT, "Classes"}};
};
