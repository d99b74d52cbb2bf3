// platform/Instance.h: the running instance of the program that this code is part of (the host).
#pragma once
#include <string>

namespace platform {

// Is another process of the same program running in this user's session? False where Windows does not tell.
[[nodiscard]] bool AnotherInstanceRuns() noexcept;

// The whole command line with which the program was started, its own path included.
[[nodiscard]] std::string HostCommandLine();

}  // namespace platform
