// testing/WindowsFolders.h: a folder of the test in place of Windows' own two, as one module sees them.
#pragma once
#include <windows.h>

#include <string>

#include "testing/ImportPatch.h"
#include "testing/TempFolder.h"

class WindowsFolders {
  public:
    explicit WindowsFolders(const TempFolder& folder, HMODULE module = GetModuleHandleA(nullptr)) {
        Path() = folder.Path();
        const ImportPatch::Import imports[] = {
            {"KERNEL32.dll", "GetWindowsDirectoryA", reinterpret_cast<void*>(&Tell)},
            {"KERNEL32.dll", "GetSystemDirectoryA", reinterpret_cast<void*>(&Tell)},
        };
        (void)patch_.Replace(module, imports);  // a module may ask for one of them only
    }

  private:
    static std::string& Path() {
        static std::string path;
        return path;
    }
    static UINT WINAPI Tell(LPSTR folder, UINT size) {
        const std::string& path = Path();
        if (path.size() >= size) return static_cast<UINT>(path.size()) + 1;
        lstrcpynA(folder, path.c_str(), static_cast<int>(size));
        return static_cast<UINT>(path.size());
    }

    ImportPatch patch_;
};
