#include "platform/Environment.h"

#include <windows.h>

namespace platform {
namespace {

std::string FolderFrom(UINT(WINAPI* tell)(LPSTR, UINT)) {
    char folder[MAX_PATH];
    const UINT length = tell(folder, sizeof folder);
    if (length == 0 || length >= sizeof folder) return {};
    std::string path(folder, length);
    return path.ends_with('\\') ? path : path.append("\\");
}

}  // namespace

std::string EnvironmentVariable(const std::string& name) {
    std::string value;
    DWORD length = 256;
    do {  // what is too short tells the size that it takes
        value.resize(length);
        length = GetEnvironmentVariableA(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
    } while (length > value.size());
    value.resize(length);
    return value;
}

double WindowsVersion() noexcept {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(&version)) return 0;
    return version.dwMajorVersion + version.dwMinorVersion / 10.0;
}

std::string SystemFolder() { return FolderFrom(GetSystemDirectoryA); }

std::string WindowsFolder() { return FolderFrom(GetWindowsDirectoryA); }

}  // namespace platform
