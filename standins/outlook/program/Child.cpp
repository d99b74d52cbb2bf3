#include "outlook/program/Child.h"

#include "outlook/program/Drawing.h"

namespace program {

HWND MakeChild(HWND parent, const char* className, const char* text, DWORD style, DWORD extended, int id) {
    const HWND child =
        CreateWindowExA(extended, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 10, 10, parent,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
    SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(PlainFont()), TRUE);
    return child;
}

}  // namespace program
