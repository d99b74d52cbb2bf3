// Corvella.exe, a stand-in: adds one line for each start to "Corvella.record.txt" beside itself (Start.h), takes the
// changed items over when it is started with "update", and shows itself for a moment unless it is started minimised.
#include <windows.h>

#include <cstring>
#include <string>

#include "corvella/Start.h"

namespace {

constexpr const char* listsKey = "Software\\Quillmark\\Corvella\\Outlook";
constexpr UINT shownFor = 1200;  // milliseconds
constexpr DWORD patience = 20000;

// Several starts at once take turns, so that each line is whole and each changed item is taken over once.
class Turn {
  public:
    Turn() : mutex_(CreateMutexA(nullptr, FALSE, "Corvella.record")) { WaitForSingleObject(mutex_, patience); }
    ~Turn() {
        ReleaseMutex(mutex_);
        CloseHandle(mutex_);
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

  private:
    HANDLE mutex_;
};

std::string List(HKEY lists, const char* name) {
    DWORD size = 0;
    if (RegQueryValueExA(lists, name, nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) return {};
    std::string text(size, '\0');
    if (RegQueryValueExA(lists, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS) {
        return {};
    }
    text.resize(std::strlen(text.c_str()));  // up to the NUL at its end
    return text;
}

void Clear(HKEY lists, const char* name) {
    if (!List(lists, name).empty()) RegSetValueExA(lists, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(""), 1);
}

Corvella::Start ThisStart() {
    STARTUPINFOA startup;
    GetStartupInfoA(&startup);
    Corvella::Start start;
    start.commandLine = GetCommandLineA();
    start.showState = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 ? startup.wShowWindow : -1;
    return start;
}

void TakeLists(Corvella::Start& start, bool andClear) {
    HKEY lists = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, listsKey, 0, KEY_READ | KEY_WRITE, &lists) != ERROR_SUCCESS) return;
    start.changedA = List(lists, "ChangedA");
    start.changedC = List(lists, "ChangedC");
    start.changedT = List(lists, "ChangedT");
    if (andClear) {
        for (const char* name : {"ChangedA", "ChangedC", "ChangedT"}) Clear(lists, name);
    }
    RegCloseKey(lists);
}

bool Append(const std::string& line) {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string record = path;
    record = record.substr(0, record.rfind('\\') + 1) + "Corvella.record.txt";
    const HANDLE file = CreateFileA(record.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    SetFilePointer(file, 0, nullptr, FILE_END);
    DWORD written = 0;
    const bool whole =
        WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr) && written == line.size();
    CloseHandle(file);
    return whole;
}

bool IsUnseen(int showState) {
    return showState == SW_HIDE || showState == SW_SHOWMINIMIZED || showState == SW_MINIMIZE ||
           showState == SW_SHOWMINNOACTIVE || showState == SW_FORCEMINIMIZE;
}

std::string shownText;

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM other) {
    switch (message) {
        case WM_PAINT: {
            PAINTSTRUCT paint;
            const HDC device = BeginPaint(window, &paint);
            RECT area;
            GetClientRect(window, &area);
            InflateRect(&area, -16, -16);
            SelectObject(device, GetStockObject(DEFAULT_GUI_FONT));
            SetBkMode(device, TRANSPARENT);
            DrawTextA(device, shownText.c_str(), -1, &area, DT_WORDBREAK | DT_NOPREFIX);
            EndPaint(window, &paint);
            return 0;
        }
        case WM_TIMER: DestroyWindow(window); return 0;
        case WM_DESTROY: PostQuitMessage(0); return 0;
        default: return DefWindowProcA(window, message, wide, other);
    }
}

void ShowForAMoment(HINSTANCE instance, const Corvella::Start& start) {
    shownText = Corvella::Doing(Corvella::Arguments(start.commandLine)) + "\r\n\r\n" + start.commandLine;
    WNDCLASSA kind{};
    kind.lpfnWndProc = OnMessage;
    kind.hInstance = instance;
    kind.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    kind.hIcon = LoadIconA(nullptr, IDI_APPLICATION);
    kind.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    kind.lpszClassName = "CorvellaStandIn";
    RegisterClassA(&kind);
    const HWND window = CreateWindowA(kind.lpszClassName, "Corvella (stand-in)", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                      CW_USEDEFAULT, 420, 160, nullptr, nullptr, instance, nullptr);
    if (!window || SetTimer(window, 1, shownFor, nullptr) == 0) return;
    ShowWindow(window, start.showState < 0 ? SW_SHOWNORMAL : start.showState);
    UpdateWindow(window);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) DispatchMessageA(&message);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    Corvella::Start start = ThisStart();
    bool recorded = false;
    {
        const Turn turn;
        TakeLists(start, Corvella::Arguments(start.commandLine) == "update");
        recorded = Append(Corvella::RecordLine(start));
    }
    if (!IsUnseen(start.showState)) ShowForAMoment(instance, start);
    return recorded ? 0 : 1;
}
