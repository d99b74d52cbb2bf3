// A program that stands in for any other: it adds one line to "recorded.txt" in its own folder, the show state that
// it was started with, a blank, and its command line as it arrived; with "wait" as the last argument it then stays
// for a while, until its starter ends it.
#include <windows.h>

#include <string>

#include "testing/OwnProgram.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const std::string file = own_program::Folder() + "recorded.txt";

    STARTUPINFOA startup;
    GetStartupInfoA(&startup);
    const int show = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 ? startup.wShowWindow : -1;
    const std::string commandLine = GetCommandLineA();
    const std::string line = std::to_string(show) + " " + commandLine + "\r\n";

    const HANDLE handle = CreateFileA(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_ALWAYS, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return 1;
    DWORD written = 0;
    WriteFile(handle, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(handle);
    if (commandLine.size() > 4 && commandLine.substr(commandLine.size() - 4) == "wait") Sleep(20000);
    return 0;
}
