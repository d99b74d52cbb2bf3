// bench/MainApplication.h: a main application that the add-in finds and starts.
#pragma once
#include <windows.h>
// tlhelp32 after windows.h
#include <tlhelp32.h>

#include <string>

#include "bench/AddIns.h"

namespace Bench {

// The main application for as long as this object lives: a program that ends as soon as it was started.
class MainApplication {
  public:
    MainApplication() {
        char temporary[MAX_PATH];
        GetTempPathA(sizeof temporary, temporary);
        folder_ = std::string(temporary) + "Corvella Bench " + std::to_string(GetCurrentProcessId());
        CreateDirectoryA(folder_.c_str(), nullptr);
        CopyFileA((Folder() + "\\nothing.exe").c_str(), Program().c_str(), FALSE);
        HKEY key = nullptr;
        RegCreateKeyA(HKEY_CURRENT_USER, "Software\\Quillmark\\Corvella", &key);
        RegSetValueExA(key, "Path", 0, REG_SZ, reinterpret_cast<const BYTE*>(folder_.c_str()),
                       static_cast<DWORD>(folder_.size() + 1));
        RegCloseKey(key);
    }
    ~MainApplication() {
        DeleteFileA(Program().c_str());
        RemoveDirectoryA(folder_.c_str());
    }
    MainApplication(const MainApplication&) = delete;
    MainApplication& operator=(const MainApplication&) = delete;

    // By the bare call of Windows.
    void Start() const {
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started{};
        std::string command = "\"" + Program() + "\" syncdlg ol";
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started);
        CloseHandle(started.hThread);
        CloseHandle(started.hProcess);
    }

    // Until none that was started is left.
    void WaitForEnd() const {
        for (int looks = 0; looks < 500 && Runs(); ++looks) Sleep(10);
    }

  private:
    static bool Runs() {
        const HANDLE processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
        PROCESSENTRY32 process{};
        process.dwSize = sizeof process;
        bool found = false;
        for (BOOL more = Process32First(processes, &process); more && !found; more = Process32Next(processes, &process))
            found = lstrcmpiA(process.szExeFile, "Corvella.exe") == 0;
        CloseHandle(processes);
        return found;
    }
    [[nodiscard]] std::string Program() const { return folder_ + "\\Corvella.exe"; }
    std::string folder_;
};

}  // namespace Bench
