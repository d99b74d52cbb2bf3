#include "outlook/program/Ribbon.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace program {

namespace {

constexpr int tabsHeight = 25, bodyHeight = 92, captionHeight = 16, rowHeight = 22, rows = 3, iconSize = 16,
              largeIcon = 32, largeWidth = 48, edge = 4, gap = 4, tabPadding = 12;

bool IsPopup(const standin::ControlView& control) { return control.type == 10 || control.type == 13; }

// Style 1 is the icon alone, where there is one.
bool ShowsText(const standin::ControlView& control, bool icon) {
    return !icon || control.builtIn || control.style != 1;
}

// A picture twice as large as it is.
void DrawLargeIcon(HDC dc, int x, int y, const standin::Outlook& outlook, const standin::ControlView& control,
                   COLORREF behind) {
    const HDC memory = CreateCompatibleDC(dc);
    const HBITMAP bitmap = CreateCompatibleBitmap(dc, iconSize, iconSize);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    Fill(memory, {0, 0, iconSize, iconSize}, behind);
    DrawIcon(memory, 0, 0, outlook, control, control.enabled);
    StretchBlt(dc, x, y, largeIcon, largeIcon, memory, 0, 0, iconSize, iconSize, SRCCOPY);
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
}

}  // namespace

Ribbon::Ribbon(HWND parent, const standin::Outlook& outlook) : outlook_(outlook), look_(Look::Of(outlook.Version())) {
    Create("", WS_CHILD | WS_VISIBLE, 0, parent, {0, 0, 10, 10});
}

int Ribbon::Height() const { return tabs_.empty() ? 0 : tabsHeight + bodyHeight; }

void Ribbon::Show(std::vector<RibbonTab> tabs) {
    tabs_ = std::move(tabs);
    const bool stillThere =
        std::any_of(tabs_.begin(), tabs_.end(), [&](const auto& tab) { return tab.caption == open_; });
    if (!stillThere) open_ = tabs_.empty() ? "" : tabs_.front().caption;
    hot_ = hotTab_ = -1;
    LayOut();
    Redraw();
}

void Ribbon::Open(const std::string& tab) {
    if (tab == open_ || !PlaceOfTab(tab)) return;
    open_ = tab;
    hot_ = -1;
    LayOut();
    Redraw();
}

void Ribbon::LayOut() {
    tabCells_.clear();
    groups_.clear();
    cells_.clear();
    int x = edge;
    for (const RibbonTab& tab : tabs_) {
        const int width = WidthOf(tab.caption) + 2 * tabPadding;
        tabCells_.push_back({tab.caption, {x, 3, x + width, tabsHeight}});
        x += width + 2;
    }
    x = edge;
    for (const RibbonTab& tab : tabs_) {
        if (tab.caption != open_) continue;
        for (const RibbonGroup& group : tab.groups) LayOutGroup(group, x);
    }
}

// Of a group of the window's own the first command is large; the others stand in columns of three.
void Ribbon::LayOutGroup(const RibbonGroup& group, int& x) {
    const int left = x, top = tabsHeight + 3;
    x += edge;
    int row = 0, column = 0;
    for (const standin::ControlView& control : group.controls) {
        Cell cell{control, {}, false, HasIcon(control)};
        cell.large = control.builtIn && cell.icon && &control == &group.controls.front();
        const int text = WidthOf(control.caption);
        if (cell.large) {
            const int width = std::max(largeWidth, text * 3 / 5 + 2 * gap);
            cell.place = {x, top, x + width, top + rows * rowHeight};
            x += width + 1;
        } else {
            int width = 2 * gap + (cell.icon ? iconSize : 0);
            if (ShowsText(control, cell.icon)) width += text + (cell.icon ? gap : 0);
            if (IsPopup(control)) width += 10;
            cell.place = {x, top + row * rowHeight, x + width, top + (row + 1) * rowHeight};
            column = std::max(column, width);
            if (++row == rows) x += std::exchange(column, 0) + 1;
            row %= rows;
        }
        cells_.push_back(std::move(cell));
    }
    x += column;
    x = std::max(x, left + WidthOf(group.caption) + 2 * gap) + edge;
    groups_.push_back({group.caption, {left, tabsHeight + 1, x, tabsHeight + bodyHeight - 4}});
    x += 3;
}

void Ribbon::Paint() {
    const Canvas canvas(Handle());
    const HDC dc = canvas.Get();
    const RECT all = Client();
    Fill(dc, all, look_.band);
    const RECT body{0, tabsHeight - 1, all.right, tabsHeight + bodyHeight - 1};
    FillDown(dc, body, look_.bar, look_.barLow);
    Frame(dc, body, look_.edge);
    PaintTabs(dc);
    for (const GroupCell& group : groups_) PaintGroup(dc, group);
    for (std::size_t i = 0; i < cells_.size(); ++i) PaintCell(dc, cells_[i], static_cast<int>(i) == hot_);
}

void Ribbon::PaintTabs(HDC dc) const {
    SelectObject(dc, PlainFont());
    for (std::size_t i = 0; i < tabCells_.size(); ++i) {
        const TabCell& tab = tabCells_[i];
        if (tab.caption == open_) {
            Fill(dc, tab.place, look_.bar);
            Line(dc, tab.place.left, tab.place.top, tab.place.left, tab.place.bottom - 1, look_.edge);
            Line(dc, tab.place.left, tab.place.top, tab.place.right, tab.place.top, look_.edge);
            Line(dc, tab.place.right - 1, tab.place.top, tab.place.right - 1, tab.place.bottom - 1, look_.edge);
        } else if (static_cast<int>(i) == hotTab_) {
            FillDown(dc, tab.place, look_.hover, look_.band);
        }
        if (keys_ == Keys::OnTabs && tab.caption == open_) Frame(dc, tab.place, look_.hoverEdge);
        Write(dc, tab.caption, tab.place, look_.ink, DT_CENTER);
    }
}

void Ribbon::PaintGroup(HDC dc, const GroupCell& group) const {
    RECT caption = group.place;
    caption.top = caption.bottom - captionHeight;
    Fill(dc, caption, look_.caption);
    Frame(dc, group.place, look_.edge);
    SelectObject(dc, PlainFont());
    Write(dc, group.caption, caption, look_.captionInk, DT_CENTER);
}

void Ribbon::PaintCell(HDC dc, const Cell& cell, bool hot) const {
    const bool enabled = cell.control.enabled;
    if (hot && enabled) {
        FillDown(dc, cell.place, look_.hover, look_.hoverLow);
        Frame(dc, cell.place, look_.hoverEdge);
    }
    SelectObject(dc, PlainFont());
    const COLORREF ink = enabled ? look_.ink : GetSysColor(COLOR_GRAYTEXT);
    if (cell.large) {
        const int x = (cell.place.left + cell.place.right - largeIcon) / 2, y = cell.place.top + 2;
        DrawLargeIcon(dc, x, y, outlook_, cell.control, GetPixel(dc, x, y));
        RECT text{cell.place.left + 1, y + largeIcon + 1, cell.place.right - 1, cell.place.bottom};
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, ink);
        DrawTextA(dc, cell.control.caption.c_str(), -1, &text, DT_CENTER | DT_WORDBREAK | DT_HIDEPREFIX);
        return;
    }
    int x = cell.place.left + gap;
    if (cell.icon) {
        DrawIcon(dc, x, cell.place.top + (rowHeight - iconSize) / 2, outlook_, cell.control, enabled);
        x += iconSize + gap;
    }
    const RECT text{x, cell.place.top, cell.place.right, cell.place.bottom};
    if (ShowsText(cell.control, cell.icon)) Write(dc, cell.control.caption, text, ink, DT_LEFT, Accent::Hidden);
    if (IsPopup(cell.control)) {
        const int middle = cell.place.right - 7, y = cell.place.top + rowHeight / 2 - 1;
        for (int i = 0; i < 3; ++i) Line(dc, middle - 2 + i, y + i, middle + 3 - i, y + i, ink);
    }
}

std::optional<RECT> Ribbon::PlaceOf(int instance) const {
    for (const Cell& cell : cells_)
        if (cell.control.instance == instance) return cell.place;
    return std::nullopt;
}

std::optional<RECT> Ribbon::PlaceOfTab(const std::string& tab) const {
    for (const TabCell& cell : tabCells_)
        if (cell.caption == tab) return cell.place;
    return std::nullopt;
}

POINT Ribbon::Below(int instance) const {
    const RECT place = PlaceOf(instance).value_or(RECT{});
    POINT corner{place.left, place.bottom};
    ClientToScreen(Handle(), &corner);
    return corner;
}

const standin::ControlView* Ribbon::WithAccessKey(char letter) const {
    for (const Cell& cell : cells_)
        if (IsAccessKey(cell.control.caption, letter)) return &cell.control;
    return nullptr;
}

int Ribbon::CellAt(POINT point) const {
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (PtInRect(&cells_[i].place, point)) return static_cast<int>(i);
    return -1;
}

int Ribbon::TabAt(POINT point) const {
    for (std::size_t i = 0; i < tabCells_.size(); ++i)
        if (PtInRect(&tabCells_[i].place, point)) return static_cast<int>(i);
    return -1;
}

void Ribbon::TakeKeys() {
    keys_ = Keys::OnTabs;
    Redraw();
}

void Ribbon::StepTab(int steps) {
    const int count = static_cast<int>(tabCells_.size());
    for (int i = 0; i < count; ++i) {
        if (tabCells_[static_cast<std::size_t>(i)].caption != open_) continue;
        const std::string next = tabCells_[static_cast<std::size_t>((i + steps + count) % count)].caption;
        return Open(next);
    }
}

bool Ribbon::OnKey(WPARAM key) {
    const int count = static_cast<int>(cells_.size());
    const bool onTabs = keys_ == Keys::OnTabs;
    const bool back = key == VK_LEFT || key == VK_UP || (key == VK_TAB && GetKeyState(VK_SHIFT) < 0);
    const bool step = key == VK_LEFT || key == VK_RIGHT || key == VK_UP || key == VK_DOWN || key == VK_TAB;
    if (onTabs && (key == VK_LEFT || key == VK_RIGHT)) {
        StepTab(back ? -1 : 1);
    } else if (step && count != 0) {
        hot_ = onTabs ? 0 : (hot_ + (back ? -1 : 1) + count) % count;
        keys_ = Keys::OnControls;
    } else {
        const bool chosen = (key == VK_RETURN || key == VK_SPACE) && !onTabs && hot_ >= 0;
        const standin::ControlView control =
            chosen ? cells_[static_cast<std::size_t>(hot_)].control : standin::ControlView{};
        keys_ = Keys::None;
        hot_ = -1;
        Redraw();
        if (control && control.enabled && onPress) onPress(control);
        return false;
    }
    Redraw();
    return true;
}

void Ribbon::OnMove(POINT point) {
    const int hot = CellAt(point), tab = TabAt(point);
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, Handle(), 0};
    TrackMouseEvent(&track);
    if (hot == hot_ && tab == hotTab_) return;
    hot_ = hot;
    hotTab_ = tab;
    Redraw();
}

void Ribbon::OnClick(POINT point) {
    if (const int tab = TabAt(point); tab >= 0)
        return Open(std::string(tabCells_[static_cast<std::size_t>(tab)].caption));
    const int number = CellAt(point);
    if (number < 0) return;
    const standin::ControlView control = cells_[static_cast<std::size_t>(number)].control;  // the cells may change
    if (control.enabled && onPress) onPress(control);
}

LRESULT Ribbon::OnMessage(UINT message, WPARAM first, LPARAM second) {
    const POINT point{GET_X_LPARAM(second), GET_Y_LPARAM(second)};
    switch (message) {
        case WM_PAINT: Paint(); return 0;
        case WM_ERASEBKGND: return 1;
        case WM_MOUSEMOVE: OnMove(point); return 0;
        case WM_MOUSELEAVE: OnMove({-1, -1}); return 0;
        case WM_LBUTTONUP: OnClick(point); return 0;
        default: return Pane::OnMessage(message, first, second);
    }
}

}  // namespace program
