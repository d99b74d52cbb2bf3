// testing/ChildProcess.h: another process, for as long as the object lives.
#pragma once
#include <doctest.h>
#include <windows.h>

#include <string>

#include "testing/OwnProgram.h"

class ChildProcess {
  public:
    // The path of a program that has blanks in it stands between quotes.
    explicit ChildProcess(std::string commandLine) {
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        REQUIRE(CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                               &started_));
    }
    // Where it has not ended by itself, it is ended.
    ~ChildProcess() {
        TerminateProcess(started_.hProcess, 1);
        WaitForSingleObject(started_.hProcess, 10000);
        CloseHandle(started_.hThread);
        CloseHandle(started_.hProcess);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] DWORD Id() const { return started_.dwProcessId; }

    // Waits for its end; the exit code.
    [[nodiscard]] DWORD End(DWORD milliseconds = 60000) const {
        REQUIRE(WaitForSingleObject(started_.hProcess, milliseconds) == WAIT_OBJECT_0);
        DWORD code = 0;
        REQUIRE(GetExitCodeProcess(started_.hProcess, &code));
        return code;
    }

  private:
    PROCESS_INFORMATION started_{};
};

// The command line that starts this program once more, with that one case, which the program itself may skip.
inline std::string CommandLineOfCase(const std::string& name) {
    return "\"" + own_program::Path() + "\" --no-skip --test-case=\"" + name + "\"";
}
