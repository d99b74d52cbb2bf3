#include "outlook/program/Pane.h"

namespace program {

namespace {

constexpr char className[] = "OutlookStandInPane";

void RegisterOnce(WNDPROC procedure) {
    static bool done = false;
    if (done) return;
    done = true;
    WNDCLASSA description{};
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleA(nullptr);
    description.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // the arrow
    description.lpszClassName = className;
    RegisterClassA(&description);
}

}  // namespace

void Pane::Create(const char* title, DWORD style, DWORD extended, HWND parent, const RECT& place) {
    RegisterOnce(&Procedure);
    CreateWindowExA(extended, className, title, style, place.left, place.top, place.right - place.left,
                    place.bottom - place.top, parent, nullptr, GetModuleHandleA(nullptr), this);
}

void Pane::Destroy() {
    const HWND window = window_;
    window_ = nullptr;
    if (!window) return;
    SetWindowLongPtrA(window, GWLP_USERDATA, 0);
    DestroyWindow(window);
}

RECT Pane::Client() const {
    RECT client{};
    GetClientRect(window_, &client);
    return client;
}

LRESULT CALLBACK Pane::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_NCCREATE) {
        auto* pane = static_cast<Pane*>(reinterpret_cast<CREATESTRUCTA*>(second)->lpCreateParams);
        pane->window_ = window;
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(pane));
    }
    auto* pane = reinterpret_cast<Pane*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    return pane ? pane->OnMessage(message, first, second) : DefWindowProcA(window, message, first, second);
}

Canvas::Canvas(HWND window) : window_(window) {
    const HDC screen = BeginPaint(window, &paint_);
    GetClientRect(window, &all_);
    memory_ = CreateCompatibleDC(screen);
    bitmap_ = CreateCompatibleBitmap(screen, all_.right, all_.bottom);
    before_ = SelectObject(memory_, bitmap_);
}

Canvas::~Canvas() {
    BitBlt(paint_.hdc, 0, 0, all_.right, all_.bottom, memory_, 0, 0, SRCCOPY);
    SelectObject(memory_, before_);
    DeleteObject(bitmap_);
    DeleteDC(memory_);
    EndPaint(window_, &paint_);
}

}  // namespace program
