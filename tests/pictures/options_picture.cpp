// Takes a picture of the options dialog: options_picture LANGUAGE OUTLOOK-VERSION FILE.bmp
// The values shown are examples; nothing of the user's own is read or written.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/PrivateKey.h"
#include "bridge/FormOlAddInOptions.h"
#include "bridge/OlVersion.h"
#include "config/IniFile.h"
#include "config/InifileCV.h"
#include "language/Language.h"
#include "support/Files.h"

namespace {

constexpr UINT paintingTime = 400;  // milliseconds

std::string pictureFile;

void Write(const std::string& path, const void* bytes, std::size_t size) {
    const HANDLE file = CreateFileA(path.c_str(), FILE_APPEND_DATA, 0, nullptr, OPEN_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes, static_cast<DWORD>(size), &written, nullptr);
    CloseHandle(file);
}

// What the screen shows of the window, as a bitmap of 24 bits.
void TakePicture(HWND window) {
    RECT area;
    GetWindowRect(window, &area);
    BITMAPINFOHEADER picture{};
    picture.biSize = sizeof picture;
    picture.biWidth = area.right - area.left;
    picture.biHeight = area.bottom - area.top;
    picture.biPlanes = 1;
    picture.biBitCount = 24;
    const auto size = static_cast<DWORD>((picture.biWidth * 3 + 3) / 4 * 4 * picture.biHeight);
    void* pixels = nullptr;
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader = picture;
    const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, picture.biWidth, picture.biHeight, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    BITMAPFILEHEADER head{};
    head.bfType = 0x4D42;
    head.bfOffBits = sizeof head + sizeof picture;
    head.bfSize = head.bfOffBits + size;
    DeleteFileA(pictureFile.c_str());
    Write(pictureFile, &head, sizeof head);
    Write(pictureFile, &picture, sizeof picture);
    Write(pictureFile, pixels, size);
    DeleteDC(memory);
    DeleteObject(bitmap);
    ReleaseDC(nullptr, screen);
}

void CALLBACK PictureTime(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND window = FormOlAddInOptions::Shared().Window();
    KillTimer(nullptr, timer);
    TakePicture(window);
    PostMessageA(window, WM_CLOSE, 0, 0);
}

// A folder of settings with a profile in it.
std::string ExampleSettings() {
    char temp[MAX_PATH];
    GetTempPathA(sizeof temp, temp);
    const std::string folder = std::string(temp) + "Corvella pictures\\";
    CreateDirectoryA(folder.c_str(), nullptr);
    for (const char* name : {"corvella.ini", "Office.ini"}) {
        DeleteFileA((folder + name).c_str());
        Write(folder + name, "[Settings]\r\n", 12);
    }
    return folder;
}

void PutExamples() {
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_CURRENT_USER, "Software\\Quillmark\\Corvella\\Outlook", 0, nullptr, REG_OPTION_VOLATILE,
                    KEY_ALL_ACCESS, nullptr, &key, nullptr);
    for (const auto& [name, text] : {std::pair{"Delay", "5"}, {"Remain", "30"}}) {
        RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), static_cast<DWORD>(lstrlenA(text)));
    }
    RegCloseKey(key);
}

// Windows 2000 shows every program in the screen's own resolution; later ones ask for it.
void TakeOwnResolution() {
    using Call = BOOL(WINAPI*)();
    if (const auto call = reinterpret_cast<Call>(GetProcAddress(GetModuleHandleA("user32"), "SetProcessDPIAware"))) {
        call();
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return std::puts("options_picture LANGUAGE OUTLOOK-VERSION FILE.bmp"), 2;
    TakeOwnResolution();
    const PrivateKey registry;
    PutExamples();
    OlVersion = std::atoi(argv[2]);
    pictureFile = argv[3];
    const std::string folder = ExampleSettings();
    InifileCV::state.IniFiles = folder;
    InifileCV::state.IniFilesRead = true;
    IniFile::location.CurrentFile = IniFile::location.BaseFile = folder + "corvella.ini";
    IniFile::SetIniSettingDefault("Settings", "Language", argv[1], true);
    Files::PlugApplicationPath([] { return std::string(CV_LANGUAGE_FOLDER); });
    Language::LangInit();
    SetTimer(nullptr, 0, paintingTime, PictureTime);
    FormOlAddInOptions::Shared().Show();
    return GetFileAttributesA(pictureFile.c_str()) == INVALID_FILE_ATTRIBUTES ? 1 : 0;
}
