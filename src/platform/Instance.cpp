#include "platform/Instance.h"

#include <windows.h>
// after windows.h
#include <tlhelp32.h>

#include <cstring>

namespace platform {
namespace {

const char* NamePart(const char* path) {
    const char* name = path;
    for (const char* at = path; *at != '\0'; at = CharNextA(at)) {
        if (*at == '\\') name = at + 1;
    }
    return name;
}

bool InThisSession(DWORD processId) {
    DWORD own = 0;
    DWORD other = 0;
    return !ProcessIdToSessionId(GetCurrentProcessId(), &own) || !ProcessIdToSessionId(processId, &other) ||
           own == other;
}

bool IsAnotherOf(const char* program, const PROCESSENTRY32& process) {
    return process.th32ProcessID != GetCurrentProcessId() && lstrcmpiA(NamePart(process.szExeFile), program) == 0 &&
           InThisSession(process.th32ProcessID);
}

}  // namespace

bool AnotherInstanceRuns() noexcept {
    char path[MAX_PATH + 1] = {};
    if (GetModuleFileNameA(nullptr, path, MAX_PATH) == 0) return false;
    const char* program = NamePart(path);
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE) return false;
    PROCESSENTRY32 process;
    process.dwSize = sizeof process;
    bool found = false;
    for (BOOL more = Process32First(snapshot, &process); more && !found; more = Process32Next(snapshot, &process)) {
        found = IsAnotherOf(program, process);
    }
    CloseHandle(snapshot);
    return found;
}

std::string HostCommandLine() { return GetCommandLineA(); }

}  // namespace platform
