#include "outlook/program/Strip.h"

#include <windowsx.h>

#include <algorithm>

namespace program {

namespace {

constexpr int gripWidth = 9, menuHeight = 22, toolbarHeight = 27, iconSize = 16, padding = 4, separatorWidth = 7,
              arrowWidth = 11;

bool IsPopup(const standin::ControlView& control) { return control.type == 10 || control.type == 13; }

// What a style shows, given that there is a picture.
bool ShowsText(const standin::ControlView& control, bool icon) {
    return !icon || control.style == 2 || control.style == 3 || control.style == 11;
}

}  // namespace

Strip::Strip(HWND parent, const standin::Outlook& outlook, Kind kind)
    : outlook_(outlook), kind_(kind), look_(Look::Of(outlook.Version())) {
    Create("", WS_CHILD | WS_VISIBLE, 0, parent, {0, 0, 10, 10});
}

int Strip::Height() const { return kind_ == Kind::Menu ? menuHeight : toolbarHeight; }

void Strip::Show(std::vector<standin::ControlView> controls) {
    cells_.clear();
    hot_ = -1;
    for (standin::ControlView& control : controls) {
        if (!control.visible) continue;
        Cell cell;
        cell.icon = kind_ == Kind::Toolbar && control.style != 2 && HasIcon(control);
        cell.text = kind_ == Kind::Menu || ShowsText(control, cell.icon);
        cell.separated = kind_ == Kind::Toolbar && control.beginGroup && !cells_.empty();
        cell.control = std::move(control);
        cells_.push_back(std::move(cell));
    }
    LayOut();
    Redraw();
}

void Strip::LayOut() {
    int x = gripWidth;
    const int top = kind_ == Kind::Menu ? 1 : 2, bottom = Height() - (kind_ == Kind::Menu ? 1 : 3);
    for (Cell& cell : cells_) {
        if (cell.separated) x += separatorWidth;
        int width = kind_ == Kind::Menu ? 14 : 2 * padding - 1;
        if (cell.icon) width += iconSize;
        if (cell.text) width += WidthOf(cell.control.caption) + (cell.icon ? padding : 0);
        if (kind_ == Kind::Toolbar && IsPopup(cell.control)) width += arrowWidth;
        cell.place = {x, top, x + width, bottom};
        x += width;
    }
}

void Strip::Paint() {
    const Canvas canvas(Handle());
    const RECT all = Client();
    if (kind_ == Kind::Menu)
        Fill(canvas.Get(), all, look_.band);
    else
        FillDown(canvas.Get(), all, look_.bar, look_.barLow);
    PaintGrip(canvas.Get());
    for (std::size_t i = 0; i < cells_.size(); ++i) PaintCell(canvas.Get(), cells_[i], static_cast<int>(i) == hot_);
    if (kind_ == Kind::Toolbar) Line(canvas.Get(), 0, all.bottom - 1, all.right, all.bottom - 1, look_.edge);
}

void Strip::PaintGrip(HDC dc) const {
    if (look_.flat) {
        for (int y = 6; y < Height() - 6; y += 3) Line(dc, 3, y, 6, y, look_.edge);
        return;
    }
    RECT grip{3, 3, 6, Height() - 4};
    DrawEdge(dc, &grip, BDR_RAISEDINNER, BF_RECT);
}

void Strip::PaintCell(HDC dc, const Cell& cell, bool hot) const {
    RECT place = cell.place;
    if (cell.separated) {
        const int x = place.left - separatorWidth / 2 - 1;
        Line(dc, x, place.top + 2, x, place.bottom - 2, look_.edge);
        if (!look_.flat) Line(dc, x + 1, place.top + 2, x + 1, place.bottom - 2, GetSysColor(COLOR_BTNHIGHLIGHT));
    }
    const bool enabled = cell.control.enabled, open = open_ != 0 && open_ == cell.control.instance;
    if ((hot && enabled) || open || cell.control.state == -1) {
        if (look_.flat) {
            const bool pressed = pressed_ && hot;
            const COLORREF top = open ? look_.menu : pressed ? look_.pressed : look_.hover;
            FillDown(dc, place, top, open || pressed ? top : look_.hoverLow);
            Frame(dc, place, open ? look_.menuEdge : look_.hoverEdge);
        } else {
            DrawEdge(dc, &place, open || pressed_ ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
        }
    }
    int x = cell.place.left + (kind_ == Kind::Menu ? 7 : padding);
    if (cell.icon) {
        DrawIcon(dc, x, (cell.place.top + cell.place.bottom - iconSize) / 2, outlook_, cell.control, enabled);
        x += iconSize + padding;
    }
    SelectObject(dc, PlainFont());
    const COLORREF ink = enabled ? look_.ink : GetSysColor(COLOR_GRAYTEXT);
    const RECT textPlace{x, cell.place.top, cell.place.right, cell.place.bottom};
    if (cell.text) Write(dc, cell.control.caption, textPlace, ink, DT_LEFT);
    if (kind_ == Kind::Toolbar && IsPopup(cell.control)) {
        const int middle = cell.place.right - 7, y = (cell.place.top + cell.place.bottom) / 2 - 1;
        for (int i = 0; i < 3; ++i) Line(dc, middle - 2 + i, y + i, middle + 3 - i, y + i, ink);
    }
}

int Strip::CellAt(POINT point) const {
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (PtInRect(&cells_[i].place, point)) return static_cast<int>(i);
    return -1;
}

POINT Strip::Below(int instance) const {
    POINT corner{};
    for (const Cell& cell : cells_)
        if (cell.control.instance == instance) corner = {cell.place.left, cell.place.bottom};
    ClientToScreen(Handle(), &corner);
    return corner;
}

void Strip::MarkOpen(int instance) {
    open_ = instance;
    pressed_ = false;
    hot_ = -1;
    Redraw();
}

const standin::ControlView* Strip::Beside(int steps) const {
    if (cells_.empty()) return nullptr;
    const int count = static_cast<int>(cells_.size());
    int at = hot_;
    for (int i = 0; i < count; ++i)
        if (open_ != 0 && cells_[static_cast<std::size_t>(i)].control.instance == open_) at = i;
    const int next = at < 0 ? 0 : (at + steps + count) % count;
    return &cells_[static_cast<std::size_t>(next)].control;
}

void Strip::MarkHot(int instance) {
    hot_ = -1;
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (instance != 0 && cells_[i].control.instance == instance) hot_ = static_cast<int>(i);
    Redraw();
    if (onHover) onHover(hot_ < 0 ? standin::ControlView{} : cells_[static_cast<std::size_t>(hot_)].control);
}

const standin::ControlView* Strip::Hot() const {
    return hot_ < 0 ? nullptr : &cells_[static_cast<std::size_t>(hot_)].control;
}

bool Strip::Has(int instance) const {
    return std::any_of(cells_.begin(), cells_.end(),
                       [&](const Cell& cell) { return cell.control.instance == instance; });
}

std::optional<RECT> Strip::PlaceOf(int instance) const {
    for (const Cell& cell : cells_)
        if (cell.control.instance == instance) return cell.place;
    return std::nullopt;
}

const standin::ControlView* Strip::At(POINT onScreen) const {
    ScreenToClient(Handle(), &onScreen);
    const int number = CellAt(onScreen);
    return number < 0 ? nullptr : &cells_[static_cast<std::size_t>(number)].control;
}

const standin::ControlView* Strip::WithAccessKey(char letter) const {
    for (const Cell& cell : cells_) {
        if (IsAccessKey(cell.control.caption, letter)) return &cell.control;
    }
    return nullptr;
}

void Strip::OnMove(POINT point) {
    const int hot = CellAt(point);
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, Handle(), 0};
    TrackMouseEvent(&track);
    if (hot == hot_) return;
    hot_ = hot;
    Redraw();
    if (onHover) onHover(hot < 0 ? standin::ControlView{} : cells_[static_cast<std::size_t>(hot)].control);
}

LRESULT Strip::OnMessage(UINT message, WPARAM first, LPARAM second) {
    const POINT point{GET_X_LPARAM(second), GET_Y_LPARAM(second)};
    switch (message) {
        case WM_PAINT: Paint(); return 0;
        case WM_ERASEBKGND: return 1;
        case WM_MOUSEMOVE: OnMove(point); return 0;
        case WM_MOUSELEAVE: OnMove({-1, -1}); return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP: {
            const int number = CellAt(point);
            pressed_ = message == WM_LBUTTONDOWN;
            Redraw();
            if (number < 0) return 0;
            const standin::ControlView control =
                cells_[static_cast<std::size_t>(number)].control;  // the cells may change
            if (control.enabled && IsPopup(control) == (message == WM_LBUTTONDOWN) && onPress) onPress(control);
            return 0;
        }
        default: return Pane::OnMessage(message, first, second);
    }
}

}  // namespace program
