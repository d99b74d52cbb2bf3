#include "platform/Console.h"

#include <windows.h>

#include <string>

namespace platform {
namespace {

bool IsUsable(HANDLE handle) { return handle != nullptr && handle != INVALID_HANDLE_VALUE; }

bool AttachToParent() {
    using Attach = BOOL(WINAPI*)(DWORD);
    const auto attach = reinterpret_cast<Attach>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "AttachConsole"));
    constexpr auto parent = static_cast<DWORD>(-1);
    return attach && attach(parent);
}

}  // namespace

bool WriteToConsole(std::string_view text) {
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    HANDLE console = INVALID_HANDLE_VALUE;
    if (!IsUsable(output) && AttachToParent()) {
        console = CreateFileA("CONOUT$", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                              nullptr);
        output = console;
    }
    if (!IsUsable(output)) return false;
    std::string bytes(text);
    if (GetFileType(output) == FILE_TYPE_CHAR)
        CharToOemBuffA(bytes.data(), bytes.data(), static_cast<DWORD>(bytes.size()));
    DWORD written = 0;
    const bool done = WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != FALSE;
    if (IsUsable(console)) CloseHandle(console);
    return done;
}

}  // namespace platform
