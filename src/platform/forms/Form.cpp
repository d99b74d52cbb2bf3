#include "platform/forms/Form.h"

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/Err.h"
#include "platform/Guard.h"
#include "platform/Module.h"
#include "platform/SystemError.h"
#include "platform/forms/FormWindow.h"
#include "platform/forms/Resolution.h"

namespace platform {
namespace {

constexpr std::int32_t firstControlId = 100;
constexpr UINT activatedMessage = WM_APP + 1;  // posted, so that the focus is settled when it arrives
constexpr int toolTipWidth = 400;
constexpr std::uint32_t faceColour = 0x8000000Fu;  // COLOR_BTNFACE

bool BelongsToThisThread(HWND window) { return GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId(); }

struct TopWindow {
    HWND found = nullptr;
};

BOOL CALLBACK TakeTopWindow(HWND window, LPARAM parameter) {
    RECT area{};
    if (!IsWindowVisible(window) || !IsWindowEnabled(window) || !GetWindowRect(window, &area)) return TRUE;
    if ((GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) != 0 || IsRectEmpty(&area)) return TRUE;
    reinterpret_cast<TopWindow*>(parameter)->found = window;
    return FALSE;
}

// The other windows of the thread, disabled while a modal form is shown.
class DisabledWindows {
  public:
    void Disable(HWND except) {
        const ErrorScope outer;
        except_ = except;
        EnumThreadWindows(GetCurrentThreadId(), &DisabledWindows::DisableOne, reinterpret_cast<LPARAM>(this));
    }
    void Restore() {
        for (const HWND window : std::exchange(windows_, {})) {
            if (IsWindow(window)) EnableWindow(window, TRUE);
        }
    }

  private:
    static BOOL CALLBACK DisableOne(HWND window, LPARAM parameter) {
        auto* const self = reinterpret_cast<DisabledWindows*>(parameter);
        if (window == self->except_ || GetWindow(window, GW_OWNER) == self->except_) return TRUE;
        if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
        RunGuarded([&] {
            self->windows_.push_back(window);
            EnableWindow(window, FALSE);
        });
        return TRUE;
    }

    HWND except_ = nullptr;
    std::vector<HWND> windows_;
};

// A dialog without controls: the form makes them itself.
struct EmptyTemplate {
    DLGTEMPLATE head{};
    WORD menu = 0, windowClass = 0, title = 0;
};

DWORD WindowStyle(FormStyle style) {
    DWORD windowStyle = WS_POPUP | DS_3DLOOK;
    windowStyle |= style.titleBar ? WS_CAPTION | WS_SYSMENU | DS_MODALFRAME : WS_DLGFRAME;
    if (style.resizable) windowStyle |= WS_THICKFRAME;
    return windowStyle;
}

}  // namespace

class Form::Windows final : public ControlPeer {
  public:
    Windows(Form& form, FormStyle style) : form_(form), style_(style) {}
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;
    ~Windows() { Destroy(); }

    bool Create(HWND owner);
    void Destroy();
    [[nodiscard]] HWND Dialog() const { return dialog_; }
    [[nodiscard]] bool Shown() const { return shown_; }
    bool Open(bool modal);
    void Close();
    void Pump();

    void Show(const Control& control, Property changed) override;
    [[nodiscard]] bool IsMade(const Control& control) const override { return Of(control).Handle() != nullptr; }
    [[nodiscard]] std::string FetchText(const Control& control) const override { return Of(control).FetchText(); }
    [[nodiscard]] std::int32_t FetchNumber(const Control& control, Property asked) const override {
        return Of(control).FetchNumber(asked);
    }
    void TakeFocus(const Control& control) override;

    [[nodiscard]] ControlWindow& Of(const Control& control) const;
    [[nodiscard]] ControlWindow* FocusedControl() const;
    [[nodiscard]] std::int32_t DotsAnInch() const { return dotsAnInch_; }
    void ShowFonts();
    void ShowCaption();
    void SetBackColor(std::uint32_t colour);
    void SetDefaultButton(const Control& button);

  private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR HandleCommand(WORD id, WORD notification);
    INT_PTR HandleColour(HDC device, HWND window);
    void HandleTimer(std::int32_t id);
    void HandleResolution(std::int32_t dots, const RECT& place);
    bool HandleKey(const MSG& message);
    void PaintBackground(HDC device);
    void Forget();

    void CreateControls();
    void ShowAll(const Control& control);
    void ShowToolTip(const Control& control);
    void GiveFocus(HWND window);
    void EmptyGroupOf(const ControlWindow& option) const;
    [[nodiscard]] bool Owns(HWND window) const { return window == dialog_ || IsChild(dialog_, window); }
    [[nodiscard]] ControlWindow* ById(std::int32_t id) const;
    [[nodiscard]] std::uint32_t BackColorOf(const Control& control) const;

    Form& form_;
    FormStyle style_;
    std::optional<KeepLoaded> keepLoaded_;  // while there is a window, whose procedure Windows calls
    HWND dialog_ = nullptr, toolTips_ = nullptr;
    HWND wantedFocus_ = nullptr;  // asked for before the form is shown
    HWND activeBefore_ = nullptr, focusBefore_ = nullptr;
    std::vector<std::unique_ptr<ControlWindow>> controls_;
    DisabledWindows disabled_;
    std::uint32_t backColour_ = faceColour;
    std::int32_t dotsAnInch_ = designDotsAnInch;
    bool shown_ = false, modal_ = false;
};

// --- making and ending the windows ------------------------------------------------------------------------------

bool Form::Windows::Create(HWND owner) {
    if (dialog_) return true;
    INITCOMMONCONTROLSEX common{sizeof common, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&common);
    EmptyTemplate empty;
    empty.head.style = WindowStyle(style_);
    const auto create = SystemTakesUnicode() ? &CreateDialogIndirectParamW : &CreateDialogIndirectParamA;
    if (!create(nullptr, &empty.head, owner, &Windows::Procedure, reinterpret_cast<LPARAM>(this))) {
        RecordLastError();
        return false;
    }
    keepLoaded_.emplace();
    dotsAnInch_ = DotsAnInchOf(dialog_);
    CreateControls();
    return true;
}

void Form::Windows::CreateControls() {
    std::int32_t id = firstControlId;
    for (Control& control : form_.Controls()) controls_.push_back(std::make_unique<ControlWindow>(control, id++));
    const Control* before = nullptr;
    for (const auto& window : controls_) {
        const Control& control = window->Control();
        // Neighbours of one kind are a group, in which the arrow keys move.
        window->Create(dialog_, !before || before->Kind() != control.Kind() || control.Is(ControlStyle::GroupStart));
        before = &control;
    }
    ShowFonts();
    for (const auto& window : controls_) ShowAll(window->Control());
    form_.Attach(this);
    for (const auto& window : controls_) {
        if (window->Control().Is(ControlStyle::Default)) SetDefaultButton(window->Control());
    }
}

void Form::Windows::ShowAll(const Control& control) {
    for (const Property property :
         {Property::Position, Property::Caption, Property::Picture, Property::List, Property::Text, Property::Value,
          Property::PasswordChar, Property::Tabs, Property::ToolTip, Property::Enabled, Property::Visible}) {
        if (control.Has(property)) Show(control, property);
    }
}

void Form::Windows::Destroy() {
    if (dialog_) DestroyWindow(dialog_);
}

// The dialog is being destroyed, by the form or because its owner went.
void Form::Windows::Forget() {
    Attempt([this] { form_.OnUnload(); });  // whatever becomes of it, the windows go
    form_.Attach(nullptr);
    shown_ = false;
    disabled_.Restore();
    controls_.clear();
    if (const HWND toolTips = std::exchange(toolTips_, nullptr)) DestroyWindow(toolTips);
    dialog_ = wantedFocus_ = nullptr;
    keepLoaded_.reset();
    if (modal_) PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
}

// --- showing and hiding -----------------------------------------------------------------------------------------

bool Form::Windows::Open(bool modal) {
    if (!dialog_ || shown_) return false;
    activeBefore_ = GetActiveWindow();
    focusBefore_ = GetFocus();
    if (modal) {
        if (const HWND capturing = GetCapture()) SendMessageA(capturing, WM_CANCELMODE, 0, 0);
        disabled_.Disable(dialog_);
    }
    modal_ = modal;
    shown_ = true;
    ShowWindow(dialog_, SW_SHOW);
    if (wantedFocus_) GiveFocus(wantedFocus_);
    wantedFocus_ = nullptr;
    return true;
}

// The other windows are enabled first: Windows activates none that is disabled, but another program.
void Form::Windows::Close() {
    if (!shown_) return;
    shown_ = false;
    disabled_.Restore();
    if (GetActiveWindow() == dialog_ && IsWindow(activeBefore_)) SetActiveWindow(activeBefore_);
    ShowWindow(dialog_, SW_HIDE);
    if (modal_) PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
}

void Form::Windows::Pump() {
    const ErrorScope outer;
    MSG message{};
    while (shown_) {
        const BOOL received = GetMessageA(&message, nullptr, 0, 0);
        if (received <= 0) {
            Close();
            if (received == 0) PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        if (Owns(message.hwnd) && (HandleKey(message) || !dialog_ || IsDialogMessageA(dialog_, &message))) continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    if (focusBefore_ && IsWindow(focusBefore_) && BelongsToThisThread(focusBefore_)) SetFocus(focusBefore_);
}

void Form::Windows::GiveFocus(HWND window) {
    SendMessageA(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
}

void Form::Windows::TakeFocus(const Control& control) {
    const HWND window = Of(control).Handle();
    if (!shown_) {
        wantedFocus_ = window;
    } else if (window) {
        GiveFocus(window);
    }
}

// --- what controls tell -----------------------------------------------------------------------------------------

INT_PTR CALLBACK Form::Windows::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrA(dialog, GWLP_USERDATA, lParam);
        reinterpret_cast<Windows*>(lParam)->dialog_ = dialog;
        return FALSE;
    }
    auto* const self = reinterpret_cast<Windows*>(GetWindowLongPtrA(dialog, GWLP_USERDATA));
    if (!self) return FALSE;
    INT_PTR handled = FALSE;
    const ErrorScope outer;
    RunGuarded([&] { handled = self->Handle(message, wParam, lParam); });
    return handled;
}

INT_PTR Form::Windows::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND: return HandleCommand(LOWORD(wParam), HIWORD(wParam));
        case WM_CLOSE: form_.OnClose(); return TRUE;
        case WM_TIMER: HandleTimer(static_cast<std::int32_t>(wParam)); return TRUE;
        case WM_SIZE: form_.OnResize(); return FALSE;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) {
                form_.OnDeactivate();
            } else {
                PostMessageA(dialog_, activatedMessage, 0, 0);
            }
            return FALSE;
        case activatedMessage:
            if (shown_ && GetActiveWindow() == dialog_) form_.OnActivate();
            return TRUE;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            ControlWindow* const window = ById(static_cast<std::int32_t>(wParam));
            if (window) window->Draw(item, BackColorOf(window->Control()));
            return window != nullptr;
        }
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORBTN: return HandleColour(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        case WM_ERASEBKGND:
            PaintBackground(reinterpret_cast<HDC>(wParam));
            SetWindowLongPtrA(dialog_, DWLP_MSGRESULT, TRUE);
            return TRUE;
        case resolutionChanged: HandleResolution(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam)); return TRUE;
        case WM_DESTROY: Forget(); return FALSE;
        default: return FALSE;
    }
}

INT_PTR Form::Windows::HandleCommand(WORD id, WORD notification) {
    if (id == IDCANCEL) {
        form_.OnClose();
        return TRUE;
    }
    ControlWindow* const window = ById(id);
    if (!window) return FALSE;
    window->HandleCommand(notification);
    return TRUE;
}

void Form::Windows::HandleTimer(std::int32_t id) {
    const ControlWindow* const window = ById(id);
    if (window && window->Control().on.tick) window->Control().on.tick();
}

// The form came to a screen of another resolution; `place` is where it looks as large as before.
void Form::Windows::HandleResolution(std::int32_t dots, const RECT& place) {
    const std::int32_t before = std::exchange(dotsAnInch_, dots);
    ShowFonts();
    for (const auto& window : controls_) {
        Control& control = window->Control();
        if (control.Has(Property::Position)) control.SetPosition(Rescaled(control.Position(), before, dots));
    }
    form_.SetPosition({place.left, place.top, place.right - place.left, place.bottom - place.top});
}

// A key before Windows' dialog keys see it. True: used up.
bool Form::Windows::HandleKey(const MSG& message) {
    if (message.message != WM_KEYDOWN && message.message != WM_CHAR) return false;
    bool used = false;
    RunGuarded([&] {
        const bool pressed = message.message == WM_KEYDOWN;
        const auto key = static_cast<std::int32_t>(message.wParam);
        if (pressed && form_.OnKeyDown(key)) {
            used = true;
            return;
        }
        const ControlWindow* const window = dialog_ ? FocusedControl() : nullptr;
        if (!window) return;
        const Handlers& on = window->Control().on;
        if (pressed && on.keyDown) used = on.keyDown(key);
        if (!pressed && on.keyPress) used = on.keyPress(static_cast<char>(message.wParam));
        if (pressed && !used && key == VK_RETURN && window->Control().Kind() == ControlKind::Link && on.click) {
            on.click();
            used = true;
        }
    });
    return used;
}

// --- colours, fonts, tool tips ----------------------------------------------------------------------------------

INT_PTR Form::Windows::HandleColour(HDC device, HWND window) {
    ControlWindow* const control = ControlWindow::Of(window);
    if (!control) return FALSE;
    return reinterpret_cast<INT_PTR>(control->Colours(device, BackColorOf(control->Control())));
}

// A control that has the colour of a plain form takes that of the frame around it, or of the form.
std::uint32_t Form::Windows::BackColorOf(const Control& control) const {
    if (control.BackColor() != faceColour) return control.BackColor();
    const Rect inner = control.Position();
    for (const auto& window : controls_) {
        const Control& frame = window->Control();
        if (&frame == &control || frame.BackColor() == faceColour || !frame.Visible()) continue;
        if (frame.Kind() != ControlKind::Frame && frame.Kind() != ControlKind::PictureBox) continue;
        const Rect outer = frame.Position();
        if (inner.left >= outer.left && inner.top >= outer.top && inner.Right() <= outer.Right() &&
            inner.Bottom() <= outer.Bottom()) {
            return frame.BackColor();
        }
    }
    return backColour_;
}

void Form::Windows::PaintBackground(HDC device) {
    RECT all{};
    GetClientRect(dialog_, &all);
    const Drawn<HBRUSH> brush(CreateSolidBrush(ColourOf(backColour_)));
    FillRect(device, &all, brush.Get());
    for (const auto& window : controls_) {
        const Control& frame = window->Control();
        if (frame.Kind() != ControlKind::Frame || !frame.Visible() || frame.BackColor() == faceColour) continue;
        const Rect area = frame.Position();
        const RECT box{area.left, area.top, area.Right(), area.Bottom()};
        const Drawn<HBRUSH> frameBrush(CreateSolidBrush(ColourOf(frame.BackColor())));
        FillRect(device, &box, frameBrush.Get());
    }
}

void Form::Windows::SetBackColor(std::uint32_t colour) {
    backColour_ = colour;
    if (dialog_) RedrawWindow(dialog_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void Form::Windows::ShowFonts() {
    for (const auto& window : controls_) {
        window->SetFont(FontOf(window->Control().Font(), form_.Font(), dotsAnInch_));
    }
    ShowCaption();
}

void Form::Windows::ShowCaption() {
    SetWindowCaption(dialog_, form_.Caption(), FontOf({}, form_.Font(), dotsAnInch_).lfCharSet);
}

void Form::Windows::ShowToolTip(const Control& control) {
    const HWND window = Of(control).Handle();
    if (!window || (!toolTips_ && control.ToolTip().empty())) return;
    if (!toolTips_) {
        toolTips_ = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, "", WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0,
                                    0, 0, dialog_, nullptr, nullptr, nullptr);
        SendMessageA(toolTips_, TTM_SETMAXTIPWIDTH, 0, form_.Scaled(toolTipWidth));
    }
    SetToolTipText(toolTips_, dialog_, window, control.ToolTip(), Of(control).CharSet());
}

// --- controls ---------------------------------------------------------------------------------------------------

void Form::Windows::Show(const Control& control, Property changed) {
    ControlWindow& window = Of(control);
    if (changed == Property::ToolTip) return ShowToolTip(control);
    if (changed == Property::Font) return window.SetFont(FontOf(control.Font(), form_.Font(), dotsAnInch_));
    const bool leaves =
        (changed == Property::Visible && !control.Visible()) || (changed == Property::Enabled && !control.Enabled());
    if (leaves && shown_ && FocusedControl() == &window) SendMessageA(dialog_, WM_NEXTDLGCTL, 0, FALSE);
    if (changed == Property::Value && control.Kind() == ControlKind::OptionButton && control.ValueSet()) {
        EmptyGroupOf(window);
    }
    window.Show(changed);
    if (control.Kind() == ControlKind::Frame) InvalidateRect(dialog_, nullptr, TRUE);
}

// Of the options of a group one is chosen at most.
void Form::Windows::EmptyGroupOf(const ControlWindow& option) const {
    const auto startsGroup = [](const Control& control) {
        return control.Kind() != ControlKind::OptionButton || control.Is(ControlStyle::GroupStart);
    };
    std::size_t first = static_cast<std::size_t>(option.Id() - firstControlId);
    while (first > 0 && !startsGroup(controls_[first]->Control())) --first;
    if (controls_[first]->Control().Kind() != ControlKind::OptionButton) ++first;
    for (std::size_t i = first; i < controls_.size(); ++i) {
        if (i > first && startsGroup(controls_[i]->Control())) break;
        controls_[i]->ShowValue(false);
    }
}

ControlWindow& Form::Windows::Of(const Control& control) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [&](const auto& window) { return &window->Control() == &control; });
    return **found;  // a control has this peer only while it stands here
}

ControlWindow* Form::Windows::ById(std::int32_t id) const {
    const auto found =
        std::find_if(controls_.begin(), controls_.end(), [&](const auto& window) { return window->Id() == id; });
    return found == controls_.end() ? nullptr : found->get();
}

ControlWindow* Form::Windows::FocusedControl() const {
    const HWND focus = GetFocus();
    return focus && IsChild(dialog_, focus) ? ControlWindow::Of(focus) : nullptr;
}

void Form::Windows::SetDefaultButton(const Control& button) {
    for (const auto& window : controls_) {
        if (window->Control().Kind() != ControlKind::Button) continue;
        const bool chosen = &window->Control() == &button;
        SendMessageA(window->Handle(), BM_SETSTYLE, chosen ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
        if (chosen) SendMessageA(dialog_, DM_SETDEFID, static_cast<WPARAM>(window->Id()), 0);
    }
}

// --- the form ---------------------------------------------------------------------------------------------------

Form::Form(std::string_view name, std::span<const ControlSpec> controls, FormStyle style)
    : FormView(name, controls), windows_(std::make_unique<Windows>(*this, style)) {}

Form::~Form() { windows_->Destroy(); }

bool Form::Load(WindowHandle owner) {
    if (IsLoaded()) return true;
    try {
        if (!windows_->Create(owner)) return false;
        OnLoad();
    } catch (...) {  // a form that is half made would keep the library loaded, and be shown as it is the next time
        windows_->Destroy();
        throw;
    }
    return IsLoaded();
}

void Form::Unload() {
    Hide();
    windows_->Destroy();
}

bool Form::IsLoaded() const { return windows_->Dialog() != nullptr; }
bool Form::Visible() const { return windows_->Shown(); }
WindowHandle Form::Window() const { return windows_->Dialog(); }
std::int32_t Form::WindowNumber() const { return static_cast<std::int32_t>(reinterpret_cast<LONG_PTR>(Window())); }
WindowHandle Form::Window(const Control& control) const {
    return IsLoaded() ? windows_->Of(control).Handle() : nullptr;
}

bool Form::ShowModal() {
    const KeepLoaded untilItReturns;
    if (!Load() || !windows_->Open(true)) return false;
    windows_->Pump();
    return true;
}

bool Form::Show() { return Load() && windows_->Open(false); }
void Form::Hide() { windows_->Close(); }

void Form::BringToFront() {
    if (IsLoaded()) SetWindowPos(Window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

Rect Form::Position() const {
    RECT area{};
    if (IsLoaded()) GetWindowRect(Window(), &area);
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

void Form::SetPosition(const Rect& position) {
    if (!IsLoaded()) return;
    SetWindowPos(Window(), nullptr, position.left, position.top, position.width, position.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::SetInsideSize(Size inside) {
    if (!IsLoaded()) return;
    RECT area{0, 0, inside.width, inside.height};
    AdjustWindowRectEx(&area, static_cast<DWORD>(GetWindowLongA(Window(), GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongA(Window(), GWL_EXSTYLE)));
    Size whole{area.right - area.left, area.bottom - area.top};
    const auto take = [&] {
        SetWindowPos(Window(), nullptr, 0, 0, whole.width, whole.height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    };
    take();
    // The border may have another width on the screen that the form is on.
    const Size got = InsideSize();
    if (got == inside || IsIconic(Window())) return;
    whole = {whole.width + inside.width - got.width, whole.height + inside.height - got.height};
    take();
}

Size Form::InsideSize() const {
    RECT area{};
    if (IsLoaded()) GetClientRect(Window(), &area);
    return {area.right, area.bottom};
}

Rect Form::WorkArea() const {
    const HWND owner = IsLoaded() ? GetWindow(Window(), GW_OWNER) : nullptr;
    const HWND shown = owner && !Visible() ? owner : Window();
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoA(MonitorFromWindow(shown, MONITOR_DEFAULTTOPRIMARY), &monitor);
    const RECT& area = monitor.rcWork;
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

void Form::Center() {
    const HWND owner = IsLoaded() ? GetWindow(Window(), GW_OWNER) : nullptr;
    Rect form = Position();
    const Rect screen = WorkArea();
    Rect around = screen;
    RECT area{};
    if (owner && IsWindowVisible(owner) && !IsIconic(owner) && GetWindowRect(owner, &area)) {
        around = {area.left, area.top, area.right - area.left, area.bottom - area.top};
    }
    form.left = around.left + (around.width - form.width) / 2;
    form.top = around.top + (around.height - form.height) / 2;
    form.left = std::max(screen.left, std::min(form.left, screen.Right() - form.width));
    form.top = std::max(screen.top, std::min(form.top, screen.Bottom() - form.height));
    SetPosition(form);
}

std::int32_t Form::Scaled(std::int32_t lengthAt96) const {
    return platform::Scaled(lengthAt96, windows_->DotsAnInch());
}

Size Form::TextSize(const Control& control, std::string_view text, std::int32_t width) const {
    return IsLoaded() ? windows_->Of(control).TextSize(text, width) : Size{};
}

std::string Form::FontFace(const Control& control) const {
    return IsLoaded() ? windows_->Of(control).FontFace() : std::string();
}

void Form::SetBackColor(std::uint32_t colour) { windows_->SetBackColor(colour); }

void Form::SetDefaultButton(Control& button) {
    if (IsLoaded()) windows_->SetDefaultButton(button);
}

Control* Form::Focus() {
    const ControlWindow* const window = IsLoaded() ? windows_->FocusedControl() : nullptr;
    return window ? &window->Control() : nullptr;
}

void Form::SelectText(const Control& textBox, std::int32_t first, std::int32_t end) {
    if (IsLoaded()) {
        SendMessageA(Window(textBox), EM_SETSEL, static_cast<WPARAM>(first), static_cast<LPARAM>(end));
        SendMessageA(Window(textBox), EM_SCROLLCARET, 0, 0);
    }
}

void Form::OnClose() {
    for (const Control& control : Controls()) {
        if (!control.Is(ControlStyle::Cancel) || !control.Visible() || !control.Enabled()) continue;
        if (control.on.click) control.on.click();
        return;
    }
    Hide();
}

void Form::CaptionChanged() {
    if (IsLoaded()) windows_->ShowCaption();
}

void Form::FontChanged() {
    if (IsLoaded()) windows_->ShowFonts();
}

WindowHandle FrontWindow() {
    HWND front = GetActiveWindow();
    const HWND foreground = GetForegroundWindow();
    if (!front && foreground && BelongsToThisThread(foreground)) front = foreground;
    if (front) front = GetLastActivePopup(GetAncestor(front, GA_ROOT));
    if (front && IsWindowVisible(front)) return front;
    TopWindow top;
    EnumThreadWindows(GetCurrentThreadId(), &TakeTopWindow, reinterpret_cast<LPARAM>(&top));
    return top.found;
}

}  // namespace platform
