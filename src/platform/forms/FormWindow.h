// platform/forms/FormWindow.h: the window of one control. Only for platform/: needs windows.h.
//
// Owns    The window, its font, its background brush and its picture, until Destroy or its end.
// Errors  What cannot be made or loaded is left out; the pending error says why.
#pragma once
#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "platform/Drawn.h"
#include "platform/forms/Control.h"

namespace platform {

// A picture of a file or one of Windows' own: "*error", "*question", "*warning", "*information",
// "*application" and "*grip".
class DrawnPicture {
  public:
    DrawnPicture();
    ~DrawnPicture();
    // Load replaces the picture, also by none; Draw stretches it over the area, or draws nothing.
    void Load(const std::string& name);
    void Draw(HDC device, const RECT& area) const;

  private:
    struct Content;
    std::unique_ptr<Content> content_;
};

[[nodiscard]] bool SystemTakesUnicode();  // Windows 98 does not
// The colour that is meant by a control's (Control.h), Windows' own ones as they are now.
[[nodiscard]] COLORREF ColourOf(std::uint32_t colour);
[[nodiscard]] std::string WithLineBreaks(std::string_view text);  // every line ends with CR LF
// Shows text of a font's character set, which may be another than the system's.
void SetWindowCaption(HWND window, std::string_view text, BYTE charSet);
// Adds the tool to the window of the tool tips with such a text, in place of the earlier one; empty: none.
void SetToolTipText(HWND toolTips, HWND dialog, HWND tool, std::string_view text, BYTE charSet);
// What a control leaves out comes from the form, then from Windows' message font.
[[nodiscard]] LOGFONTA FontOf(const FontStyle& control, const FontStyle& form, std::int32_t dotsAnInch);

class ControlWindow {
  public:
    // The control must outlive it. Nothing is made yet.
    ControlWindow(Control& control, std::int32_t id) : control_(&control), id_(id) {}
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;
    ~ControlWindow() { Destroy(); }

    // Makes the window as a child of the dialog, still empty; true for a timer, which has none. Destroy may be called
    // twice.
    bool Create(HWND dialog, bool startsGroup);
    void Destroy();
    // The control whose window, or whose window's own child, `window` is; null: another window.
    static ControlWindow* Of(HWND window);

    // Null where it is not made; the control; its number as a child of the dialog.
    [[nodiscard]] HWND Handle() const { return handle_; }
    [[nodiscard]] platform::Control& Control() const { return *control_; }
    [[nodiscard]] std::int32_t Id() const { return id_; }

    // From the control to its window, and back: what the user has made of it.
    void SetFont(const LOGFONTA& font);
    void Show(Property changed);
    void ShowValue(bool value) const;
    [[nodiscard]] std::string FetchText() const;
    [[nodiscard]] std::int32_t FetchNumber(Property asked) const;

    void HandleCommand(WORD notification);  // what a child tells its parent with WM_COMMAND
    // For a control that Windows asks its owner to draw.
    void Draw(const DRAWITEMSTRUCT& item, std::uint32_t backColour);
    HBRUSH Colours(HDC device, std::uint32_t backColour);  // sets those of the text, returns the background's
    // What `text` needs in this control's font.
    [[nodiscard]] Size TextSize(std::string_view text, std::int32_t width) const;
    [[nodiscard]] std::string FontFace() const;
    [[nodiscard]] BYTE CharSet() const { return charSet_; }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool HandleMouse(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] UINT TextFormat() const;
    [[nodiscard]] bool PaintedByUs() const;
    void ShowCaption() const;
    void ShowTimer() const;
    void ShowPosition() const;
    void ShowText() const;
    void ShowListIndex() const;
    void ShowList() const;
    void ShowTabs() const;

    platform::Control* control_;
    std::int32_t id_;
    HWND handle_ = nullptr, dialog_ = nullptr;
    WNDPROC original_ = nullptr;
    Drawn<HFONT> font_;
    BYTE charSet_ = DEFAULT_CHARSET;
    Drawn<HBRUSH> brush_;
    COLORREF brushColour_ = 0;
    DrawnPicture picture_;
    bool choosing_ = false;  // while the user chooses from a list, whose text is not yet that of the line
};

}  // namespace platform
