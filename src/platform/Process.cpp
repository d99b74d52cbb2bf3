#include "platform/Process.h"

#include <windows.h>
// Needs windows.h before it.
#include <shellapi.h>

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
