// testing/SettingsHelper.h: runs the other process of the settings tests (settings_helper.cpp) to its end.
#pragma once
#include <string>
#include <vector>

#include "testing/ChildProcess.h"

// Returns its exit code.
inline DWORD RunSettingsHelper(const std::vector<std::string>& arguments) {
    std::string command = "\"" + own_program::Folder() + "settings_helper.exe\"";
    for (const std::string& argument : arguments) command += " \"" + argument + "\"";
    return ChildProcess(command).End();
}
