#include "platform/forms/FormWindow.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

#include "platform/Desktop.h"
#include "platform/Err.h"
#include "platform/Guard.h"
#include "platform/SystemError.h"
#include "platform/Text.h"
#include "platform/com/Com.h"

namespace platform {
namespace {

constexpr std::uint32_t systemColour = 0x80000000u;
constexpr int linesOfDroppedList = 10;
// A window's property: whose it is. Its procedure does not tell: tool tips put one of their own in front of it.
constexpr const char* ownWindow = "CvControlWindow";

struct WindowKind {
    ControlKind kind;
    const char* windowClass;
    DWORD style;
    DWORD extendedStyle;
};

constexpr DWORD drawnStatic = SS_OWNERDRAW | SS_NOTIFY;
constexpr WindowKind windowKinds[] = {
    {ControlKind::Label, "STATIC", drawnStatic, 0},
    {ControlKind::Link, "BUTTON", BS_OWNERDRAW | WS_TABSTOP, 0},
    {ControlKind::Button, "BUTTON", BS_PUSHBUTTON | BS_MULTILINE | WS_TABSTOP, 0},
    {ControlKind::CheckBox, "BUTTON", BS_AUTOCHECKBOX | BS_MULTILINE | WS_TABSTOP, 0},
    {ControlKind::OptionButton, "BUTTON", BS_AUTORADIOBUTTON | BS_MULTILINE | WS_TABSTOP, 0},
    {ControlKind::TextBox, "EDIT", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE},
    {ControlKind::ComboBox, "COMBOBOX", CBS_AUTOHSCROLL | WS_VSCROLL | WS_TABSTOP, 0},
    {ControlKind::ListBox, "LISTBOX", LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE},
    {ControlKind::Frame, "BUTTON", BS_GROUPBOX, 0},
    {ControlKind::PictureBox, "STATIC", drawnStatic, 0},
    {ControlKind::Image, "STATIC", drawnStatic, 0},
    {ControlKind::TabStrip, WC_TABCONTROLA, WS_TABSTOP, 0},
};

const WindowKind* WindowKindOf(ControlKind kind) {
    for (const WindowKind& row : windowKinds) {
        if (row.kind == kind) return &row;
    }
    return nullptr;
}

DWORD StyleOf(const Control& control, DWORD style) {
    if (control.Is(ControlStyle::NoTabStop)) style &= ~static_cast<DWORD>(WS_TABSTOP);
    if (control.Is(ControlStyle::Default) && control.Kind() == ControlKind::Button) style |= BS_DEFPUSHBUTTON;
    if (control.Kind() == ControlKind::TextBox) {
        if (control.Is(ControlStyle::ReadOnly)) style |= ES_READONLY;
        if (control.Is(ControlStyle::MultiLine)) {
            style &= ~static_cast<DWORD>(ES_AUTOHSCROLL);
            style |= ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;
            if (!control.Is(ControlStyle::ReadOnly)) style |= ES_WANTRETURN;
        }
    }
    if (control.Kind() == ControlKind::ComboBox) {
        style |= static_cast<DWORD>(control.Is(ControlStyle::FixedList) ? CBS_DROPDOWNLIST : CBS_DROPDOWN);
    }
    return style;
}

// `unread` where Windows does not tell it, which is not the same as an empty one.
std::string WindowText(HWND window, const std::string& unread) {
    SetLastError(ERROR_SUCCESS);
    const int length = GetWindowTextLengthA(window);
    if (length <= 0) return GetLastError() == ERROR_SUCCESS ? std::string() : unread;
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), length + 1)));
    return text.empty() ? unread : text;
}

// A line of a list, by the messages of its kind.
std::string LineOf(HWND list, UINT lengthMessage, UINT textMessage, LRESULT line) {
    const LRESULT length = SendMessageA(list, lengthMessage, static_cast<WPARAM>(line), 0);
    if (length < 0) return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    const LRESULT copied =
        SendMessageA(list, textMessage, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text.data()));
    text.resize(copied < 0 ? 0 : static_cast<std::size_t>(copied));
    return text;
}

MouseButton HeldButton(WPARAM keys) {
    if (keys & MK_LBUTTON) return MouseButton::Left;
    if (keys & MK_RBUTTON) return MouseButton::Right;
    if (keys & MK_MBUTTON) return MouseButton::Middle;
    return MouseButton::None;
}

// A window with a Unicode procedure keeps text of any character set; Windows 98 has none.
WNDPROC SetProcedure(HWND window, WNDPROC procedure) {
    const LONG_PTR value = reinterpret_cast<LONG_PTR>(procedure);
    return reinterpret_cast<WNDPROC>(SystemTakesUnicode() ? SetWindowLongPtrW(window, GWLP_WNDPROC, value)
                                                          : SetWindowLongPtrA(window, GWLP_WNDPROC, value));
}

LRESULT CallOriginal(WNDPROC original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return SystemTakesUnicode() ? CallWindowProcW(original, window, message, wParam, lParam)
                                : CallWindowProcA(original, window, message, wParam, lParam);
}

HWND CreateControl(const WindowKind& kind, DWORD style, HWND dialog, std::int32_t id) {
    const DWORD extended = kind.extendedStyle | WS_EX_NOPARENTNOTIFY;
    const auto menu = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id));
    if (!SystemTakesUnicode()) {
        return CreateWindowExA(extended, kind.windowClass, "", style, 0, 0, 0, 0, dialog, menu, nullptr, nullptr);
    }
    const std::string name = kind.windowClass;
    return CreateWindowExW(extended, std::wstring(name.begin(), name.end()).c_str(), L"", style, 0, 0, 0, 0, dialog,
                           menu, nullptr, nullptr);
}

std::wstring InCharSet(std::string_view text, BYTE charSet) {
    CHARSETINFO info{};
    const auto sought = static_cast<DWORD_PTR>(charSet);
    UINT codePage = CP_ACP;
    if (charSet != DEFAULT_CHARSET && charSet != SYMBOL_CHARSET &&
        TranslateCharsetInfo(reinterpret_cast<DWORD*>(sought), &info, TCI_SRCCHARSET)) {
        codePage = info.ciACP;
    }
    const auto length = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, text.data(), length, nullptr, 0)),
                      L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

int Brightness(COLORREF colour) {
    return (299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour)) / 1000;
}

// Some colour schemes have a colour for links that is not seen on a form.
COLORREF Readable(COLORREF colour, COLORREF back) {
    constexpr int leastDifference = 64;
    if (std::abs(Brightness(colour) - Brightness(back)) >= leastDifference) return colour;
    return Brightness(back) > 128 ? RGB(0, 0, 192) : RGB(160, 160, 255);
}

// A combo box takes its height from its font: the line is made as much higher as it is lower than a field. What it
// gives as its line's height need not be what it takes for it, so the outcome is looked at.
void FitComboLine(HWND combo, int height) {
    constexpr auto line = static_cast<WPARAM>(-1);
    LRESULT wanted = SendMessageA(combo, CB_GETITEMHEIGHT, line, 0);
    for (int attempt = 0; attempt < 3; ++attempt) {
        RECT area{};
        if (!GetWindowRect(combo, &area) || height <= 0 || area.bottom - area.top == height) return;
        wanted += height - (area.bottom - area.top);
        if (wanted <= 0) return;
        SendMessageA(combo, CB_SETITEMHEIGHT, line, wanted);
    }
}

// A device to measure on, with a font selected, for one scope.
class MeasuringDevice {
  public:
    MeasuringDevice(HWND window, HFONT font) : window_(window), device_(GetDC(window)) {
        earlier_ = SelectObject(device_, font ? font : GetStockObject(DEFAULT_GUI_FONT));
    }
    MeasuringDevice(const MeasuringDevice&) = delete;
    MeasuringDevice& operator=(const MeasuringDevice&) = delete;
    ~MeasuringDevice() {
        SelectObject(device_, earlier_);
        ReleaseDC(window_, device_);
    }
    [[nodiscard]] HDC Get() const { return device_; }

  private:
    HWND window_;
    HDC device_;
    HGDIOBJ earlier_;
};

}  // namespace

bool SystemTakesUnicode() { return (GetVersion() & 0x80000000u) == 0; }

COLORREF ColourOf(std::uint32_t colour) {
    if ((colour & systemColour) != 0) return GetSysColor(static_cast<int>(colour & 0xFFu));
    return colour & 0x00FFFFFFu;
}

std::string WithLineBreaks(std::string_view text) {
    std::string broken;
    broken.reserve(text.size() + 16);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') {
            broken += text[i];
            continue;
        }
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        broken += "\r\n";
    }
    return broken;
}

void SetWindowCaption(HWND window, std::string_view text, BYTE charSet) {
    const std::string broken = WithLineBreaks(text);
    if (SystemTakesUnicode()) {
        SetWindowTextW(window, InCharSet(broken, charSet).c_str());
    } else {
        SetWindowTextA(window, broken.c_str());
    }
}

void SetToolTipText(HWND toolTips, HWND dialog, HWND tool, std::string_view text, BYTE charSet) {
    std::string broken = WithLineBreaks(text);
    std::wstring wide = InCharSet(broken, charSet);
    TTTOOLINFOA narrowInfo{};
    narrowInfo.cbSize = sizeof narrowInfo;
    narrowInfo.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    narrowInfo.hwnd = dialog;
    narrowInfo.uId = reinterpret_cast<UINT_PTR>(tool);
    narrowInfo.lpszText = broken.data();
    SendMessageA(toolTips, TTM_DELTOOLA, 0, reinterpret_cast<LPARAM>(&narrowInfo));
    if (text.empty()) return;
    if (!SystemTakesUnicode()) {
        SendMessageA(toolTips, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&narrowInfo));
        return;
    }
    TTTOOLINFOW wideInfo{};
    wideInfo.cbSize = sizeof wideInfo;
    wideInfo.uFlags = narrowInfo.uFlags;
    wideInfo.hwnd = dialog;
    wideInfo.uId = narrowInfo.uId;
    wideInfo.lpszText = wide.data();
    SendMessageA(toolTips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&wideInfo));
}

LOGFONTA FontOf(const FontStyle& control, const FontStyle& form, std::int32_t dotsAnInch) {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof metrics;
    LOGFONTA font{};
    if (SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) font = metrics.lfMessageFont;
    font.lfHeight = MulDiv(font.lfHeight, dotsAnInch, DotsPerInch());
    for (const FontStyle* style : {&form, &control}) {
        if (!style->face.empty()) lstrcpynA(font.lfFaceName, style->face.c_str(), LF_FACESIZE);
        if (style->charSet != FontStyle::DefaultCharSet) font.lfCharSet = static_cast<BYTE>(style->charSet);
        if (style->points > 0) font.lfHeight = -RoundHalfEven(style->points * dotsAnInch / 72);
        if (style->bold) font.lfWeight = FW_BOLD;
        if (style->underline) font.lfUnderline = TRUE;
    }
    return font;
}

struct DrawnPicture::Content {
    ComPtr<IPicture> file;
    HICON icon = nullptr;  // shared with all programs: not ours to free
    bool grip = false;
};

DrawnPicture::DrawnPicture() = default;
DrawnPicture::~DrawnPicture() = default;

void DrawnPicture::Load(const std::string& name) {
    struct Own {
        const char* name;
        LPCSTR icon;
    };
    static const Own own[] = {{"*error", IDI_ERROR},
                              {"*question", IDI_QUESTION},
                              {"*warning", IDI_WARNING},
                              {"*information", IDI_INFORMATION},
                              {"*application", IDI_APPLICATION}};
    content_.reset();
    if (name.empty()) return;
    content_ = std::make_unique<Content>();
    content_->grip = name == "*grip";
    for (const Own& row : own) {
        if (name == row.name) content_->icon = LoadIconA(nullptr, row.icon);
    }
    if (name[0] == '*') return;
    std::wstring path = Widen(name);
    RecordStatus(OleLoadPicturePath(path.data(), nullptr, 0, 0, IID_IPicture, content_->file.PutVoid()));
}

void DrawnPicture::Draw(HDC device, const RECT& area) const {
    if (!content_) return;
    const int width = area.right - area.left, height = area.bottom - area.top;
    if (content_->icon) {
        // In the middle, as large as icons are made, so that it stays sharp.
        const bool large = GetSystemMetrics(SM_CXICON) <= std::min(width, height);
        const int size = GetSystemMetrics(large ? SM_CXICON : SM_CXSMICON);
        DrawIconEx(device, area.left + (width - size) / 2, area.top + (height - size) / 2, content_->icon, size, size,
                   0, nullptr, DI_NORMAL);
    }
    if (content_->grip) {
        RECT corner = area;
        DrawFrameControl(device, &corner, DFC_SCROLL, DFCS_SCROLLSIZEGRIP);
    }
    if (!content_->file) return;
    OLE_XSIZE_HIMETRIC pictureWidth = 0;
    OLE_YSIZE_HIMETRIC pictureHeight = 0;
    if (FAILED(content_->file->get_Width(&pictureWidth)) || FAILED(content_->file->get_Height(&pictureHeight))) return;
    content_->file->Render(device, area.left, area.top, width, height, 0, pictureHeight, pictureWidth, -pictureHeight,
                           nullptr);
}

ControlWindow* ControlWindow::Of(HWND window) {
    for (; window; window = GetAncestor(window, GA_PARENT)) {
        if (const HANDLE own = GetPropA(window, ownWindow)) return static_cast<ControlWindow*>(own);
        if ((GetWindowLongA(window, GWL_STYLE) & WS_CHILD) == 0) return nullptr;
    }
    return nullptr;
}

bool ControlWindow::Create(HWND dialog, bool startsGroup) {
    dialog_ = dialog;
    const WindowKind* kind = WindowKindOf(control_->Kind());
    if (!kind) return true;  // a timer
    DWORD style = StyleOf(*control_, kind->style) | WS_CHILD;
    if (startsGroup) style |= WS_GROUP;
    handle_ = CreateControl(*kind, style, dialog, id_);
    if (!handle_) {
        RecordLastError();
        return false;
    }
    SetWindowLongPtrA(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetPropA(handle_, ownWindow, this);
    original_ = SetProcedure(handle_, &ControlWindow::Procedure);
    return true;
}

void ControlWindow::Destroy() {
    if (!handle_) {
        if (dialog_) KillTimer(dialog_, static_cast<UINT_PTR>(id_));
        dialog_ = nullptr;
        return;
    }
    const HWND window = std::exchange(handle_, nullptr);
    RemovePropA(window, ownWindow);
    SetProcedure(window, original_);
    DestroyWindow(window);
    dialog_ = nullptr;
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (!self) return DefWindowProcA(window, message, wParam, lParam);  // whose it is cannot be asked
    const WNDPROC original = self->original_;
    if (message == WM_NCDESTROY) {
        RemovePropA(window, ownWindow);
        SetProcedure(window, original);
        self->handle_ = nullptr;
    } else if (message == WM_SETCURSOR && self->control_->Kind() == ControlKind::Link) {
        SetCursor(LoadCursorA(nullptr, IDC_HAND));
        return TRUE;
    } else if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
        const ErrorScope outer;
        bool alive = true;
        RunGuarded([&] { alive = self->HandleMouse(message, wParam, lParam); });
        if (!alive) return 0;
    }
    return CallOriginal(original, window, message, wParam, lParam);
}

// False when the window is gone, since what was pressed may unload the form.
bool ControlWindow::HandleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    Mouse mouse{HeldButton(wParam), GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const HWND window = handle_;
    const Handlers& on = control_->on;
    const auto raise = [&](const std::function<void(const Mouse&)>& handler, MouseButton button) {
        mouse.button = button;
        if (handler) handler(mouse);
    };
    const bool followed = PaintedByUs() && (on.mouseMove || on.mouseUp);
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
            if (followed) SetCapture(window);
            raise(on.mouseDown, message == WM_LBUTTONDOWN   ? MouseButton::Left
                                : message == WM_RBUTTONDOWN ? MouseButton::Right
                                                            : MouseButton::Middle);
            break;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP:
            if (followed && GetCapture() == window && mouse.button == MouseButton::None) ReleaseCapture();
            raise(on.mouseUp, message == WM_LBUTTONUP   ? MouseButton::Left
                              : message == WM_RBUTTONUP ? MouseButton::Right
                                                        : MouseButton::Middle);
            break;
        case WM_MOUSEMOVE: raise(on.mouseMove, mouse.button); break;
        default: break;
    }
    return IsWindow(window) != FALSE;
}

bool ControlWindow::PaintedByUs() const {
    const ControlKind kind = control_->Kind();
    return kind == ControlKind::Label || kind == ControlKind::PictureBox || kind == ControlKind::Image;
}

void ControlWindow::SetFont(const LOGFONTA& font) {
    if (!handle_ || !control_->Has(Property::Font)) return;
    Drawn<HFONT> made(CreateFontIndirectA(&font));
    if (!made.Get()) return RecordLastError();
    SendMessageA(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(made.Get()), TRUE);
    // A combo box takes its height anew from each font.
    if (control_->Kind() == ControlKind::ComboBox) FitComboLine(handle_, control_->Position().height);
    font_ = std::move(made);
    if (std::exchange(charSet_, font.lfCharSet) != font.lfCharSet && control_->Has(Property::Caption)) ShowCaption();
    if (PaintedByUs()) InvalidateRect(handle_, nullptr, TRUE);
}

void ControlWindow::Show(Property changed) {
    if (control_->Kind() == ControlKind::Timer) return ShowTimer();
    if (!handle_) return;
    switch (changed) {
        case Property::Caption: ShowCaption(); break;
        case Property::Picture:
            picture_.Load(control_->Picture());
            InvalidateRect(handle_, nullptr, TRUE);
            break;
        case Property::Visible: ShowWindow(handle_, control_->Visible() ? SW_SHOWNA : SW_HIDE); break;
        case Property::Enabled: EnableWindow(handle_, control_->Enabled()); break;
        case Property::Position: ShowPosition(); break;
        case Property::BackColor:
        case Property::ForeColor: InvalidateRect(handle_, nullptr, TRUE); break;
        case Property::Value: ShowValue(control_->ValueSet()); break;
        case Property::Text: ShowText(); break;
        case Property::ListIndex: ShowListIndex(); break;
        case Property::List: ShowList(); break;
        case Property::Tabs: ShowTabs(); break;
        case Property::PasswordChar:
            SendMessageA(handle_, EM_SETPASSWORDCHAR, static_cast<unsigned char>(control_->PasswordChar()), 0);
            InvalidateRect(handle_, nullptr, TRUE);
            break;
        case Property::Font:     // the form knows the rest of the font
        case Property::ToolTip:  // and has the window of the tool tips
        case Property::Interval: break;
    }
}

void ControlWindow::ShowCaption() const {
    // Windows looks for access keys in the texts of windows, however they are drawn.
    const bool verbatim = (TextFormat() & DT_NOPREFIX) != 0;
    SetWindowCaption(handle_, verbatim ? Replace(control_->Caption(), "&", "&&") : control_->Caption(), charSet_);
    InvalidateRect(handle_, nullptr, TRUE);
}

void ControlWindow::ShowTimer() const {
    const auto id = static_cast<UINT_PTR>(id_);
    if (control_->Enabled() && control_->Interval() > 0) {
        SetTimer(dialog_, id, static_cast<UINT>(control_->Interval()), nullptr);
    } else {
        KillTimer(dialog_, id);
    }
}

void ControlWindow::ShowPosition() const {
    Rect area = control_->Position();
    const bool combo = control_->Kind() == ControlKind::ComboBox;
    if (combo) area.height *= 1 + linesOfDroppedList;
    SetWindowPos(handle_, nullptr, area.left, area.top, area.width, area.height, SWP_NOZORDER | SWP_NOACTIVATE);
    if (combo) FitComboLine(handle_, control_->Position().height);
    if (PaintedByUs()) InvalidateRect(handle_, nullptr, TRUE);
}

void ControlWindow::ShowValue(bool value) const {
    SendMessageA(handle_, BM_SETCHECK, value ? BST_CHECKED : BST_UNCHECKED, 0);
}

void ControlWindow::ShowText() const {
    if (control_->Has(Property::List)) ShowListIndex();
    if (control_->Kind() == ControlKind::ListBox || control_->ListIndexSet() >= 0) return;
    if (control_->Is(ControlStyle::ReadOnly)) {
        SetWindowCaption(handle_, control_->TextSet(), charSet_);
    } else {
        SetWindowTextA(handle_, WithLineBreaks(control_->TextSet()).c_str());
    }
}

void ControlWindow::ShowListIndex() const {
    const UINT message = control_->Kind() == ControlKind::ComboBox ? CB_SETCURSEL : LB_SETCURSEL;
    SendMessageA(handle_, message, static_cast<WPARAM>(control_->ListIndexSet()), 0);
}

void ControlWindow::ShowList() const {
    const bool combo = control_->Kind() == ControlKind::ComboBox;
    SendMessageA(handle_, combo ? CB_RESETCONTENT : LB_RESETCONTENT, 0, 0);
    for (const std::string& line : control_->List()) {
        SendMessageA(handle_, combo ? CB_ADDSTRING : LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
}

void ControlWindow::ShowTabs() const {
    SendMessageA(handle_, TCM_DELETEALLITEMS, 0, 0);
    WPARAM position = 0;
    for (const TabPage& page : control_->Tabs()) {
        std::string caption = page.caption;
        TCITEMA item{};
        item.mask = TCIF_TEXT;
        item.pszText = caption.data();
        SendMessageA(handle_, TCM_INSERTITEMA, position++, reinterpret_cast<LPARAM>(&item));
    }
}

std::string ControlWindow::FetchText() const {
    if (control_->Kind() == ControlKind::ListBox) {
        return LineOf(handle_, LB_GETTEXTLEN, LB_GETTEXT, SendMessageA(handle_, LB_GETCURSEL, 0, 0));
    }
    if (control_->Kind() == ControlKind::ComboBox && choosing_) {
        return LineOf(handle_, CB_GETLBTEXTLEN, CB_GETLBTEXT, SendMessageA(handle_, CB_GETCURSEL, 0, 0));
    }
    return WindowText(handle_, control_->TextSet());
}

std::int32_t ControlWindow::FetchNumber(Property asked) const {
    if (asked == Property::Value) return SendMessageA(handle_, BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
    if (control_->Kind() == ControlKind::ListBox) {
        return static_cast<std::int32_t>(SendMessageA(handle_, LB_GETCURSEL, 0, 0));
    }
    // Windows keeps a line chosen after the text above the list was changed.
    const LRESULT line = SendMessageA(handle_, CB_GETCURSEL, 0, 0);
    if (line < 0 || choosing_) return static_cast<std::int32_t>(line);
    const bool same = LineOf(handle_, CB_GETLBTEXTLEN, CB_GETLBTEXT, line) == WindowText(handle_, {});
    return same ? static_cast<std::int32_t>(line) : -1;
}

void ControlWindow::HandleCommand(WORD notification) {
    const auto raise = [](const std::function<void()>& handler) {
        if (handler) handler();
    };
    const Handlers& on = control_->on;
    switch (control_->Kind()) {
        case ControlKind::TextBox:
            if (notification == EN_CHANGE) raise(on.change);
            break;
        case ControlKind::ComboBox:
            if (notification == CBN_EDITCHANGE) raise(on.change);
            if (notification == CBN_SELCHANGE) {
                choosing_ = true;
                RunGuarded([&] { raise(on.click); });
                choosing_ = false;
            }
            break;
        case ControlKind::ListBox:
            if (notification == LBN_SELCHANGE) raise(on.click);
            break;
        case ControlKind::Button:
        case ControlKind::Link:
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::Label:
        case ControlKind::PictureBox:
        case ControlKind::Image:
            static_assert(BN_CLICKED == STN_CLICKED);
            if (notification == BN_CLICKED) raise(on.click);
            break;
        default: break;
    }
}

UINT ControlWindow::TextFormat() const {
    UINT format = DT_EXPANDTABS | DT_EDITCONTROL;
    const bool typed = control_->Kind() == ControlKind::TextBox || control_->Kind() == ControlKind::Link;
    if (typed || control_->Is(ControlStyle::Verbatim)) format |= DT_NOPREFIX;
    return format;
}

HBRUSH ControlWindow::Colours(HDC device, std::uint32_t backColour) {
    const COLORREF back = ColourOf(backColour);
    if (control_->Has(Property::ForeColor)) {
        const COLORREF colour = control_->Enabled() ? ColourOf(control_->ForeColor()) : GetSysColor(COLOR_GRAYTEXT);
        SetTextColor(device, control_->Kind() == ControlKind::Link ? Readable(colour, back) : colour);
    }
    SetBkColor(device, back);
    if (!brush_.Get() || brushColour_ != back) brush_ = Drawn<HBRUSH>(CreateSolidBrush(back));
    brushColour_ = back;
    return brush_.Get();
}

void ControlWindow::Draw(const DRAWITEMSTRUCT& item, std::uint32_t backColour) {
    RECT area = item.rcItem;
    FillRect(item.hDC, &area, Colours(item.hDC, backColour));
    picture_.Draw(item.hDC, area);
    if (!control_->Has(Property::Caption)) return;
    const HGDIOBJ earlier = SelectObject(item.hDC, font_.Get() ? font_.Get() : GetStockObject(DEFAULT_GUI_FONT));
    const std::string text = WithLineBreaks(control_->Caption());
    SetBkMode(item.hDC, TRANSPARENT);
    if (control_->Is(ControlStyle::Centred)) {
        area.top += std::max<LONG>(0, (area.bottom - TextSize(text, area.right - area.left).height) / 2);
    }
    DrawTextA(item.hDC, text.c_str(), static_cast<int>(text.size()), &area, TextFormat() | DT_WORDBREAK);
    SelectObject(item.hDC, earlier);
    if ((item.itemState & ODS_FOCUS) != 0) {
        SetTextColor(item.hDC, 0);
        DrawFocusRect(item.hDC, &area);
    }
}

Size ControlWindow::TextSize(std::string_view text, std::int32_t width) const {
    const MeasuringDevice device(handle_, font_.Get());
    const std::string broken = WithLineBreaks(text);
    RECT area{0, 0, width, 0};
    DrawTextA(device.Get(), broken.empty() ? " " : broken.c_str(), -1, &area,
              TextFormat() | DT_CALCRECT | (width > 0 ? DT_WORDBREAK : 0u));
    return {area.right, area.bottom};
}

std::string ControlWindow::FontFace() const {
    const MeasuringDevice device(handle_, font_.Get());
    char face[LF_FACESIZE] = "";
    GetTextFaceA(device.Get(), LF_FACESIZE, face);
    return face;
}

}  // namespace platform
