// platform/Environment.h: what the process was given by the system around it.
//
// Shapes  ANSI text; the version as major + minor / 10 (Windows 2000 is 5.0, XP 5.1, Vista 6.0).
// Errors  a variable that is not set is the empty text, a version that Windows does not tell 0.
#pragma once
#include <string>

namespace platform {

[[nodiscard]] std::string EnvironmentVariable(const std::string& name);
[[nodiscard]] double WindowsVersion() noexcept;

}  // namespace platform
