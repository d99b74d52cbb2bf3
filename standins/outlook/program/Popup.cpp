#include "outlook/program/Popup.h"

#include <windowsx.h>

#include <algorithm>

namespace program {

namespace {

constexpr int rowHeight = 22, gutter = 26, textGap = 8, rightMargin = 30, separatorHeight = 6, edge = 2;

}  // namespace

Popup::Popup(HWND owner, const standin::Outlook& outlook, std::vector<standin::ControlView> entries, POINT corner,
             std::function<void(int)> chosen, std::function<void(POINT)> outside)
    : outlook_(outlook),
      look_(Look::Of(outlook.Version())),
      chosen_(std::move(chosen)),
      outside_(std::move(outside)),
      owner_(owner) {
    for (standin::ControlView& entry : entries)
        if (entry.visible) rows_.push_back({std::move(entry)});
    LayOut();
    const RECT place{corner.x, corner.y, corner.x + size_.cx, corner.y + size_.cy};
    Create("", WS_POPUP, WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TOPMOST, owner, place);
    ShowWindow(Handle(), SW_SHOWNOACTIVATE);
    UpdateWindow(Handle());
    SetCapture(Handle());
}

Popup::~Popup() {
    if (GetCapture() == Handle()) ReleaseCapture();
}

void Popup::LayOut() {
    int width = 120, y = edge;
    for (const Row& row : rows_) width = std::max(width, gutter + textGap + WidthOf(row.control.caption) + rightMargin);
    for (Row& row : rows_) {
        row.separated = row.control.beginGroup && &row != &rows_.front();
        if (row.separated) y += separatorHeight;
        row.place = {edge, y, width - edge, y + rowHeight};
        y += rowHeight;
    }
    size_ = {width, std::max(y, rowHeight) + edge};
}

void Popup::Paint() {
    const Canvas canvas(Handle());
    RECT all = Client();
    Fill(canvas.Get(), all, look_.menu);
    if (look_.flat) {
        Fill(canvas.Get(), {edge, edge, gutter, all.bottom - edge}, look_.gutter);
        Frame(canvas.Get(), all, look_.menuEdge);
    } else {
        DrawEdge(canvas.Get(), &all, EDGE_RAISED, BF_RECT);
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) PaintRow(canvas.Get(), rows_[i], static_cast<int>(i) == hot_);
}

void Popup::PaintRow(HDC dc, const Row& row, bool hot) const {
    const standin::ControlView& control = row.control;
    RECT place = row.place;
    if (row.separated) {
        const int y = place.top - separatorHeight / 2;
        Line(dc, look_.flat ? gutter + textGap : place.left + 2, y, place.right - 2, y, GetSysColor(COLOR_BTNSHADOW));
        if (!look_.flat) Line(dc, place.left + 2, y + 1, place.right - 2, y + 1, GetSysColor(COLOR_BTNHIGHLIGHT));
    }
    COLORREF text = GetSysColor(control.enabled ? COLOR_MENUTEXT : COLOR_GRAYTEXT);
    if (hot && control.enabled && look_.flat) {
        FillDown(dc, place, look_.hover, look_.hoverLow);
        Frame(dc, place, look_.hoverEdge);
    } else if (hot && control.enabled) {
        const bool icon = HasIcon(control);
        Fill(dc, {icon ? gutter - 2 : place.left, place.top, place.right, place.bottom}, GetSysColor(COLOR_HIGHLIGHT));
        RECT box{place.left, place.top, gutter - 3, place.bottom};
        if (icon) DrawEdge(dc, &box, BDR_RAISEDINNER, BF_RECT);
        text = GetSysColor(COLOR_HIGHLIGHTTEXT);
    }
    DrawIcon(dc, place.left + 3, place.top + (rowHeight - 16) / 2, outlook_, control, control.enabled);
    SelectObject(dc, PlainFont());
    Write(dc, control.caption, {gutter + textGap, place.top, place.right - 4, place.bottom}, text, DT_LEFT);
    if (!control.entries.empty())
        Write(dc, "\xBB", {place.right - 16, place.top, place.right - 4, place.bottom}, text, DT_RIGHT);
}

std::optional<RECT> Popup::PlaceOf(int instance) const {
    for (const Row& row : rows_)
        if (row.control.instance == instance) return row.place;
    return std::nullopt;
}

int Popup::RowAt(POINT point) const {
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (PtInRect(&rows_[i].place, point)) return static_cast<int>(i);
    return -1;
}

void Popup::OnMove(POINT point) {
    const int hot = RowAt(point);
    if (hot != hot_) {
        hot_ = hot;
        Redraw();
    }
    const RECT all = Client();
    if (PtInRect(&all, point)) return;
    ClientToScreen(Handle(), &point);
    const std::function<void(POINT)> outside = outside_;  // the owner may open another menu instead of this one
    outside(point);
}

bool Popup::OnKey(WPARAM key) {
    if (inner_ && inner_->OnKey(key)) return true;
    const int count = static_cast<int>(rows_.size());
    if (count > 0 && (key == VK_DOWN || key == VK_UP)) {
        hot_ = key == VK_DOWN ? (hot_ + 1) % count : (hot_ <= 0 ? count - 1 : hot_ - 1);
        Redraw();
        return true;
    }
    int chosen = key == VK_RETURN ? hot_ : -1;
    for (int i = 0; i < count && key >= 'A' && key <= 'Z'; ++i)
        if (IsAccessKey(rows_[static_cast<std::size_t>(i)].control.caption, static_cast<char>(key))) chosen = i;
    if (chosen < 0) return false;
    ChooseRow(chosen);
    return true;
}

void Popup::OnClick(POINT point) {
    if (const int number = RowAt(point); number >= 0) ChooseRow(number);
}

void Popup::ChooseRow(int number) {
    if (!rows_[static_cast<std::size_t>(number)].control.enabled) return;
    const Row& row = rows_[static_cast<std::size_t>(number)];
    if (row.control.entries.empty())
        Choose(row.control.instance);
    else
        OpenInner(row);
}

void Popup::OpenInner(const Row& row) {
    POINT corner{row.place.right - 2, row.place.top - edge};
    ClientToScreen(Handle(), &corner);
    inner_ = std::make_unique<Popup>(
        owner_, outlook_, row.control.entries, corner, [this](int instance) { Choose(instance); }, [](POINT) {});
}

// The owner destroys the menu, so nothing may follow.
void Popup::Choose(int instance) {
    const std::function<void(int)> chosen = chosen_;
    chosen(instance);
}

LRESULT Popup::OnMessage(UINT message, WPARAM first, LPARAM second) {
    const POINT point{GET_X_LPARAM(second), GET_Y_LPARAM(second)};
    switch (message) {
        case WM_PAINT: Paint(); return 0;
        case WM_ERASEBKGND: return 1;
        case WM_MOUSEACTIVATE: return MA_NOACTIVATE;
        case WM_MOUSEMOVE: OnMove(point); return 0;
        case WM_LBUTTONUP: OnClick(point); return 0;
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN: {
            const RECT all = Client();
            if (!PtInRect(&all, point)) Choose(0);
            return 0;
        }
        default: return Pane::OnMessage(message, first, second);
    }
}

}  // namespace program
