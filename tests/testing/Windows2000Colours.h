// testing/Windows2000Colours.h: the colours of Windows 2000 for as long as it lives, whatever the desktop has.
#pragma once
#include <windows.h>

#include <iterator>

class Windows2000Colours {
  public:
    Windows2000Colours() {
        for (std::size_t i = 0; i < std::size(elements); ++i) earlier_[i] = GetSysColor(elements[i]);
        SetSysColors(static_cast<int>(std::size(elements)), elements, colours);
    }
    ~Windows2000Colours() { SetSysColors(static_cast<int>(std::size(elements)), elements, earlier_); }
    Windows2000Colours(const Windows2000Colours&) = delete;
    Windows2000Colours& operator=(const Windows2000Colours&) = delete;

  private:
    static constexpr int elements[] = {COLOR_ACTIVECAPTION, COLOR_CAPTIONTEXT, COLOR_BTNFACE,
                                       COLOR_3DLIGHT,       COLOR_BTNSHADOW,   COLOR_3DDKSHADOW,
                                       COLOR_HIGHLIGHT,     COLOR_HOTLIGHT,    COLOR_MENU};
    static constexpr COLORREF colours[] = {RGB(10, 36, 106),   RGB(255, 255, 255), RGB(212, 208, 200),
                                           RGB(212, 208, 200), RGB(128, 128, 128), RGB(64, 64, 64),
                                           RGB(10, 36, 106),   RGB(0, 0, 192),     RGB(212, 208, 200)};
    COLORREF earlier_[std::size(elements)] = {};
};
