// The built-in pictures, drawn with a few strokes each: enough to tell one command from another.
#include <functional>
#include <iterator>

#include "outlook/BuiltInBars.h"
#include "outlook/program/Drawing.h"

namespace program {

namespace {

using namespace standin;

constexpr COLORREF black = RGB(0, 0, 0), white = RGB(255, 255, 255), grey = RGB(128, 128, 128),
                   silver = RGB(192, 192, 192), navy = RGB(0, 0, 128), blue = RGB(64, 96, 200),
                   sky = RGB(170, 200, 255), red = RGB(200, 0, 0), green = RGB(0, 128, 0), yellow = RGB(255, 230, 110),
                   gold = RGB(190, 140, 0), skin = RGB(255, 214, 170), violet = RGB(128, 0, 128);

// Strokes in a square of 16 x 16, whose corner the brush knows.
class Brush {
  public:
    Brush(HDC dc, int x, int y) : dc_(dc), x_(x), y_(y) {}
    void Box(int left, int top, int right, int bottom, COLORREF edge, COLORREF inside) const {
        const RECT place{x_ + left, y_ + top, x_ + right, y_ + bottom};
        Fill(dc_, place, inside);
        Frame(dc_, place, edge);
    }
    void Stroke(int x1, int y1, int x2, int y2, COLORREF colour) const {
        Line(dc_, x_ + x1, y_ + y1, x_ + x2, y_ + y2, colour);
    }
    void Disc(int left, int top, int right, int bottom, COLORREF edge, COLORREF inside) const {
        With(edge, inside, [&] { Ellipse(dc_, x_ + left, y_ + top, x_ + right, y_ + bottom); });
    }
    void Shape(std::initializer_list<POINT> corners, COLORREF edge, COLORREF inside) const {
        POINT moved[12];
        int count = 0;
        for (const POINT& corner : corners) moved[count++] = {x_ + corner.x, y_ + corner.y};
        With(edge, inside, [&] { Polygon(dc_, moved, count); });
    }
    void Letter(const char* text, COLORREF colour) const {
        const HGDIOBJ before = SelectObject(dc_, BannerFont());
        Write(dc_, text, {x_, y_ - 1, x_ + 16, y_ + 15}, colour, DT_CENTER);
        SelectObject(dc_, before);
    }

  private:
    void With(COLORREF edge, COLORREF inside, const std::function<void()>& draw) const {
        const HPEN pen = CreatePen(PS_SOLID, 1, edge);
        const HBRUSH brush = CreateSolidBrush(inside);
        const HGDIOBJ penBefore = SelectObject(dc_, pen), brushBefore = SelectObject(dc_, brush);
        draw();
        SelectObject(dc_, penBefore);
        SelectObject(dc_, brushBefore);
        DeleteObject(pen);
        DeleteObject(brush);
    }
    HDC dc_;
    int x_, y_;
};

void Envelope(const Brush& brush, int left, int top, int right, int bottom) {
    brush.Box(left, top, right, bottom, black, white);
    const int middle = (left + right) / 2;
    brush.Stroke(left + 1, top + 1, middle, top + (bottom - top) / 2 + 1, grey);
    brush.Stroke(right - 2, top + 1, middle - 1, top + (bottom - top) / 2 + 1, grey);
}

void Sheet(const Brush& brush, int left, int top, int right, int bottom) {
    brush.Box(left, top, right, bottom, black, white);
    for (int y = top + 3; y < bottom - 2; y += 2) brush.Stroke(left + 2, y, right - 2, y, grey);
}

void ArrowLeft(const Brush& brush, int x, int y, COLORREF colour) {
    brush.Shape(
        {{x, y}, {x + 4, y - 4}, {x + 4, y - 2}, {x + 8, y - 2}, {x + 8, y + 2}, {x + 4, y + 2}, {x + 4, y + 4}},
        colour, colour);
}

void ArrowRight(const Brush& brush, int x, int y, COLORREF colour) {
    brush.Shape(
        {{x, y}, {x - 4, y - 4}, {x - 4, y - 2}, {x - 8, y - 2}, {x - 8, y + 2}, {x - 4, y + 2}, {x - 4, y + 4}},
        colour, colour);
}

void Person(const Brush& brush) {
    brush.Shape({{3, 15}, {3, 11}, {6, 9}, {10, 9}, {13, 11}, {13, 15}}, navy, blue);
    brush.Disc(5, 1, 12, 9, black, skin);
}

void Disk(const Brush& brush, int size) {
    brush.Box(1, 1, size, size, black, navy);
    brush.Box(4, 1, size - 3, 6, navy, white);
    brush.Box(4, size - 5, size - 3, size - 1, black, silver);
}

void Book(const Brush& brush) {
    brush.Box(2, 1, 14, 15, black, violet);
    brush.Stroke(4, 1, 4, 15, white);
    brush.Box(7, 4, 12, 8, black, yellow);
    for (int y = 3; y < 14; y += 3) brush.Stroke(1, y, 4, y, silver);
}

void Clip(const Brush& brush) {
    brush.Shape({{4, 4}, {6, 2}, {9, 2}, {11, 4}, {11, 12}, {9, 14}, {7, 14}, {6, 12}, {6, 5}, {9, 5}, {9, 11}}, navy,
                white);
}

struct Icon {
    int id;
    void (*draw)(const Brush&);
};

const Icon icons[] = {
    {IdNewMail, [](const Brush& b) { Envelope(b, 1, 3, 15, 13); }},
    {IdNewContact, Person},
    {IdNewAppointment,
     [](const Brush& b) {
         b.Box(1, 2, 15, 15, black, white);
         b.Box(1, 2, 15, 6, black, blue);
         b.Letter("", black);
         for (int x = 4; x < 14; x += 3) {
             b.Stroke(x, 8, x + 2, 8, navy);
             b.Stroke(x, 11, x + 2, 11, navy);
         }
     }},
    {IdNewTask,
     [](const Brush& b) {
         b.Box(2, 3, 14, 15, black, yellow);
         b.Box(5, 1, 11, 5, black, silver);
         b.Shape({{4, 9}, {7, 12}, {13, 6}, {7, 10}}, red, red);
     }},
    {IdNewNote,
     [](const Brush& b) {
         b.Box(2, 2, 14, 14, gold, yellow);
         b.Stroke(4, 5, 12, 5, gold);
         b.Stroke(4, 8, 12, 8, gold);
     }},
    {IdPrint,
     [](const Brush& b) {
         b.Box(4, 1, 12, 7, black, white);
         b.Box(1, 6, 15, 12, black, silver);
         b.Box(3, 10, 13, 15, black, white);
         b.Stroke(5, 12, 11, 12, grey);
         b.Stroke(12, 8, 14, 8, green);
     }},
    {IdMoveToFolder,
     [](const Brush& b) {
         b.Shape({{1, 13}, {1, 4}, {6, 4}, {7, 6}, {12, 6}, {12, 13}}, gold, yellow);
         ArrowRight(b, 15, 10, blue);
     }},
    {IdDelete,
     [](const Brush& b) {
         for (int i = 0; i < 2; ++i) {
             b.Stroke(3 + i, 3, 13 + i, 13, black);
             b.Stroke(12 + i, 3, 2 + i, 13, black);
         }
     }},
    {IdReply,
     [](const Brush& b) {
         Envelope(b, 5, 1, 15, 8);
         ArrowLeft(b, 1, 11, violet);
     }},
    {IdReplyAll,
     [](const Brush& b) {
         Envelope(b, 3, 1, 12, 7);
         Envelope(b, 6, 3, 15, 9);
         ArrowLeft(b, 1, 12, violet);
     }},
    {IdForward,
     [](const Brush& b) {
         Envelope(b, 1, 1, 11, 8);
         ArrowRight(b, 15, 11, blue);
     }},
    {IdSendReceive,
     [](const Brush& b) {
         Envelope(b, 3, 5, 13, 11);
         ArrowLeft(b, 1, 13, green);
         b.Shape({{15, 3}, {11, 0}, {11, 6}}, blue, blue);
         b.Stroke(7, 3, 12, 3, blue);
     }},
    {IdFind,
     [](const Brush& b) {
         Sheet(b, 1, 1, 11, 15);
         b.Disc(6, 4, 14, 12, black, sky);
         b.Stroke(12, 11, 16, 15, black);
     }},
    {IdOrganize,
     [](const Brush& b) {
         b.Box(1, 2, 7, 7, black, yellow);
         b.Box(9, 2, 15, 7, black, sky);
         b.Box(1, 9, 7, 14, black, sky);
         b.Box(9, 9, 15, 14, black, yellow);
     }},
    {IdAddressBook, Book},
    {IdHelp,
     [](const Brush& b) {
         b.Disc(0, 0, 16, 16, navy, blue);
         b.Letter("?", white);
     }},
    {IdSave, [](const Brush& b) { Disk(b, 15); }},
    {IdSaveAndClose,
     [](const Brush& b) {
         Disk(b, 13);
         b.Box(8, 8, 16, 16, black, silver);
         for (int i = 0; i < 4; ++i) {
             b.Stroke(10 + i, 10 + i, 11 + i, 10 + i, black);
             b.Stroke(13 - i, 10 + i, 14 - i, 10 + i, black);
         }
     }},
    {IdSend,
     [](const Brush& b) {
         Envelope(b, 4, 5, 15, 13);
         b.Stroke(0, 7, 3, 7, blue);
         b.Stroke(1, 9, 3, 9, blue);
         b.Stroke(0, 11, 3, 11, blue);
     }},
    {IdCut,
     [](const Brush& b) {
         b.Stroke(5, 1, 10, 10, grey);
         b.Stroke(10, 1, 5, 10, grey);
         b.Disc(3, 9, 8, 15, navy, white);
         b.Disc(8, 9, 13, 15, navy, white);
     }},
    {IdCopy,
     [](const Brush& b) {
         Sheet(b, 1, 1, 10, 11);
         Sheet(b, 6, 5, 15, 15);
     }},
    {IdPaste,
     [](const Brush& b) {
         b.Box(1, 2, 12, 15, black, gold);
         b.Box(4, 1, 9, 4, black, silver);
         Sheet(b, 6, 6, 15, 15);
     }},
    {IdInsertFile, Clip},
    {IdFlag,
     [](const Brush& b) {
         b.Stroke(4, 1, 4, 15, black);
         b.Shape({{5, 2}, {13, 5}, {5, 8}}, red, red);
     }},
    {1017,
     [](const Brush& b) {
         b.Shape({{8, 3}, {3, 8}, {13, 8}}, navy, blue);
         b.Box(6, 8, 11, 13, navy, blue);
     }},
    {1018,
     [](const Brush& b) {
         b.Shape({{8, 13}, {3, 8}, {13, 8}}, navy, blue);
         b.Box(6, 3, 11, 9, navy, blue);
     }},
    {IdNewWindow,
     [](const Brush& b) {
         b.Box(1, 1, 12, 11, black, white);
         b.Box(1, 1, 12, 4, black, navy);
         b.Box(4, 5, 15, 15, black, white);
         b.Box(4, 5, 15, 8, black, navy);
     }},
    {IdAddIns,
     [](const Brush& b) {
         b.Box(1, 5, 9, 14, navy, sky);
         b.Box(6, 2, 14, 9, navy, blue);
     }},
    {65,
     [](const Brush& b) {
         b.Disc(2, 2, 14, 14, black, silver);
         b.Disc(6, 6, 10, 10, black, white);
     }},
};

const Icon* Find(int id) {
    for (const Icon& icon : icons)
        if (icon.id == id) return &icon;
    return nullptr;
}

}  // namespace

bool HasBuiltInIcon(int id) { return Find(id) != nullptr; }

bool DrawBuiltInIcon(HDC dc, int x, int y, int id) {
    const Icon* icon = Find(id);
    if (icon) icon->draw(Brush(dc, x, y));
    return icon != nullptr;
}

}  // namespace program
