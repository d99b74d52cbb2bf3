#include "platform/Process.h"

#include <windows.h>

#include "platform/SystemError.h"

namespace platform {

bool StartProcess(const std::string& commandLine, Show show) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(show);
    PROCESS_INFORMATION started{};
    std::string line = commandLine;  // Windows may write into it
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started)) {
        RecordLastError();
        return false;
    }
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return true;
}

}  // namespace platform
