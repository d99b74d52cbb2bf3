// bench/PrivateKey.h: an empty HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE for the life of a measuring program.
#pragma once
#include <windows.h>

#include <string>

class PrivateKey {
  public:
    PrivateKey() {
        RegDeleteKeyA(HKEY_CURRENT_USER, path_.c_str());
        RegCreateKeyExA(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                        &key_, nullptr);
        RegOverridePredefKey(HKEY_CURRENT_USER, key_);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, key_);
    }
    ~PrivateKey() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegCloseKey(key_);
    }
    PrivateKey(const PrivateKey&) = delete;
    PrivateKey& operator=(const PrivateKey&) = delete;

  private:
    // Of the tests' own keys (support/PrivateRegistry.h), which sweep what is left behind.
    std::string path_ = "Software\\Corvella Tests\\" + std::to_string(GetCurrentProcessId());
    HKEY key_ = nullptr;
};
