// platform/forms/Control.h: one named control of a form: what it is, what it has, and what it does when used.
//
// Shapes   Text is ANSI. Positions are pixels of the form's inside. Colours are 0x00BBGGRR, or 0x800000NN for
//          Windows' own colour number NN. A line of text ends with CR, LF or CR LF.
// Errors   Setting a property that this kind of control lacks changes nothing, returns false and leaves
//          PropertyNotSupported pending; reading one returns the neutral value. Callers may ignore both.
// Windows  While its form has windows, a control hands every change on to its own (ControlPeer) and asks it for what
//          the user may have changed. Without them it keeps what it was told, so rules over forms need no windows.
#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"

namespace platform {

inline constexpr std::int32_t PropertyNotSupported = 438;

enum class ControlKind : std::uint8_t {
    Label,
    Link,
    Button,
    CheckBox,
    OptionButton,
    TextBox,
    ComboBox,
    ListBox,
    Frame,
    PictureBox,
    Image,
    TabStrip,
    Timer,
};

enum class Property : std::uint8_t {
    Caption,
    ToolTip,
    Picture,
    Font,
    Visible,
    Enabled,
    Value,
    Text,
    ListIndex,
    BackColor,
    ForeColor,
    Position,
    List,
    PasswordChar,
    Tabs,
    Interval,
};

// Whether that kind of control has the property at all.
[[nodiscard]] bool Has(ControlKind kind, Property property);

// What is left out here comes from the form, and what the form leaves out from Windows' message font.
struct FontStyle {
    static constexpr std::int32_t DefaultCharSet = 1;
    std::string face{};
    double points = 0;
    std::int32_t charSet = DefaultCharSet;
    bool bold = false;
    bool underline = false;
    bool operator==(const FontStyle&) const = default;
};

enum class MouseButton : std::uint8_t { None, Left, Right, Middle };

struct Mouse {
    MouseButton button = MouseButton::None;  // pressed or let go; while moving, the one that is held
    std::int32_t x = 0, y = 0;               // within the control
};

// What the form does when the control is used; any may be left empty.
struct Handlers {
    std::function<void()> click, change, tick;
    std::function<bool(std::int32_t key)> keyDown;  // a virtual key code; true: used up
    std::function<bool(char letter)> keyPress;      // true: used up
    std::function<void(const Mouse&)> mouseDown, mouseMove, mouseUp;
};

struct TabPage {
    std::string caption, toolTip;
};

namespace ControlStyle {
inline constexpr std::uint32_t Hidden = 0x001;
inline constexpr std::uint32_t NoTabStop = 0x002;
inline constexpr std::uint32_t MultiLine = 0x004;
inline constexpr std::uint32_t ReadOnly = 0x008;
inline constexpr std::uint32_t Verbatim = 0x010;    // a caption in which "&" is just that
inline constexpr std::uint32_t FixedList = 0x020;   // a combo box without typing
inline constexpr std::uint32_t GroupStart = 0x040;  // where the arrow keys stop
inline constexpr std::uint32_t Default = 0x080;     // the button of the Enter key
inline constexpr std::uint32_t Cancel = 0x100;      // the button of the Escape key
inline constexpr std::uint32_t Centred = 0x200;     // a label's text stands in the middle of its height
}  // namespace ControlStyle

// A line of a form's table. A name may stand there several times with different indices: a control array.
struct ControlSpec {
    static constexpr std::int32_t NoIndex = -1;
    const char* name = "";
    ControlKind kind = ControlKind::Label;
    std::uint32_t style = 0;
    const char* caption = "";  // until a text is set
    std::int32_t index = NoIndex;
};

class Control;

// What shows a control.
class ControlPeer {
  public:
    // Called after each change, and for what the user may have changed meanwhile.
    virtual void Show(const Control& control, Property changed) = 0;
    [[nodiscard]] virtual std::string FetchText(const Control& control) const = 0;
    // False for a control whose window could not be made: it keeps what it was given.
    [[nodiscard]] virtual bool IsMade(const Control&) const { return true; }
    [[nodiscard]] virtual std::int32_t FetchNumber(const Control& control, Property asked) const = 0;
    virtual void TakeFocus(const Control& control) = 0;

  protected:
    ~ControlPeer() = default;
};

class Control {
  public:
    // With the caption and style of the table, and the colours and the font of its kind.
    explicit Control(const ControlSpec& spec);

    // As the form's table has them.
    [[nodiscard]] std::string_view Name() const { return spec_.name; }
    [[nodiscard]] std::int32_t Index() const { return spec_.index; }
    [[nodiscard]] ControlKind Kind() const { return spec_.kind; }
    [[nodiscard]] bool Has(Property property) const { return platform::Has(spec_.kind, property); }
    [[nodiscard]] bool Is(std::uint32_t controlStyle) const { return (spec_.style & controlStyle) != 0; }

    // As last set, else as the table has it.
    [[nodiscard]] const std::string& Caption() const { return caption_; }
    [[nodiscard]] const std::string& ToolTip() const { return toolTip_; }
    [[nodiscard]] const std::string& Picture() const { return picture_; }
    [[nodiscard]] const FontStyle& Font() const { return font_; }
    [[nodiscard]] bool Visible() const { return visible_; }
    [[nodiscard]] bool Enabled() const { return enabled_; }
    [[nodiscard]] std::uint32_t BackColor() const { return backColour_; }
    [[nodiscard]] std::uint32_t ForeColor() const { return foreColour_; }
    [[nodiscard]] Rect Position() const { return position_; }
    [[nodiscard]] char PasswordChar() const { return passwordChar_; }
    [[nodiscard]] std::int32_t Interval() const { return interval_; }
    [[nodiscard]] const std::vector<std::string>& List() const { return list_; }
    [[nodiscard]] const std::vector<TabPage>& Tabs() const { return tabs_; }
    // What the user may have changed meanwhile.
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] bool Value() const;              // a check box that is ticked, an option that is chosen
    [[nodiscard]] std::int32_t ListIndex() const;  // from 0; -1: none
    // As last set by the form's own code, for what shows the control.
    [[nodiscard]] const std::string& TextSet() const { return text_; }
    [[nodiscard]] bool ValueSet() const { return value_; }
    [[nodiscard]] std::int32_t ListIndexSet() const { return listIndex_; }

    // Each keeps the new value and shows it where there is a window; false where this kind has no such property.
    bool SetCaption(std::string_view caption);
    void ShowDesignCaption();  // the one of the form's table, if the control has one
    bool SetToolTip(std::string_view toolTip);
    bool SetPicture(std::string_view file);  // bitmap, icon, metafile, GIF or JPEG; empty, or a file that cannot be
                                             // read: none
    bool SetFont(const FontStyle& font);
    bool SetFontName(std::string_view face);
    bool SetFontCharSet(std::int32_t charSet);
    bool SetVisible(bool visible);
    bool SetEnabled(bool enabled);  // of a timer: whether it runs
    bool SetValue(bool value);
    bool SetText(std::string_view text);  // of a combo box: its line, whether its list has it or not
    bool SetListIndex(std::int32_t index);
    bool SetBackColor(std::uint32_t colour);
    bool SetForeColor(std::uint32_t colour);
    bool SetPosition(const Rect& position);
    bool SetPasswordChar(char letter);  // 0: what is typed is seen
    bool SetInterval(std::int32_t milliseconds);
    bool SetList(std::vector<std::string> list);
    bool SetTabs(std::vector<TabPage> tabs);
    bool SetTabToolTip(std::size_t position, std::string_view toolTip);  // positions count from 0
    bool RemoveTab(std::size_t position);

    // Without a window nothing happens.
    void TakeFocus();

    Handlers on;

  private:
    [[nodiscard]] bool IsMade() const;
    friend class FormView;
    template <class Kept>
    bool Keep(Property property, Kept& kept, Kept value);
    bool Refuse(Property property) const;

    ControlSpec spec_;
    ControlPeer* peer_ = nullptr;
    std::string caption_, toolTip_, picture_, text_;
    FontStyle font_;
    Rect position_;
    std::vector<std::string> list_;
    std::vector<TabPage> tabs_;
    std::uint32_t backColour_, foreColour_;
    std::int32_t listIndex_ = -1;
    std::int32_t interval_ = 0;
    bool visible_, enabled_ = true, value_ = false;
    char passwordChar_ = 0;
};

}  // namespace platform
