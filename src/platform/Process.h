// platform/Process.h: starting another program, by its command line or by a document of it.
//
// Shapes  A command line as Windows takes it: the program's path, in double quotes where it
//         has blanks, then the arguments.
// Errors  a start that fails is recorded as the pending error and returns false.
// Effects starts a process and does not wait for it; nothing of it stays held.
#pragma once
#include <cstdint>
#include <string>

namespace platform {

// How the program is told to show its main window (Windows' own numbers).
enum class Show : std::uint16_t {
    Normal = 1,
    Minimised = 2,  // and active: it receives the focus
};

bool StartProcess(const std::string& commandLine, Show show);

// The same, and then waits until the program is ready for its user's input, two seconds at most. False also when it
// is not ready by then, or its window is not the one in front.
bool StartProcessForInput(const std::string& commandLine, Show show);

// Opens a document, folder, address or program as the desktop does for a double click; shows no message of its own.
bool StartDocument(const std::string& file, const std::string& arguments, Show show);

}  // namespace platform
