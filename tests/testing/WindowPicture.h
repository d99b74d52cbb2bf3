// testing/WindowPicture.h: a picture of a window as it stands on the screen, saved as a bitmap file.
#pragma once
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

inline bool SaveWindowPicture(HWND window, const std::string& file) {
    RECT area{};
    if (!GetWindowRect(window, &area)) return false;
    const int width = area.right - area.left, height = area.bottom - area.top;
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    const HDC device = GetWindowDC(window);
    const HDC memory = CreateCompatibleDC(device);
    const HBITMAP bitmap = CreateCompatibleBitmap(device, width, height);
    const HGDIOBJ earlier = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, device, 0, 0, SRCCOPY);
    SelectObject(memory, earlier);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    const std::size_t rowBytes = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
    std::vector<char> bits(rowBytes * static_cast<std::size_t>(height));
    GetDIBits(memory, bitmap, 0, static_cast<UINT>(height), bits.data(), &info, DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, device);
    BITMAPFILEHEADER head{};
    head.bfType = 0x4D42;
    head.bfOffBits = sizeof head + sizeof info.bmiHeader;
    head.bfSize = head.bfOffBits + static_cast<DWORD>(bits.size());
    std::FILE* out = std::fopen(file.c_str(), "wb");
    if (!out) return false;
    std::fwrite(&head, sizeof head, 1, out);
    std::fwrite(&info.bmiHeader, sizeof info.bmiHeader, 1, out);
    const bool whole = std::fwrite(bits.data(), 1, bits.size(), out) == bits.size();
    std::fclose(out);
    return whole;
}
