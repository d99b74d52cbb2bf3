// program/RibbonDrawing.h: what the ribbon and its menus draw alike.
#pragma once
#include <windows.h>

#include <string>

#include "outlook/Outlook.h"

namespace program {

// A picture with transparency, at its own size; pale where it is not enabled.
void DrawAlpha(HDC dc, int x, int y, const standin::AlphaPixels& pixels, bool enabled);
// The small label of a key, its middle at `middle`.
void DrawKeyTip(HDC dc, POINT middle, const std::string& text);
[[nodiscard]] std::string ForDrawing(const std::string& label);  // an ampersand in it marks nothing

}  // namespace program
