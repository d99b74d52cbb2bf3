#include "outlook/program/HostFrame.h"

#include <optional>

#include "outlook/program/Versions.h"

namespace program {

HostFrame::HostFrame(Desk& desk, standin::Window window, Top top, const RECT& place)
    : desk_(desk), window_(window), face_(CreateSolidBrush(Look::Of(desk.Host().Version()).face)) {
    Create("", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, nullptr, place);
    const auto press = [this](const standin::ControlView& control) { OnPress(control); };
    if (top == Top::Ribbon) {
        ribbon_ = std::make_unique<Ribbon>(Handle(), desk.Host());
        ribbon_->onPress = press;
        return;
    }
    menu_ = std::make_unique<Strip>(Handle(), desk.Host(), Strip::Kind::Menu);
    toolbar_ = std::make_unique<Strip>(Handle(), desk.Host(), Strip::Kind::Toolbar);
    strips_ = {menu_.get(), toolbar_.get()};
    for (Strip* strip : strips_) {
        strip->onPress = press;
        strip->onHover = [this](const standin::ControlView& control) { ShowHint(control.tooltip); };
    }
}

HostFrame::~HostFrame() { DeleteObject(face_); }

void HostFrame::SetTitle(const std::string& caption) {
    SetWindowTextA(Handle(), (caption + " (" + VersionName(desk_.Host().Version()) + ")").c_str());
}

void HostFrame::ShowBars() {
    const std::vector<standin::BarView> bars = desk_.Host().Bars(window_);
    if (ribbon_) {
        const standin::Item item = desk_.Host().View(window_).item;
        return ribbon_->Show(RibbonTabsOf(bars, desk_.Host().ClassOf(item)));
    }
    ShowBand(bars);
    std::vector<standin::ControlView> menu, toolbar;
    for (const standin::BarView& bar : bars) {
        if (bar.name == "Menu Bar") menu = bar.controls;
        if (bar.name == "Standard") toolbar = bar.controls;
    }
    menu_->Show(std::move(menu));
    toolbar_->Show(std::move(toolbar));
}

// The host's own buttons, as far as a group has room for them, and what add-ins have on the command bars. A host that
// asks nobody for a ribbon draws command bars, as it did before.
void HostFrame::ShowBand(const std::vector<standin::BarView>& bars) {
    constexpr std::size_t most = 9;
    if (desk_.Host().Version() < 14 || desk_.Host().RibbonsAsked().empty()) return;
    std::vector<standin::RibbonTabView> tabs = desk_.Host().Ribbon(window_);
    if (tabs.empty()) return;
    std::vector<standin::ControlView> own, added;
    for (const standin::BarView& bar : bars) {
        for (const standin::ControlView& control : bar.controls) {
            if (!control.builtIn) added.push_back(control);
            if (control.builtIn && bar.name == "Standard" && own.size() < most) own.push_back(control);
        }
    }
    if (!band_) {
        band_ = std::make_unique<RibbonBand>(Handle(), desk_.Host());
        band_->onRibbon = [this](const std::string& id) { OnRibbon(id); };
        band_->onBar = [this](const standin::ControlView& control) { OnPress(control); };
        band_->onHover = [this](const std::string& text) { ShowHint(text); };
        for (const Strip* strip : strips_) ShowWindow(strip->Handle(), SW_HIDE);
        strips_.clear();
    }
    band_->Show(std::move(tabs), std::move(own), std::move(added));
}

void HostFrame::OnRibbon(const std::string& id) {
    CommitEdits();
    desk_.ClickRibbon(window_, id);
}

void HostFrame::OpenContextMenu(POINT corner) {
    std::vector<standin::RibbonControlView> entries = desk_.Host().ContextMenu(window_);
    std::erase_if(entries, [](const standin::RibbonControlView& entry) { return !entry.visible; });
    if (entries.empty()) return;
    contextMenu_ =
        std::make_unique<RibbonMenu>(Handle(), std::move(entries), corner, false, [this](const std::string& id) {
            // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): what is clicked may take the menu away
            const std::string chosen = id;
            ShowWindow(contextMenu_->Handle(), SW_HIDE);
            ReleaseCapture();
            if (!chosen.empty()) desk_.ClickContextMenu(window_, chosen);
        });
}

void HostFrame::Arrange() {
    RECT inside = Client();
    const auto place = [&inside](HWND pane, int height) {
        MoveWindow(pane, 0, inside.top, inside.right, height, TRUE);
        inside.top += height;
    };
    if (ribbon_) place(ribbon_->Handle(), ribbon_->Height());
    if (band_) place(band_->Handle(), RibbonBand::Height());
    for (const Strip* strip : strips_) place(strip->Handle(), strip->Height());
    if (ribbon_ || band_ || !strips_.empty()) LayOut(inside);
}

void HostFrame::OnPress(const standin::ControlView& control) {
    if (control.type == 10 || control.type == 13)
        OpenMenu(control);
    else
        OnChosen(control.instance);
}

bool HostFrame::OpenMenu(const standin::ControlView& popup) {
    CloseMenu();
    const standin::ControlView current = desk_.Host().Control(popup.instance);
    if (!current) return false;
    std::optional<POINT> corner;
    if (ribbon_ && ribbon_->PlaceOf(current.instance)) corner = ribbon_->Below(current.instance);
    if (band_ && band_->PlaceOf(current.instance)) corner = band_->Below(current.instance);
    for (Strip* strip : strips_) {
        if (!strip->Has(current.instance)) continue;
        strip->MarkOpen(current.instance);
        corner = strip->Below(current.instance);
    }
    if (!corner) return false;
    openMenu_ = current.instance;
    popup_ = std::make_unique<Popup>(
        Handle(), desk_.Host(), current.entries, *corner, [this](int instance) { OnChosen(instance); },
        [this](POINT point) { OnOutside(point); });
    return true;
}

// With a menu of the menu bar open, the mouse opens the others by passing over them.
void HostFrame::OnOutside(POINT point) {
    if (!menu_) return;
    const standin::ControlView* control = menu_->At(point);
    const bool another = control && control->type == 10 && control->instance != openMenu_;
    const bool ofMenuBar = menu_->Has(openMenu_);
    if (another && ofMenuBar) OpenMenu(standin::ControlView(*control));
}

// The menu may be the one that is asking: it is kept until the next message.
void HostFrame::CloseMenu() {
    if (band_) band_->CloseMenu();
    if (!popup_) return;
    ShowWindow(popup_->Handle(), SW_HIDE);
    leaving_.push_back(std::move(popup_));
    PostMessageA(Handle(), Desk::forgetMenu, 0, 0);
    for (Strip* strip : strips_) strip->MarkOpen(0);
    ShowHint("");
}

void HostFrame::OnChosen(int instance) {
    CloseMenu();
    if (instance == 0) return;
    if (GetCapture()) ReleaseCapture();
    CommitEdits();
    desk_.Click(window_, instance);
}

namespace {

HostFrame::Spot MiddleOf(HWND window, const RECT& place) {
    return {window, {(place.left + place.right) / 2, (place.top + place.bottom) / 2}};
}

}  // namespace

HostFrame::Spot HostFrame::SpotOf(int instance) const {
    if (popup_)
        if (const auto place = popup_->PlaceOf(instance)) return MiddleOf(popup_->Handle(), *place);
    if (ribbon_)
        if (const auto place = ribbon_->PlaceOf(instance)) return MiddleOf(ribbon_->Handle(), *place);
    if (band_)
        if (const auto place = band_->PlaceOf(instance)) return MiddleOf(band_->Handle(), *place);
    for (const Strip* strip : strips_)
        if (const auto place = strip->PlaceOf(instance)) return MiddleOf(strip->Handle(), *place);
    return {};
}

HostFrame::Spot HostFrame::SpotOf(const std::string& ribbonId) const {
    for (const RibbonMenu* menu :
         {band_ ? band_->Menu() : nullptr, static_cast<const RibbonMenu*>(contextMenu_.get())}) {
        if (!menu || !IsWindowVisible(menu->Handle())) continue;
        if (const auto place = menu->PlaceOf(ribbonId)) return MiddleOf(menu->Handle(), *place);
    }
    if (band_)
        if (const auto place = band_->PlaceOf(ribbonId)) return MiddleOf(band_->Handle(), *place);
    return {};
}

HostFrame::Spot HostFrame::SpotOfTab(const std::string& tab) const {
    if (ribbon_)
        if (const auto place = ribbon_->PlaceOfTab(tab)) return MiddleOf(ribbon_->Handle(), *place);
    if (band_)
        if (const auto place = band_->PlaceOfTab(tab)) return MiddleOf(band_->Handle(), *place);
    return {};
}

bool HostFrame::OnAccessKey(char letter) {
    const standin::ControlView* control = ribbon_ ? ribbon_->WithAccessKey(letter) : nullptr;
    for (const Strip* strip : strips_)
        if (!control || !control->enabled) control = strip->WithAccessKey(letter);
    if (!control || !control->enabled) return false;
    OnPress(standin::ControlView(*control));
    return true;
}

bool HostFrame::OnBarKey(WPARAM key) {
    if (ribbon_) return OnRibbonKey(key);
    if (band_ && !popup_) {
        if (key == VK_F10) return band_->ToggleKeyTips(), true;
        return band_->OnKey(key);
    }
    if (key == VK_F10 && !popup_) {
        const standin::ControlView* first = menu_->Beside(0);
        return first && OpenMenu(standin::ControlView(*first));
    }
    if (onToolbar_) return OnToolbarKey(key);
    if (!popup_) return false;
    if (key == VK_ESCAPE || key == VK_TAB) {
        CloseMenu();
        onToolbar_ = key == VK_TAB;
        if (const standin::ControlView* first = onToolbar_ ? toolbar_->Beside(0) : nullptr)
            toolbar_->MarkHot(first->instance);
        return true;
    }
    if ((key == VK_LEFT || key == VK_RIGHT) && menu_->Has(openMenu_)) {
        const standin::ControlView* next = menu_->Beside(key == VK_RIGHT ? 1 : -1);
        return next && OpenMenu(standin::ControlView(*next));
    }
    popup_->OnKey(key);
    return true;
}

bool HostFrame::OnToolbarKey(WPARAM key) {
    const bool back = key == VK_LEFT || (key == VK_TAB && GetKeyState(VK_SHIFT) < 0);
    if (key == VK_LEFT || key == VK_RIGHT || key == VK_TAB) {
        if (const standin::ControlView* next = toolbar_->Beside(back ? -1 : 1)) toolbar_->MarkHot(next->instance);
        return true;
    }
    const standin::ControlView* hot = toolbar_->Hot();
    const standin::ControlView chosen = hot ? *hot : standin::ControlView{};
    onToolbar_ = false;
    toolbar_->MarkHot(0);
    if ((key == VK_RETURN || key == VK_DOWN) && chosen && chosen.enabled) OnPress(chosen);
    return true;
}

bool HostFrame::OnRibbonKey(WPARAM key) {
    if (popup_ && key == VK_ESCAPE) {
        CloseMenu();
        return true;
    }
    if (popup_) {
        popup_->OnKey(key);
        return true;
    }
    if (key == VK_F10 && ribbon_->Height() != 0) {
        onRibbon_ = true;
        ribbon_->TakeKeys();
        return true;
    }
    if (!onRibbon_) return false;
    onRibbon_ = ribbon_->OnKey(key);
    return true;
}

void HostFrame::OnActivate(WPARAM first) {
    if (LOWORD(first) != WA_INACTIVE) return desk_.UserActivated(window_);
    if (IsChild(Handle(), GetFocus())) focus_ = GetFocus();
    desk_.UserLeft(window_);
}

LRESULT HostFrame::OnMessage(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_SIZE: Arrange(); return 0;
        case WM_ERASEBKGND: {
            const RECT all = Client();
            FillRect(reinterpret_cast<HDC>(first), &all, face_);
            return 1;
        }
        case WM_CTLCOLORSTATIC:
            SetBkMode(reinterpret_cast<HDC>(first), TRANSPARENT);
            return reinterpret_cast<LRESULT>(face_);
        case WM_ACTIVATE: OnActivate(first); break;
        case WM_SYSCOMMAND:
            if (!band_ || (first & 0xFFF0) != SC_KEYMENU || second != 0) break;
            band_->ToggleKeyTips();
            return 0;
        case WM_COMMAND: OnCommand(LOWORD(first), HIWORD(first)); return 0;
        case WM_NOTIFY: return OnNotify(*reinterpret_cast<const NMHDR*>(second));

        case WM_SETFOCUS: SetFocus(focus_ ? focus_ : FirstField()); return 0;
        case WM_CLOSE:
            if (AskClose()) desk_.CloseByUser(window_);
            return 0;
        case Desk::forgetMenu: leaving_.clear(); return 0;
        default: break;
    }
    return Pane::OnMessage(message, first, second);
}

}  // namespace program
