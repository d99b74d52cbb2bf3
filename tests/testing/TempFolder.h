// testing/TempFolder.h: a folder of its own, empty, for the life of one test. Folders that an
// earlier run left behind are removed. Nobody may hold a file in it when it goes.
#pragma once
#include <doctest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "testing/RemoveFolder.h"

class TempFolder {
  public:
    TempFolder() : path_(Parent() + std::to_string(GetCurrentProcessId()) + "." + std::to_string(++made) + "\\") {
        SweepStaleFolders();
        RemoveFolder(path_);
        REQUIRE(CreateDirectoryA(path_.c_str(), nullptr));
    }
    ~TempFolder() {
        RemoveFolder(path_);
        CHECK_MESSAGE(GetFileAttributesA(path_.c_str()) == INVALID_FILE_ATTRIBUTES, "a file in it is still open");
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // With a backslash at its end.
    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] std::string Path(const std::string& name) const { return path_ + name; }

    void Write(const std::string& name, const std::string& bytes) const {
        std::FILE* file = std::fopen(Path(name).c_str(), "wb");
        REQUIRE(file != nullptr);
        const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
        REQUIRE(written == bytes.size());
    }

    // The whole file, byte for byte; empty where there is none.
    [[nodiscard]] std::string Read(const std::string& name) const {
        std::string bytes;
        if (std::FILE* file = std::fopen(Path(name).c_str(), "rb")) {
            char block[4096];
            for (std::size_t count; (count = std::fread(block, 1, sizeof block, file)) > 0;) bytes.append(block, count);
            std::fclose(file);
        }
        return bytes;
    }

    [[nodiscard]] bool Exists(const std::string& name) const {
        return GetFileAttributesA(Path(name).c_str()) != INVALID_FILE_ATTRIBUTES;
    }

  private:
    static std::string Parent() {
        char temp[MAX_PATH];
        GetTempPathA(sizeof temp, temp);
        std::string parent = std::string(temp) + "Corvella Tests\\";
        CreateDirectoryA(parent.c_str(), nullptr);
        return parent;
    }

    static bool IsRunning(DWORD processId) {
        const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, processId);
        if (process == nullptr) return false;
        const bool running = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
        CloseHandle(process);
        return running;
    }

    static void SweepStaleFolders() {
        const std::string parent = Parent();
        WIN32_FIND_DATAA found;
        const HANDLE search = FindFirstFileA((parent + "*").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) return;
        do {
            const DWORD processId = std::strtoul(found.cFileName, nullptr, 10);
            if (processId != 0 && processId != GetCurrentProcessId() && !IsRunning(processId)) {
                RemoveFolder(parent + found.cFileName + "\\");
            }
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }

    static inline int made = 0;
    std::string path_;
};
