// day/Observed.h: what is read to see what happened, by Windows' own functions.
#pragma once
#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "outlook/program/Stage.h"
#include "testing/Keys.h"

namespace program::day {

using keys::addInKey;
using keys::outlookKey;
using keys::productKey;

// A text of the registry, under HKEY_CURRENT_USER.
[[nodiscard]] std::optional<std::string> Value(const char* key, const char* name);
[[nodiscard]] std::string Shown(
    const std::optional<std::string>& value);  // for a line; long ones cut, missing: "missing"

[[nodiscard]] std::string Folder();    // Corvella's, without a backslash at its end
[[nodiscard]] std::string Language();  // the name that the settings file gives
[[nodiscard]] std::string LanguageText(const char* section, const char* key);
[[nodiscard]] std::string AddInVersion();  // of the DLL's version record, "1.2.3"

// Lets the program run until it is so, for some seconds at most; how long it took, or nothing.
std::optional<DWORD> WaitUntil(const Stage& stage, const std::function<bool()>& condition);

// --- windows ---

[[nodiscard]] std::string ClassOf(HWND window);
[[nodiscard]] std::string TextOf(HWND window);
[[nodiscard]] std::vector<HWND> ChildrenOf(HWND window);  // those to be seen, in the order of the keyboard
[[nodiscard]] HWND WindowTitled(const char* className, const std::string& part);  // of any program; null: there is none
[[nodiscard]] std::string ProgramOf(HWND window);  // the file name of the program whose window it is, in small letters

}  // namespace program::day
