#include "platform/Desktop.h"

#include <windows.h>

namespace platform {
namespace {

constexpr int longestTitle = 255;
constexpr UINT closePatience = 5000;  // milliseconds

struct Search {
    std::string_view part;
    Whose whose;
    HWND found;
};

bool IsOurs(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId();
}

BOOL CALLBACK LookAt(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    char title[longestTitle + 1];
    const int length = GetWindowTextA(window, title, sizeof title);
    const std::string_view text(title, static_cast<std::size_t>(length));
    if (text.find(search.part) == std::string_view::npos) return TRUE;
    if (search.whose == Whose::OtherPrograms && IsOurs(window)) return TRUE;
    search.found = window;
    return FALSE;
}

}  // namespace

WindowHandle TopWindowWithTitle(std::string_view part, Whose whose) {
    Search search{part, whose, nullptr};
    EnumWindows(LookAt, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void AskToClose(WindowHandle window) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutA(window, WM_CLOSE, 0, 0, SMTO_ABORTIFHUNG, closePatience, &answer);
}

std::optional<Rect> WindowRect(WindowHandle window) {
    RECT edges;
    if (!GetWindowRect(window, &edges)) return std::nullopt;
    return Rect{edges.left, edges.top, edges.right - edges.left, edges.bottom - edges.top};
}

void MoveWindowTo(WindowHandle window, const Rect& position) {
    SetWindowPos(window, nullptr, position.left, position.top, position.width, position.height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
}

void MakeTopmost(WindowHandle window) {
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

Size ScreenSize() { return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }

int DotsPerInch() {
    constexpr int standard = 96;
    const HDC screen = GetDC(nullptr);
    if (!screen) return standard;
    const int dots = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dots > 0 ? dots : standard;
}

void RunPendingMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {  // for the host's own loop
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

}  // namespace platform
