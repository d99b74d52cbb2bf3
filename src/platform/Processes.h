// platform/Processes.h: the programs that run. Only for platform/: needs windows.h.
#pragma once
#include <windows.h>
// after windows.h
#include <tlhelp32.h>

namespace platform {

// The file name in a path.
[[nodiscard]] inline const char* NamePart(const char* path) {
    const char* name = path;
    for (const char* at = path; *at != '\0'; at = CharNextA(at)) {
        if (*at == '\\') name = at + 1;
    }
    return name;
}

// Whether `is` holds for any process, by its program's file name and its number. False where Windows does not tell.
template <class Is>
[[nodiscard]] bool AnyProcess(Is is) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE) return false;
    PROCESSENTRY32 process;
    process.dwSize = sizeof process;
    bool found = false;
    for (BOOL more = Process32First(snapshot, &process); more && !found; more = Process32Next(snapshot, &process)) {
        found = is(NamePart(process.szExeFile), process.th32ProcessID);
    }
    CloseHandle(snapshot);
    return found;
}

}  // namespace platform
