#include "outlook/program/RibbonDrawing.h"

#include <cstring>

#include "outlook/program/Drawing.h"

namespace program {

void DrawAlpha(HDC dc, int x, int y, const standin::AlphaPixels& pixels, bool enabled) {
    if (pixels.colours.empty()) return;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = pixels.width;
    info.bmiHeader.biHeight = -pixels.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!bitmap) return;
    std::memcpy(bits, pixels.colours.data(), pixels.colours.size() * sizeof pixels.colours[0]);
    const HDC memory = CreateCompatibleDC(dc);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, static_cast<BYTE>(enabled ? 255 : 90), AC_SRC_ALPHA};
    AlphaBlend(dc, x, y, pixels.width, pixels.height, memory, 0, 0, pixels.width, pixels.height, blend);
    SelectObject(memory, before);
    DeleteDC(memory);
    DeleteObject(bitmap);
}

void DrawKeyTip(HDC dc, POINT middle, const std::string& text) {
    const int half = WidthOf(text) / 2 + 4;
    const RECT place{middle.x - half, middle.y - 8, middle.x + half, middle.y + 8};
    Fill(dc, place, RGB(70, 70, 70));
    SelectObject(dc, PlainFont());
    Write(dc, text, place, RGB(255, 255, 255), DT_CENTER);
}

std::string ForDrawing(const std::string& label) {
    std::string text;
    for (const char letter : label) text += letter == '&' ? "&&" : std::string(1, letter);
    return text;
}

}  // namespace program
