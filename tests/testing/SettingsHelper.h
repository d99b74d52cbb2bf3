// testing/SettingsHelper.h: runs the other process of the settings tests (settings_helper.cpp) to its end.
#pragma once
#include <doctest.h>
#include <windows.h>

#include <string>
#include <vector>

// Its exit code.
inline DWORD RunSettingsHelper(const std::vector<std::string>& arguments) {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string program = path;
    program.resize(program.rfind('\\') + 1);
    std::string command = "\"" + program + "settings_helper.exe\"";
    for (const std::string& argument : arguments) command += " \"" + argument + "\"";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    REQUIRE(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process));
    REQUIRE(WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}
