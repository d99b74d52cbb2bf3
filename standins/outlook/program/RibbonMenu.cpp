#include "outlook/program/RibbonMenu.h"

#include <windowsx.h>

#include <algorithm>

#include "outlook/program/RibbonDrawing.h"

namespace program {
namespace {

constexpr int rowHeight = 24, lineHeight = 7, gutter = 28, edge = 1, margin = 40;
constexpr COLORREF ground = RGB(255, 255, 255), side = RGB(240, 240, 240), hover = RGB(253, 238, 179),
                   frame = RGB(160, 160, 160);

}  // namespace

RibbonMenu::RibbonMenu(HWND owner, std::vector<standin::RibbonControlView> entries, POINT corner, bool keyTips,
                       std::function<void(const std::string&)> chosen)
    : keyTips_(keyTips), chosen_(std::move(chosen)) {
    int width = 140, y = edge;
    for (const standin::RibbonControlView& entry : entries)
        width = std::max(width, gutter + WidthOf(ForDrawing(entry.label)) + margin);
    for (standin::RibbonControlView& entry : entries) {
        if (!entry.visible) continue;
        const bool line = entry.kind == "menuSeparator";
        const int height = line ? lineHeight : rowHeight;
        rows_.push_back({{edge, y, width - edge, y + height}, std::move(entry), line});
        y += height;
    }
    const RECT place{corner.x, corner.y, corner.x + width, corner.y + y + edge};
    Create("", WS_POPUP, WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TOPMOST, owner, place);
    ShowWindow(Handle(), SW_SHOWNOACTIVATE);
    UpdateWindow(Handle());
    SetCapture(Handle());
}

RibbonMenu::~RibbonMenu() {
    if (GetCapture() == Handle()) ReleaseCapture();
}

void RibbonMenu::Paint() {
    const Canvas canvas(Handle());
    const HDC dc = canvas.Get();
    const RECT all = Client();
    Fill(dc, all, ground);
    Fill(dc, {edge, edge, gutter - 2, all.bottom - edge}, side);
    Frame(dc, all, frame);
    SelectObject(dc, PlainFont());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        const int middle = (row.place.top + row.place.bottom) / 2;
        if (row.line) {
            Line(dc, gutter, middle, row.place.right - 2, middle, RGB(210, 210, 210));
            continue;
        }
        const bool enabled = row.control.enabled;
        if (static_cast<int>(i) == hot_ && enabled) {
            Fill(dc, row.place, hover);
            Frame(dc, row.place, RGB(229, 195, 101));
        }
        const standin::AlphaPixels& image = row.control.image;
        DrawAlpha(dc, (gutter - image.width) / 2, middle - image.height / 2, image, enabled);
        Write(dc, ForDrawing(row.control.label), {gutter + 4, row.place.top, row.place.right, row.place.bottom},
              enabled ? RGB(0, 0, 0) : RGB(150, 150, 150), DT_LEFT);
        if (keyTips_ && !row.control.keytip.empty()) DrawKeyTip(dc, {row.place.right - 14, middle}, row.control.keytip);
    }
}

std::optional<RECT> RibbonMenu::PlaceOf(const std::string& id) const {
    for (const Row& row : rows_)
        if (row.control.id == id) return row.place;
    return std::nullopt;
}

int RibbonMenu::RowAt(POINT point) const {
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (!rows_[i].line && PtInRect(&rows_[i].place, point)) return static_cast<int>(i);
    return -1;
}

bool RibbonMenu::OnKey(WPARAM key) {
    const int count = static_cast<int>(rows_.size());
    if (key == VK_ESCAPE) return Choose({}), true;
    if (count > 0 && (key == VK_DOWN || key == VK_UP)) {
        const int step = key == VK_DOWN ? 1 : count - 1;
        int next = hot_ < 0 && key == VK_UP ? 0 : std::max(hot_, key == VK_DOWN ? -1 : 0);
        for (int tries = 0; tries < count; ++tries) {
            next = (next + step) % count;
            if (!rows_[static_cast<std::size_t>(next)].line) break;
        }
        hot_ = next;
        Redraw();
        return true;
    }
    if (key == VK_RETURN) return ChooseRow(hot_), true;
    for (int i = 0; i < count; ++i) {
        const std::string& tip = rows_[static_cast<std::size_t>(i)].control.keytip;
        if (tip.size() == 1 && static_cast<WPARAM>(static_cast<unsigned char>(tip[0])) == key)
            return ChooseRow(i), true;
    }
    return false;
}

void RibbonMenu::ChooseRow(int number) {
    if (number < 0) return;
    const standin::RibbonControlView& control = rows_[static_cast<std::size_t>(number)].control;
    if (control.enabled && !control.id.empty()) Choose(std::string(control.id));
}

// The owner destroys the menu, so nothing may follow.
void RibbonMenu::Choose(const std::string& id) {
    const std::function<void(const std::string&)> chosen = chosen_;
    chosen(id);
}

LRESULT RibbonMenu::OnMessage(UINT message, WPARAM first, LPARAM second) {
    const POINT point{GET_X_LPARAM(second), GET_Y_LPARAM(second)};
    switch (message) {
        case WM_PAINT: Paint(); return 0;
        case WM_ERASEBKGND: return 1;
        case WM_MOUSEACTIVATE: return MA_NOACTIVATE;
        case WM_MOUSEMOVE:
            if (const int hot = RowAt(point); hot != hot_) {
                hot_ = hot;
                Redraw();
            }
            return 0;
        case WM_LBUTTONUP: ChooseRow(RowAt(point)); return 0;
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN: {
            const RECT all = Client();
            if (!PtInRect(&all, point)) Choose({});
            return 0;
        }
        default: return Pane::OnMessage(message, first, second);
    }
}

}  // namespace program
