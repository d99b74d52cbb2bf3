// program/Drawing.h: fonts, colours and small pictures, as the period had them.
#pragma once
#include <windows.h>

#include <string>

#include "outlook/Outlook.h"

namespace program {

[[nodiscard]] HFONT PlainFont();  // Tahoma 8
[[nodiscard]] HFONT BoldFont();
[[nodiscard]] HFONT BannerFont();  // Tahoma 12, bold
[[nodiscard]] HFONT FixedFont();

// Looks of the versions, to be told apart at a glance: 2000 grey with edges in relief; 2002 grey and flat, with fields in a
// tint of the selection's colour; 2003 and 2007 in two blues with orange fields. Where there are two colours of a field
// the first is the upper one.
struct Look {
    bool flat = false;
    COLORREF face = 0;                                // of frames, behind everything
    COLORREF band = 0, bar = 0, barLow = 0;           // menu bars; toolbars and the ribbon
    COLORREF edge = 0, ink = 0;                       // lines and text on them
    COLORREF hover = 0, hoverLow = 0, hoverEdge = 0;  // what is under the mouse
    COLORREF pressed = 0;
    COLORREF menu = 0, menuEdge = 0, gutter = 0;        // open menus, and their strip for pictures
    COLORREF caption = 0, captionInk = 0;               // the ribbon's groups
    COLORREF banner = 0, bannerLow = 0, bannerInk = 0;  // the line above a folder's list
    static Look Of(int version);
};

void Fill(HDC dc, const RECT& place, COLORREF colour);
void FillDown(HDC dc, const RECT& place, COLORREF top, COLORREF bottom);  // from one colour to the other
void Frame(HDC dc, const RECT& place, COLORREF colour);
void Line(HDC dc, int x1, int y1, int x2, int y2, COLORREF colour);

enum class Accent { Hidden, Shown };  // the line below the access key
void Write(HDC dc, const std::string& text, RECT place, COLORREF colour, UINT format, Accent accent = Accent::Shown);
[[nodiscard]] bool IsAccessKey(const std::string& caption, char letter);  // the letter behind "&", of either case
[[nodiscard]] int WidthOf(const std::string& caption);                    // as Write draws it in the plain font

// A field's text for the eye: Outlook's date for "none" as "None", times without seconds.
[[nodiscard]] std::string Shown(const std::string& value);

// 16 x 16 at (x, y): the control's own picture with its mask, or the built-in one of its face; false when it has none.
bool DrawIcon(HDC dc, int x, int y, const standin::Outlook& outlook, const standin::ControlView& control, bool enabled);
[[nodiscard]] bool HasIcon(const standin::ControlView& control);

// A built-in picture by the id of its command; false when there is none.
bool DrawBuiltInIcon(HDC dc, int x, int y, int id);
[[nodiscard]] bool HasBuiltInIcon(int id);

// A built-in picture as the icon of a window; lives as long as the program.
[[nodiscard]] HICON WindowIcon(int id);

// For lists: pictures of item classes, by the command that makes them.
[[nodiscard]] int IconOf(standin::ItemClass itemClass);

}  // namespace program
