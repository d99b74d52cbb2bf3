#include "outlook/program/RibbonBand.h"

#include <windowsx.h>

#include <algorithm>

#include "outlook/program/RibbonDrawing.h"

namespace program {
namespace {

constexpr int tabHeight = 24, bodyHeight = 92, labelHeight = 18, smallHeight = 22, largeWidth = 62, gap = 4, rows = 3;
constexpr COLORREF ground = RGB(244, 245, 247), strip = RGB(224, 228, 234), edge = RGB(190, 196, 204),
                   hover = RGB(253, 238, 179), hoverEdge = RGB(229, 195, 101), dark = RGB(30, 30, 30),
                   pale = RGB(150, 150, 150), soft = RGB(100, 100, 100);

std::string LabelOf(const std::string& caption) { return ForDrawing(caption); }

// A large button's label in two lines: broken at the blank nearest to its middle.
std::pair<std::string, std::string> Broken(const std::string& label) {
    std::size_t best = std::string::npos;
    for (std::size_t at = label.find(' '); at != std::string::npos; at = label.find(' ', at + 1)) {
        const auto distance = [&](std::size_t place) {
            return place > label.size() / 2 ? place - label.size() / 2 : label.size() / 2 - place;
        };
        if (best == std::string::npos || distance(at) < distance(best)) best = at;
    }
    if (best == std::string::npos || WidthOf(LabelOf(label)) <= largeWidth) return {label, {}};
    return {label.substr(0, best), label.substr(best + 1)};
}

bool OpensMenu(const standin::RibbonControlView& control) { return control.kind == "menu"; }

}  // namespace

RibbonBand::RibbonBand(HWND parent, const standin::Outlook& outlook) : outlook_(outlook) {
    Create("", WS_CHILD | WS_VISIBLE, 0, parent, {0, 0, 10, Height()});
}

int RibbonBand::Height() { return tabHeight + bodyHeight + 2; }

void RibbonBand::Show(std::vector<standin::RibbonTabView> tabs, std::vector<standin::ControlView> own,
                      std::vector<standin::ControlView> added) {
    const std::string home = tabs_.empty() ? std::string() : tabs_.front().name;
    const bool wasHome = tab_.empty() || tab_ == home;
    tabs_ = std::move(tabs);
    own_ = std::move(own);
    added_ = std::move(added);
    const bool there = std::any_of(tabs_.begin(), tabs_.end(), [&](const auto& tab) { return tab.name == tab_; });
    if ((wasHome || !there) && !tabs_.empty()) tab_ = tabs_.front().name;
    LayOut();
    Redraw();
}

void RibbonBand::LayOut() {
    hot_ = nullptr;
    groups_.clear();
    cells_.clear();
    LayOutTabs();
    int x = gap;
    const auto ofBars = [](const std::vector<standin::ControlView>& controls) {
        std::vector<Cell> cells;
        for (const standin::ControlView& control : controls) {
            if (!control.visible) continue;
            cells.emplace_back();
            cells.back().bar = control;
        }
        return cells;
    };
    for (const standin::RibbonTabView& tab : tabs_) {
        if (tab.name != tab_) continue;
        if (&tab == &tabs_.front()) x = LayOutGroup("Outlook", ofBars(own_), x);
        if (tab.name == "TabAddIns") x = LayOutGroup("Commands", ofBars(added_), x);
        for (const standin::RibbonGroupView& group : tab.groups) {
            std::vector<Cell> cells;
            for (const standin::RibbonControlView& control : group.controls) {
                if (!control.visible) continue;
                cells.emplace_back();
                cells.back().control = control;
                cells.back().large = control.large;
            }
            x = LayOutGroup(group.label, std::move(cells), x);
        }
    }
    GiveKeyTips();
}

void RibbonBand::LayOutTabs() {
    heads_.clear();
    int x = gap;
    for (const standin::RibbonTabView& tab : tabs_) {
        const int width = WidthOf(tab.label) + 24;
        heads_.push_back({{x, 0, x + width, tabHeight}, tab.label, tab.keytip});
        x += width;
    }
}

// Large buttons take the whole height, small ones stand in columns of three. Returns where the next group begins.
int RibbonBand::LayOutGroup(const std::string& label, std::vector<Cell> cells, int x) {
    if (cells.empty()) return x;
    const int left = x;
    int row = 0, column = 0;
    x += gap;
    for (Cell& cell : cells) {
        const std::string text = cell.bar ? cell.bar.caption : LabelOf(cell.control.label);
        if (cell.large) {
            x += column;
            row = column = 0;
            const auto [first, second] = Broken(cell.control.label);
            const int wide = std::max(WidthOf(LabelOf(first)), WidthOf(LabelOf(second)) + 12);
            const int width = std::max(largeWidth, wide + 8);
            cell.place = {x, tabHeight + 3, x + width, tabHeight + bodyHeight - labelHeight};
            x += width + 2;
        } else {
            if (row == rows) {
                x += column;
                row = column = 0;
            }
            const int width = WidthOf(text) + 32, y = tabHeight + 4 + row * (smallHeight + 1);
            cell.place = {x, y, x + width, y + smallHeight};
            column = std::max(column, width + 2);
            ++row;
        }
        cells_.push_back(std::move(cell));
    }
    x += column + gap;
    x = std::max(x, left + WidthOf(label) + 16);
    groups_.push_back({{left, tabHeight, x, tabHeight + bodyHeight}, label});
    return x + 2;
}

// Those of the add-in first; who has none, or one that is taken, gets "Y1" and so on.
void RibbonBand::GiveKeyTips() {
    int number = 0;
    std::vector<std::string> taken;
    for (Cell& cell : cells_) {
        if (cell.bar) continue;
        cell.keyTip = cell.control.keytip;
        const bool again = std::find(taken.begin(), taken.end(), cell.keyTip) != taken.end();
        if (cell.keyTip.empty() || again) cell.keyTip = "Y" + std::to_string(++number);
        taken.push_back(cell.keyTip);
    }
}

// --- painting

void RibbonBand::Paint() {
    const Canvas canvas(Handle());
    const HDC dc = canvas.Get();
    const RECT all = Client();
    Fill(dc, all, strip);
    Fill(dc, {0, tabHeight, all.right, tabHeight + bodyHeight}, ground);
    Line(dc, 0, tabHeight + bodyHeight, all.right, tabHeight + bodyHeight, edge);
    SelectObject(dc, PlainFont());
    for (std::size_t i = 0; i < heads_.size(); ++i) {
        if (tabs_[i].name == tab_) Fill(dc, heads_[i].place, ground);
        Write(dc, heads_[i].label, heads_[i].place, dark, DT_CENTER);
    }
    for (const Group& group : groups_) {
        Line(dc, group.place.right, group.place.top + 4, group.place.right, group.place.bottom - 4, edge);
        Write(dc, LabelOf(group.label),
              {group.place.left, group.place.bottom - labelHeight, group.place.right, group.place.bottom}, soft,
              DT_CENTER);
    }
    for (const Cell& cell : cells_) PaintCell(dc, cell, &cell == hot_);
    if (tips_ == Tips::Tabs)
        for (const Head& head : heads_) PaintTip(dc, head.place, head.keyTip);
    if (tips_ == Tips::Controls)
        for (const Cell& cell : cells_) PaintTip(dc, cell.place, cell.keyTip);
}

void RibbonBand::PaintTip(HDC dc, const RECT& place, const std::string& text) const {
    if (!text.empty()) DrawKeyTip(dc, {(place.left + place.right) / 2, place.bottom - 4}, text);
}

void RibbonBand::PaintCell(HDC dc, const Cell& cell, bool hot) const {
    const RECT& place = cell.place;
    const bool enabled = cell.bar ? cell.bar.enabled : cell.control.enabled;
    if (hot && enabled) {
        Fill(dc, place, hover);
        Frame(dc, place, hoverEdge);
    }
    const COLORREF colour = enabled ? dark : pale;
    SelectObject(dc, PlainFont());
    if (cell.bar) {
        DrawIcon(dc, place.left + 4, place.top + 3, outlook_, cell.bar, enabled);
        return Write(dc, cell.bar.caption, {place.left + 25, place.top, place.right, place.bottom}, colour, DT_LEFT);
    }
    const standin::AlphaPixels& image = cell.control.image;
    if (!cell.large) {
        DrawAlpha(dc, place.left + 4, place.top + (smallHeight - image.height) / 2, image, enabled);
        return Write(dc, LabelOf(cell.control.label), {place.left + 25, place.top, place.right, place.bottom}, colour,
                     DT_LEFT);
    }
    const int middle = (place.left + place.right) / 2;
    DrawAlpha(dc, middle - image.width / 2, place.top + 3, image, enabled);
    const auto [first, second] = Broken(cell.control.label);
    Write(dc, LabelOf(first), {place.left, place.top + 37, place.right, place.top + 52}, colour, DT_CENTER);
    Write(dc, LabelOf(second), {place.left, place.top + 51, place.right, place.top + 66}, colour, DT_CENTER);
    if (!OpensMenu(cell.control)) return;
    const int y = second.empty() ? place.top + 56 : place.top + 66;
    for (int line = 0; line < 3; ++line) Line(dc, middle - 2 + line, y + line, middle + 3 - line, y + line, colour);
}

// --- mouse and keyboard

const RibbonBand::Cell* RibbonBand::CellAt(POINT point) const {
    for (const Cell& cell : cells_)
        if (PtInRect(&cell.place, point)) return &cell;
    return nullptr;
}

void RibbonBand::OnMove(POINT point) {
    const Cell* hot = CellAt(point);
    if (hot == hot_) return;
    hot_ = hot;
    if (onHover) onHover(!hot ? std::string() : hot->bar ? hot->bar.tooltip : hot->control.screentip);
    TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, Handle(), 0};
    TrackMouseEvent(&leave);
    Redraw();
}

void RibbonBand::OnClick(POINT point) {
    tips_ = Tips::None;
    for (std::size_t i = 0; i < heads_.size(); ++i)
        if (PtInRect(&heads_[i].place, point)) return SelectTab(i);
    if (const Cell* cell = CellAt(point)) return Press(Cell(*cell));
    Redraw();
}

void RibbonBand::SelectTab(std::size_t number) {
    tab_ = tabs_[number].name;
    LayOut();
    Redraw();
}

void RibbonBand::Press(const Cell& cell) {
    const bool enabled = cell.bar ? cell.bar.enabled : cell.control.enabled;
    if (!enabled) return;
    if (cell.bar) return onBar(cell.bar);
    if (!OpensMenu(cell.control)) return onRibbon(cell.control.id);
    POINT corner{cell.place.left, cell.place.bottom};
    ClientToScreen(Handle(), &corner);
    CloseMenu();
    menu_ = std::make_unique<RibbonMenu>(GetParent(Handle()), cell.control.controls, corner, tips_ != Tips::None,
                                         [this](const std::string& id) { OnChosen(id); });
    tips_ = Tips::None;
    Redraw();
}

// The menu may be the one that is asking: it is kept until the next time.
void RibbonBand::CloseMenu() {
    leaving_.clear();
    if (!menu_) return;
    ShowWindow(menu_->Handle(), SW_HIDE);
    if (GetCapture() == menu_->Handle()) ReleaseCapture();
    leaving_.push_back(std::move(menu_));
}

void RibbonBand::OnChosen(const std::string& id) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may be the menu's own
    const std::string kept = id;
    CloseMenu();
    if (!kept.empty()) onRibbon(kept);
}

void RibbonBand::ToggleKeyTips() {
    CloseMenu();
    tips_ = tips_ == Tips::None ? Tips::Tabs : Tips::None;
    typed_.clear();
    Redraw();
}

bool RibbonBand::OnKey(WPARAM key) {
    if (menu_) return menu_->OnKey(key);
    if (tips_ == Tips::None) return false;
    if (key == VK_MENU) return false;
    typed_ += static_cast<char>(key);
    bool begins = false;
    if (tips_ == Tips::Tabs) {
        for (std::size_t i = 0; i < heads_.size(); ++i) {
            if (heads_[i].keyTip != typed_) continue;
            typed_.clear();
            tips_ = Tips::Controls;
            SelectTab(i);
            return true;
        }
    } else {
        for (const Cell& cell : cells_) {
            if (cell.keyTip == typed_) {
                typed_.clear();
                const Cell pressed = cell;
                if (!OpensMenu(pressed.control)) tips_ = Tips::None;
                Redraw();
                Press(pressed);
                return true;
            }
            begins = begins || cell.keyTip.starts_with(typed_);
        }
    }
    if (!begins) ToggleKeyTips();
    return true;
}

std::optional<RECT> RibbonBand::PlaceOf(int instance) const {
    for (const Cell& cell : cells_)
        if (cell.bar && cell.bar.instance == instance) return cell.place;
    return std::nullopt;
}

std::optional<RECT> RibbonBand::PlaceOf(const std::string& id) const {
    for (const Cell& cell : cells_)
        if (cell.control && cell.control.id == id) return cell.place;
    return std::nullopt;
}

std::optional<RECT> RibbonBand::PlaceOfTab(const std::string& label) const {
    for (const Head& head : heads_)
        if (head.label == label) return head.place;
    return std::nullopt;
}

POINT RibbonBand::Below(int instance) const {
    POINT corner{};
    if (const auto place = PlaceOf(instance)) corner = {place->left, place->bottom};
    ClientToScreen(Handle(), &corner);
    return corner;
}

LRESULT RibbonBand::OnMessage(UINT message, WPARAM first, LPARAM second) {
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
