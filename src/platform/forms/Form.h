// platform/forms/Form.h: a form with windows: a real dialog window with a real window for each control.
//
// Shapes   Positions and sizes are pixels; `Scaled` turns a length meant for 96 dots an inch into pixels.
// Keys     A key goes to the form first (OnKeyDown), then to the handlers of the control that has the focus, then
//          it does what it does in any dialog of Windows: Tab and arrows move, Enter and Escape press the buttons of
//          those styles, an access key presses its button.
// Modal    While a modal form is shown, the other windows of the thread are disabled; afterwards they are as before
//          and the focus is where it was. A quit message that arrives meanwhile ends the form and is passed on.
// Errors   Every event is guarded: nothing leaves it. A window that cannot be made is recorded as the pending error.
// Owns     Its windows, fonts, brushes and pictures, until Unload or its end. It may not end while it handles an event.
//          The library stays loaded while there are windows.
// Effects  Shows windows; modal forms pump messages.
#pragma once
#include <memory>

#include "platform/forms/FormView.h"

struct HWND__;

namespace platform {

using WindowHandle = HWND__*;

// The window that a modal form or message belongs on: the active window of this thread, else the one of this
// program that is in front, else the topmost visible one of this thread; null where there is none.
[[nodiscard]] WindowHandle FrontWindow();

struct FormStyle {
    bool titleBar = true;
    bool resizable = false;
};

class Form : public FormView {
  public:
    // `controls` in tab order, as FormView takes them; no window is made yet.
    Form(std::string_view name, std::span<const ControlSpec> controls, FormStyle style = {});
    ~Form() override;

    // Makes the windows, hidden, owned by `owner`, and raises OnLoad. Loading twice is harmless; an exception leaves the
    // form unloaded.
    bool Load(WindowHandle owner);
    bool Load() { return Load(FrontWindow()); }
    void Unload();  // raises OnUnload
    [[nodiscard]] bool IsLoaded() const;
    [[nodiscard]] bool Visible() const;
    [[nodiscard]] WindowHandle Window() const;
    [[nodiscard]] std::int32_t WindowNumber() const;  // the handle as a number
    [[nodiscard]] WindowHandle Window(const Control& control) const;

    // Returns once the form is hidden or unloaded; false when it could not be shown. Loads it if need be.
    bool ShowModal();
    bool Show();
    void Hide();
    void BringToFront();

    [[nodiscard]] Rect Position() const;  // on the screen, with its border
    // On the screen, with its border; taken as it is. Nothing happens before Load.
    void SetPosition(const Rect& position);
    void SetInsideSize(Size inside);  // the border is added; the form stays where it is
    // Without its border and title bar.
    [[nodiscard]] Size InsideSize() const;
    void Center();                        // over its owner, wholly on the screen
    [[nodiscard]] Rect WorkArea() const;  // of the screen that the form or its owner is on
    // That length at the resolution of the screen that the form is on.
    [[nodiscard]] std::int32_t Scaled(std::int32_t lengthAt96) const;
    // What `text` needs in the font of `control`, broken into lines at `width` (0: not broken).
    [[nodiscard]] Size TextSize(const Control& control, std::string_view text, std::int32_t width = 0) const;

    // A colour of Control.h.
    void SetBackColor(std::uint32_t colour);
    // The button that Enter presses while no other one has the focus.
    void SetDefaultButton(Control& button);
    [[nodiscard]] Control* Focus();                                                 // the control that has it
    void SelectText(const Control& textBox, std::int32_t first, std::int32_t end);  // 0, -1: all of it
    [[nodiscard]] std::string FontFace(const Control& control) const;               // the one that Windows found for it

  protected:
    virtual void OnLoad() {}
    virtual void OnUnload() {}
    virtual void OnActivate() {}
    virtual void OnDeactivate() {}
    virtual void OnResize() {}
    virtual bool OnKeyDown(std::int32_t) { return false; }
    virtual void OnClose();  // Escape, Alt+F4 and the close button: clicks the Cancel button if there is one in use

  private:
    void CaptionChanged() override;
    void FontChanged() override;
    class Windows;
    std::unique_ptr<Windows> windows_;
};

}  // namespace platform
