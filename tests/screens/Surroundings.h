// screens/Surroundings.h: what the programs that take pictures are told by the environment: CV_PICTURES (the folder),
// CV_LANGUAGES (separated by blanks), and the dots an inch of the desktop. CV_AWARE=screens makes the thread that shows
// the forms aware of each screen's resolution, as Outlook 2016 is; else the process knows that of the desktop alone.
#pragma once
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

inline std::string Setting(const char* name, const char* otherwise) {
    const char* const value = std::getenv(name);
    return value ? value : otherwise;
}

inline std::vector<std::string> Languages() {
    std::istringstream names(Setting("CV_LANGUAGES", "English"));
    std::vector<std::string> languages;
    for (std::string language; names >> language;) languages.push_back(language);
    return languages;
}

inline bool BecomeAwareOfScreens() {
    constexpr std::intptr_t eachScreen = -3;
    const auto become = GetProcAddress(GetModuleHandleA("user32.dll"), "SetThreadDpiAwarenessContext");
    return become && reinterpret_cast<void*(WINAPI*)(std::intptr_t)>(become)(eachScreen) != nullptr;
}

// Of the desktop itself: Windows scales nothing for this process from now on.
inline std::string DotsAnInch() {
    if (Setting("CV_AWARE", "desktop") == "screens" && !BecomeAwareOfScreens()) return "unknown";
    if (const auto aware = GetProcAddress(GetModuleHandleA("user32.dll"), "SetProcessDPIAware")) {
        reinterpret_cast<BOOL(WINAPI*)()>(aware)();
    }
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return std::to_string(dots);
}

inline std::string PictureFile(const std::string& form, const std::string& language, const std::string& dots) {
    return Setting("CV_PICTURES", ".") + "/" + form + "-" + language + "-" + dots + ".bmp";
}
