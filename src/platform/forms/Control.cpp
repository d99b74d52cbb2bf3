#include "platform/forms/Control.h"

#include <utility>

#include "platform/Err.h"

namespace platform {
namespace {

constexpr std::uint32_t Bit(Property property) { return std::uint32_t{1} << static_cast<unsigned>(property); }

template <class... Properties>
constexpr std::uint32_t Bits(Properties... properties) {
    return (Bit(properties) | ...);
}

constexpr std::uint32_t seen =
    Bits(Property::Visible, Property::Enabled, Property::Position, Property::ToolTip, Property::BackColor);
constexpr std::uint32_t written = seen | Bits(Property::Font, Property::ForeColor);
constexpr std::uint32_t captioned = written | Bit(Property::Caption);

struct KindProperties {
    ControlKind kind;
    std::uint32_t properties;
};

constexpr KindProperties kindTable[] = {
    {ControlKind::Label, captioned},
    {ControlKind::Link, captioned},
    {ControlKind::Button, captioned},
    {ControlKind::CheckBox, captioned | Bit(Property::Value)},
    {ControlKind::OptionButton, captioned | Bit(Property::Value)},
    {ControlKind::TextBox, written | Bits(Property::Text, Property::PasswordChar)},
    {ControlKind::ComboBox, written | Bits(Property::Text, Property::List, Property::ListIndex)},
    {ControlKind::ListBox, written | Bits(Property::Text, Property::List, Property::ListIndex)},
    {ControlKind::Frame, captioned},
    {ControlKind::PictureBox, seen | Bit(Property::Picture)},
    {ControlKind::Image, seen | Bit(Property::Picture)},
    {ControlKind::TabStrip, (written | Bit(Property::Tabs)) & ~Bits(Property::BackColor, Property::ForeColor)},
    {ControlKind::Timer, Bits(Property::Enabled, Property::Interval)},
};

// What a control looks like before anything is set: Windows' window and button colours.
constexpr std::uint32_t windowColour = 0x80000005, windowTextColour = 0x80000008, faceColour = 0x8000000F,
                        faceTextColour = 0x80000012, linkColour = 0x8000001A;

std::uint32_t InitialBackColor(ControlKind kind) {
    const bool typedIn = kind == ControlKind::TextBox || kind == ControlKind::ComboBox || kind == ControlKind::ListBox;
    return typedIn ? windowColour : faceColour;
}

std::uint32_t InitialForeColor(ControlKind kind) {
    if (kind == ControlKind::Link) return linkColour;
    return InitialBackColor(kind) == windowColour ? windowTextColour : faceTextColour;
}

}  // namespace

bool Has(ControlKind kind, Property property) {
    for (const KindProperties& row : kindTable) {
        if (row.kind == kind) return (row.properties & Bit(property)) != 0;
    }
    return false;
}

Control::Control(const ControlSpec& spec)
    : spec_(spec),
      caption_(spec.caption),
      backColour_(InitialBackColor(spec.kind)),
      foreColour_(InitialForeColor(spec.kind)),
      visible_(!Is(ControlStyle::Hidden)),
      enabled_(spec.kind != ControlKind::Timer) {
    font_.underline = spec.kind == ControlKind::Link;
}

bool Control::Refuse(Property property) const {
    if (Has(property)) return false;
    Err().Set(PropertyNotSupported, "Object doesn't support this property or method");
    return true;
}

template <class Kept>
bool Control::Keep(Property property, Kept& kept, Kept value) {
    if (Refuse(property)) return false;
    kept = std::move(value);
    if (peer_) peer_->Show(*this, property);
    return true;
}

bool Control::SetCaption(std::string_view caption) { return Keep(Property::Caption, caption_, std::string(caption)); }

void Control::ShowDesignCaption() {
    if (Has(Property::Caption)) SetCaption(spec_.caption);
}

bool Control::SetToolTip(std::string_view toolTip) { return Keep(Property::ToolTip, toolTip_, std::string(toolTip)); }
bool Control::SetPicture(std::string_view file) { return Keep(Property::Picture, picture_, std::string(file)); }
bool Control::SetFont(const FontStyle& font) { return Keep(Property::Font, font_, font); }
bool Control::SetVisible(bool visible) { return Keep(Property::Visible, visible_, visible); }
bool Control::SetEnabled(bool enabled) { return Keep(Property::Enabled, enabled_, enabled); }
bool Control::SetValue(bool value) { return Keep(Property::Value, value_, value); }
bool Control::SetBackColor(std::uint32_t colour) { return Keep(Property::BackColor, backColour_, colour); }
bool Control::SetForeColor(std::uint32_t colour) { return Keep(Property::ForeColor, foreColour_, colour); }
bool Control::SetPosition(const Rect& position) { return Keep(Property::Position, position_, position); }
bool Control::SetPasswordChar(char letter) { return Keep(Property::PasswordChar, passwordChar_, letter); }
bool Control::SetInterval(std::int32_t milliseconds) { return Keep(Property::Interval, interval_, milliseconds); }

bool Control::SetFontName(std::string_view face) {
    FontStyle font = font_;
    font.face = face;
    return SetFont(font);
}

bool Control::SetFontCharSet(std::int32_t charSet) {
    FontStyle font = font_;
    font.charSet = charSet;
    return SetFont(font);
}

bool Control::SetText(std::string_view text) {
    if (Has(Property::List)) {
        listIndex_ = -1;
        for (std::size_t line = 0; line < list_.size(); ++line) {
            if (list_[line] != text) continue;
            listIndex_ = static_cast<std::int32_t>(line);
            break;
        }
    }
    return Keep(Property::Text, text_, std::string(text));
}

bool Control::SetListIndex(std::int32_t index) {
    if (Refuse(Property::ListIndex)) return false;
    const bool inList = index >= 0 && static_cast<std::size_t>(index) < list_.size();
    text_ = inList ? list_[static_cast<std::size_t>(index)] : std::string();
    return Keep(Property::ListIndex, listIndex_, inList ? index : -1);
}

bool Control::SetList(std::vector<std::string> list) {
    listIndex_ = -1;
    return Keep(Property::List, list_, std::move(list));
}

bool Control::SetTabs(std::vector<TabPage> tabs) { return Keep(Property::Tabs, tabs_, std::move(tabs)); }

bool Control::SetTabToolTip(std::size_t position, std::string_view toolTip) {
    std::vector<TabPage> tabs = tabs_;
    if (position < tabs.size()) tabs[position].toolTip = toolTip;
    return SetTabs(std::move(tabs)) && position < tabs_.size();
}

bool Control::RemoveTab(std::size_t position) {
    std::vector<TabPage> tabs = tabs_;
    const bool there = position < tabs.size();
    if (there) tabs.erase(tabs.begin() + static_cast<std::ptrdiff_t>(position));
    return SetTabs(std::move(tabs)) && there;
}

bool Control::IsMade() const { return peer_ && peer_->IsMade(*this); }

std::string Control::Text() const { return Has(Property::Text) && IsMade() ? peer_->FetchText(*this) : text_; }

bool Control::Value() const {
    return Has(Property::Value) && IsMade() ? peer_->FetchNumber(*this, Property::Value) != 0 : value_;
}

std::int32_t Control::ListIndex() const {
    return Has(Property::ListIndex) && IsMade() ? peer_->FetchNumber(*this, Property::ListIndex) : listIndex_;
}

void Control::TakeFocus() {
    if (peer_) peer_->TakeFocus(*this);
}

}  // namespace platform
