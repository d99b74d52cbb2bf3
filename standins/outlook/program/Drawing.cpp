#include "outlook/program/Drawing.h"

#include <map>

#include "outlook/BuiltInBars.h"

namespace program {

namespace {

HFONT MakeFont(const char* name, int points, int weight) {
    const HDC screen = GetDC(nullptr);
    const int height = -MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    return CreateFontA(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, name);
}

COLORREF Mix(COLORREF first, COLORREF second, int percentOfFirst) {
    const auto mix = [percentOfFirst](int a, int b) { return (a * percentOfFirst + b * (100 - percentOfFirst)) / 100; };
    return RGB(mix(GetRValue(first), GetRValue(second)), mix(GetGValue(first), GetGValue(second)),
               mix(GetBValue(first), GetBValue(second)));
}

// What a disabled picture becomes: dark pixels as shadow, light ones as nothing.
void DrawGrey(HDC dc, int x, int y, const standin::Pixels& face, const standin::Pixels& mask) {
    for (int row = 0; row < face.height; ++row) {
        for (int column = 0; column < face.width; ++column) {
            if (!mask.colours.empty() && column < mask.width && row < mask.height && mask.At(column, row) == 0xFFFFFF)
                continue;
            const std::uint32_t colour = face.At(column, row);
            const std::uint32_t light = (colour >> 16 & 0xFF) + (colour >> 8 & 0xFF) + (colour & 0xFF);
            if (light < 3 * 170) SetPixelV(dc, x + column, y + row, GetSysColor(COLOR_BTNSHADOW));
        }
    }
}

void DrawPixels(HDC dc, int x, int y, const standin::Pixels& face, const standin::Pixels& mask) {
    for (int row = 0; row < face.height; ++row) {
        for (int column = 0; column < face.width; ++column) {
            if (!mask.colours.empty() && column < mask.width && row < mask.height && mask.At(column, row) == 0xFFFFFF)
                continue;
            const std::uint32_t colour = face.At(column, row);
            SetPixelV(dc, x + column, y + row, RGB(colour >> 16 & 0xFF, colour >> 8 & 0xFF, colour & 0xFF));
        }
    }
}

// A built-in picture as pixels and mask, for the disabled state.
void DrawBuiltInGrey(HDC dc, int x, int y, int id) {
    const COLORREF nothing = RGB(255, 0, 255);
    const HDC memory = CreateCompatibleDC(dc);
    const HBITMAP bitmap = CreateCompatibleBitmap(dc, 16, 16);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    Fill(memory, {0, 0, 16, 16}, nothing);
    DrawBuiltInIcon(memory, 0, 0, id);
    for (int row = 0; row < 16; ++row) {
        for (int column = 0; column < 16; ++column) {
            const COLORREF colour = GetPixel(memory, column, row);
            if (colour != nothing && GetRValue(colour) + GetGValue(colour) + GetBValue(colour) < 3 * 170)
                SetPixelV(dc, x + column, y + row, GetSysColor(COLOR_BTNSHADOW));
        }
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
}

}  // namespace

HFONT PlainFont() {
    static const HFONT font = MakeFont("Tahoma", 8, FW_NORMAL);
    return font;
}
HFONT BoldFont() {
    static const HFONT font = MakeFont("Tahoma", 8, FW_BOLD);
    return font;
}
HFONT BannerFont() {
    static const HFONT font = MakeFont("Tahoma", 12, FW_BOLD);
    return font;
}
HFONT FixedFont() {
    static const HFONT font = MakeFont("Courier New", 8, FW_NORMAL);
    return font;
}

namespace {

Look InSystemColours(bool flat) {
    const COLORREF face = GetSysColor(COLOR_BTNFACE), highlight = GetSysColor(COLOR_HIGHLIGHT),
                   window = GetSysColor(COLOR_WINDOW);
    Look look;
    look.flat = flat;
    look.face = look.band = look.bar = look.barLow = look.gutter = look.caption = face;
    look.edge = look.menuEdge = GetSysColor(COLOR_BTNSHADOW);
    look.ink = look.captionInk = GetSysColor(COLOR_BTNTEXT);
    look.hover = look.hoverLow = flat ? Mix(highlight, window, 30) : face;
    look.pressed = flat ? Mix(highlight, window, 50) : face;
    look.hoverEdge = highlight;
    look.menu = flat ? Mix(face, window, 15) : face;
    look.banner = look.bannerLow = GetSysColor(COLOR_BTNSHADOW);
    look.bannerInk = GetSysColor(COLOR_BTNHIGHLIGHT);
    return look;
}

Look Of2003() {
    Look look = InSystemColours(true);
    look.face = RGB(196, 218, 250);
    look.band = RGB(158, 190, 245);
    look.bar = RGB(221, 236, 254);
    look.barLow = RGB(129, 169, 226);
    look.edge = RGB(106, 140, 203);
    look.hover = RGB(255, 244, 204);
    look.hoverLow = RGB(255, 208, 145);
    look.hoverEdge = RGB(0, 0, 128);
    look.pressed = RGB(254, 145, 78);
    look.menu = RGB(246, 246, 246);
    look.menuEdge = RGB(0, 45, 150);
    look.gutter = RGB(186, 211, 248);
    look.banner = RGB(89, 135, 214);
    look.bannerLow = RGB(3, 56, 147);
    look.bannerInk = RGB(255, 255, 255);
    return look;
}

Look Of2007() {
    Look look = Of2003();
    look.face = look.band = RGB(191, 219, 255);
    look.bar = RGB(233, 241, 252);
    look.barLow = RGB(199, 216, 237);
    look.edge = RGB(141, 178, 227);
    look.ink = RGB(21, 66, 139);
    look.hover = RGB(255, 252, 222);
    look.hoverLow = RGB(255, 217, 117);
    look.hoverEdge = RGB(221, 181, 100);
    look.menu = RGB(250, 250, 250);
    look.menuEdge = RGB(134, 134, 134);
    look.gutter = RGB(233, 238, 238);
    look.caption = RGB(193, 216, 241);
    look.captionInk = RGB(62, 106, 170);
    look.banner = RGB(227, 239, 255);
    look.bannerLow = RGB(175, 210, 255);
    look.bannerInk = RGB(21, 66, 139);
    return look;
}

}  // namespace

Look Look::Of(int version) {
    if (version >= 12) return Of2007();
    return version == 11 ? Of2003() : InSystemColours(version >= 10);
}

void Fill(HDC dc, const RECT& place, COLORREF colour) {
    SetBkColor(dc, colour);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &place, "", 0, nullptr);
}

void FillDown(HDC dc, const RECT& place, COLORREF top, COLORREF bottom) {
    const int height = place.bottom - place.top;
    for (int y = 0; y < height; ++y)
        Fill(dc, {place.left, place.top + y, place.right, place.top + y + 1}, Mix(bottom, top, 100 * y / height));
}

void Frame(HDC dc, const RECT& place, COLORREF colour) {
    const HBRUSH brush = CreateSolidBrush(colour);
    FrameRect(dc, &place, brush);
    DeleteObject(brush);
}

void Line(HDC dc, int x1, int y1, int x2, int y2, COLORREF colour) {
    const HPEN pen = CreatePen(PS_SOLID, 1, colour);
    const HGDIOBJ before = SelectObject(dc, pen);
    MoveToEx(dc, x1, y1, nullptr);
    LineTo(dc, x2, y2);
    SelectObject(dc, before);
    DeleteObject(pen);
}

void Write(HDC dc, const std::string& text, RECT place, COLORREF colour, UINT format, Accent accent) {
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colour);
    DrawTextA(dc, text.c_str(), -1, &place,
              format | DT_SINGLELINE | DT_VCENTER | (accent == Accent::Hidden ? DT_HIDEPREFIX : 0U));
}

bool IsAccessKey(const std::string& caption, char letter) {
    const std::size_t mark = caption.find('&');
    if (mark == std::string::npos || mark + 1 >= caption.size()) return false;
    char pair[] = {caption[mark + 1], letter};
    CharLowerBuffA(pair, 2);
    return pair[0] == pair[1];
}

int WidthOf(const std::string& caption) {
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(screen, PlainFont());
    RECT place{};
    DrawTextA(screen, caption.c_str(), -1, &place, DT_SINGLELINE | DT_CALCRECT);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return place.right;
}

std::string Shown(const std::string& value) {
    if (value.find("/4501") != std::string::npos) return "None";
    const bool time = value.size() > 6 && value[value.size() - 3] == ':' && value[value.size() - 6] == ':';
    return time ? value.substr(0, value.size() - 3) : value;
}

bool HasIcon(const standin::ControlView& control) {
    return control.hasFace || control.hasPicture || HasBuiltInIcon(control.faceId);
}

bool DrawIcon(HDC dc, int x, int y, const standin::Outlook& outlook, const standin::ControlView& control,
              bool enabled) {
    if (control.hasFace || control.hasPicture) {
        const standin::Pixels face = outlook.FaceOf(control.instance), mask = outlook.MaskOf(control.instance);
        if (enabled)
            DrawPixels(dc, x, y, face, mask);
        else
            DrawGrey(dc, x, y, face, mask);
        return true;
    }
    if (!HasBuiltInIcon(control.faceId)) return false;
    if (enabled) return DrawBuiltInIcon(dc, x, y, control.faceId);
    DrawBuiltInGrey(dc, x, y, control.faceId);
    return true;
}

HICON WindowIcon(int id) {
    static std::map<int, HICON> icons;
    HICON& icon = icons[id];
    if (icon) return icon;
    const HDC screen = GetDC(nullptr), memory = CreateCompatibleDC(screen);
    const HBITMAP colours = CreateCompatibleBitmap(screen, 16, 16), mask = CreateBitmap(16, 16, 1, 1, nullptr);
    const COLORREF nothing = RGB(255, 0, 255);
    HGDIOBJ before = SelectObject(memory, colours);
    Fill(memory, {0, 0, 16, 16}, nothing);
    DrawBuiltInIcon(memory, 0, 0, id);
    bool empty[16][16];
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            empty[y][x] = GetPixel(memory, x, y) == nothing;
            if (empty[y][x]) SetPixelV(memory, x, y, 0);
        }
    }
    SelectObject(memory, mask);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) SetPixelV(memory, x, y, empty[y][x] ? RGB(255, 255, 255) : 0);
    SelectObject(memory, before);
    ICONINFO info{TRUE, 0, 0, mask, colours};
    icon = CreateIconIndirect(&info);
    DeleteObject(mask);
    DeleteObject(colours);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return icon;
}

int IconOf(standin::ItemClass itemClass) {
    switch (itemClass) {
        case standin::ItemClass::Contact: return standin::IdNewContact;
        case standin::ItemClass::DistList: return standin::IdAddressBook;
        case standin::ItemClass::Appointment: return standin::IdNewAppointment;
        case standin::ItemClass::Task: return standin::IdNewTask;
        case standin::ItemClass::Note: return standin::IdNewNote;
        default: return standin::IdNewMail;
    }
}

}  // namespace program
