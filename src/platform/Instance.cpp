#include "platform/Instance.h"

#include "platform/Processes.h"

namespace platform {
namespace {

bool InThisSession(DWORD processId) {
    DWORD own = 0;
    DWORD other = 0;
    return !ProcessIdToSessionId(GetCurrentProcessId(), &own) || !ProcessIdToSessionId(processId, &other) ||
           own == other;
}

}  // namespace

bool AnotherInstanceRuns() noexcept {
    char path[MAX_PATH + 1] = {};
    if (GetModuleFileNameA(nullptr, path, MAX_PATH) == 0) return false;
    const char* program = NamePart(path);
    return AnyProcess([program](const char* name, DWORD id) {
        return id != GetCurrentProcessId() && lstrcmpiA(name, program) == 0 && InThisSession(id);
    });
}

std::string HostCommandLine() { return GetCommandLineA(); }

}  // namespace platform
