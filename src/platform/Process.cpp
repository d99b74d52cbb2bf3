#include "platform/Process.h"

#include <windows.h>
// Needs windows.h before it.
#include <shellapi.h>

#include "platform/SystemError.h"

namespace platform {

namespace {

struct Started {
    HANDLE process = nullptr;
    DWORD id = 0;
};

// The caller closes the process handle; none where the start failed.
Started Start(const std::string& commandLine, Show show) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(show);
    PROCESS_INFORMATION started{};
    std::string line = commandLine;  // Windows may write into it
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started)) {
        RecordLastError();
        return {};
    }
    CloseHandle(started.hThread);
    return {started.hProcess, started.dwProcessId};
}

bool IsInFront(DWORD process) {
    DWORD front = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &front);
    return front == process;
}

}  // namespace

bool StartProcess(const std::string& commandLine, Show show) {
    const Started started = Start(commandLine, show);
    if (!started.process) return false;
    CloseHandle(started.process);
    return true;
}

bool StartProcessForInput(const std::string& commandLine, Show show) {
    constexpr DWORD longest = 2000;
    const Started started = Start(commandLine, show);
    if (!started.process) return false;
    bool ready = WaitForInputIdle(started.process, longest) == 0;
    // Ready comes a moment before the window does; a program that has ended brings none.
    for (DWORD waited = 0; ready && !IsInFront(started.id) && waited < longest; waited += 50) {
        ready = WaitForSingleObject(started.process, 50) == WAIT_TIMEOUT;
    }
    CloseHandle(started.process);
    return ready && IsInFront(started.id);
}

bool StartDocument(const std::string& file, const std::string& arguments, Show show) {
    if (file.empty()) return false;  // Windows would open the current folder
    SHELLEXECUTEINFOA document{};
    document.cbSize = sizeof document;
    document.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_FLAG_DDEWAIT;
    document.lpFile = file.c_str();
    document.lpParameters = arguments.empty() ? nullptr : arguments.c_str();
    document.nShow = static_cast<int>(show);
    if (ShellExecuteExA(&document)) return true;
    RecordLastError();
    return false;
}

}  // namespace platform
