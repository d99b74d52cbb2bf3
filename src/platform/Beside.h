// platform/Beside.h: work beside the thread of the user interface. Only for a program of its own, never in the host.
#pragma once
#include <functional>

namespace platform {

// Runs `work` in a thread of its own, or at once where Windows gives none. What it throws ends it.
void RunBeside(std::function<void()> work);

// Ends the program now, whatever still runs beside.
[[noreturn]] void EndProgram(int code) noexcept;

}  // namespace platform
