#include "outlook/program/HostFrame.h"

namespace program {

HostFrame::HostFrame(Desk& desk, standin::Window window, const char* title, const RECT& place)
    : desk_(desk), window_(window) {
    Create(title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, nullptr, place);
    menu_ = std::make_unique<Strip>(Handle(), desk.Host(), Strip::Kind::Menu);
    toolbar_ = std::make_unique<Strip>(Handle(), desk.Host(), Strip::Kind::Toolbar);
    for (Strip* strip : {menu_.get(), toolbar_.get()}) {
        strip->onPress = [this](const standin::ControlView& control) { OnPress(control); };
        strip->onHover = [this](const standin::ControlView& control) { ShowHint(control.tooltip); };
    }
}

void HostFrame::ShowBars() {
    std::vector<standin::ControlView> menu, toolbar;
    for (const standin::BarView& bar : desk_.Host().Bars(window_)) {
        if (bar.name == "Menu Bar") menu = bar.controls;
        if (bar.name == "Standard") toolbar = bar.controls;
    }
    menu_->Show(std::move(menu));
    toolbar_->Show(std::move(toolbar));
}

void HostFrame::Arrange() {
    if (!menu_ || !toolbar_) return;
    RECT inside = Client();
    for (const Strip* strip : {menu_.get(), toolbar_.get()}) {
        MoveWindow(strip->Handle(), 0, inside.top, inside.right, strip->Height(), TRUE);
        inside.top += strip->Height();
    }
    LayOut(inside);
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
    for (Strip* strip : {menu_.get(), toolbar_.get()}) {
        for (const standin::ControlView& control :
             desk_.Host().Controls(window_, strip == menu_.get() ? "Menu Bar" : "Standard")) {
            if (control.instance != current.instance) continue;
            strip->MarkOpen(current.instance);
            openMenu_ = current.instance;
            popup_ = std::make_unique<Popup>(
                Handle(), desk_.Host(), current.entries, strip->Below(current.instance),
                [this](int instance) { OnChosen(instance); }, [this](POINT point) { OnOutside(point); });
            return true;
        }
    }
    return false;
}

// With a menu of the menu bar open, the mouse opens the others by passing over them.
void HostFrame::OnOutside(POINT point) {
    const standin::ControlView* control = menu_->At(point);
    const bool another = control && control->type == 10 && control->instance != openMenu_;
    const bool ofMenuBar = menu_->Has(openMenu_);
    if (another && ofMenuBar) OpenMenu(standin::ControlView(*control));
}

// The menu may be the one that is asking: it is kept until the next message.
void HostFrame::CloseMenu() {
    if (!popup_) return;
    ShowWindow(popup_->Handle(), SW_HIDE);
    leaving_.push_back(std::move(popup_));
    PostMessageA(Handle(), Desk::forgetMenu, 0, 0);
    menu_->MarkOpen(0);
    toolbar_->MarkOpen(0);
    ShowHint("");
}

void HostFrame::OnChosen(int instance) {
    CloseMenu();
    if (instance == 0) return;
    if (GetCapture()) ReleaseCapture();
    CommitEdits();
    desk_.Click(window_, instance);
}

HostFrame::Spot HostFrame::SpotOf(int instance) const {
    const auto middle = [](HWND window, const RECT& place) {
        return Spot{window, {(place.left + place.right) / 2, (place.top + place.bottom) / 2}};
    };
    if (popup_)
        if (const auto place = popup_->PlaceOf(instance)) return middle(popup_->Handle(), *place);
    for (const Strip* strip : {menu_.get(), toolbar_.get()})
        if (const auto place = strip->PlaceOf(instance)) return middle(strip->Handle(), *place);
    return {};
}

bool HostFrame::OnAccessKey(char letter) {
    for (const Strip* strip : {menu_.get(), toolbar_.get()}) {
        const standin::ControlView* control = strip->WithAccessKey(letter);
        if (!control || !control->enabled) continue;
        OnPress(standin::ControlView(*control));
        return true;
    }
    return false;
}

bool HostFrame::OnBarKey(WPARAM key) {
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
            Fill(reinterpret_cast<HDC>(first), all, GetSysColor(COLOR_BTNFACE));
            return 1;
        }
        case WM_ACTIVATE: OnActivate(first); break;
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
