// bench/PrivateKey.h: an empty HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE for the life of a measuring program. Its key is
// not volatile: below such a one no usual key can be made, and every write that is measured would fail.
#pragma once
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

class PrivateKey {
  public:
    PrivateKey() {
        Remove(path_);
        if (RegCreateKeyA(HKEY_CURRENT_USER, path_.c_str(), &key_) != ERROR_SUCCESS) GiveUp("the registry");
        RegOverridePredefKey(HKEY_CURRENT_USER, key_);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, key_);
        HKEY below = nullptr;
        if (RegCreateKeyA(HKEY_CURRENT_USER, "Software", &below) != ERROR_SUCCESS) GiveUp("a key of its own");
        RegCloseKey(below);
    }
    ~PrivateKey() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegCloseKey(key_);
        Remove(path_);
    }
    PrivateKey(const PrivateKey&) = delete;
    PrivateKey& operator=(const PrivateKey&) = delete;

  private:
    // Nothing would be measured.
    [[noreturn]] static void GiveUp(const char* what) {
        std::printf("no access to %s\n", what);
        std::exit(2);
    }

    static void Remove(const std::string& path) {
        HKEY key = nullptr;
        if (RegOpenKeyA(HKEY_CURRENT_USER, path.c_str(), &key) != ERROR_SUCCESS) return;
        char name[256];
        while (RegEnumKeyA(key, 0, name, sizeof name) == ERROR_SUCCESS) Remove(path + "\\" + name);
        RegCloseKey(key);
        RegDeleteKeyA(HKEY_CURRENT_USER, path.c_str());
    }

    // Of the tests' own keys (support/PrivateRegistry.h), which sweep what is left behind.
    std::string path_ = "Software\\Corvella Tests\\" + std::to_string(GetCurrentProcessId());
    HKEY key_ = nullptr;
};
