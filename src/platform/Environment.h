// platform/Environment.h: what the process was given by the system around it.
//
// Shapes  ANSI text; the version as major + minor / 10 (Windows 2000 is 5.0, XP 5.1, Vista 6.0).
// Errors  a variable that is not set is the empty text, a version that Windows does not tell 0.
#pragma once
#include <string>

namespace platform {

[[nodiscard]] std::string EnvironmentVariable(const std::string& name);
[[nodiscard]] double WindowsVersion() noexcept;

// Windows' own folders, that for programs and libraries and the one above it (Notepad is in both, hh.exe in the upper
// one alone), with a backslash at the end; empty where Windows does not tell. Programs of Windows are started from
// there: by name alone, one in the current folder would be.
[[nodiscard]] std::string SystemFolder();
[[nodiscard]] std::string WindowsFolder();

}  // namespace platform
