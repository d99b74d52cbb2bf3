// program/Child.h: plain child controls of Windows, in the period's font.
#pragma once
#include <windows.h>

namespace program {

HWND MakeChild(HWND parent, const char* className, const char* text, DWORD style, DWORD extended, int id);

}  // namespace program
