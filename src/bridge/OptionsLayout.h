// bridge/OptionsLayout.h: where everything stands in the options dialog. Pure: asks
// for the size of texts, knows no windows.
//
// Shapes  Pixels of the form's inside. Lengths of the design are those at 96 dots an inch.
// Rules   Three groups below each other, as wide as the widest text needs; the fields of all groups begin in one
//         column, and every label stands on the line of its field. Where the screen is too narrow for that, options and
//         the text on top are broken into lines; where it is too low everything moves closer together.
#pragma once
#include <array>
#include <cstdint>

#include "platform/forms/Control.h"

namespace OptionsLayout {

using platform::Rect;
using platform::Size;

enum class Item : std::uint8_t {
    Picture1,
    Label6,
    Frame1,
    Label1,
    TextDelay,
    Label2,
    Label3,
    TextRemain,
    Label4,
    Frame2,
    OptionSync,
    OptionDlg,
    Frame3,
    Label5,
    ComboProfiles,
    ButtonOK,
    ButtonCancel,
    ButtonHelp,
};
inline constexpr std::size_t items = static_cast<std::size_t>(Item::ButtonHelp) + 1;

class TextMeasure {
  public:
    // What the caption of an item needs, broken into lines at `width` (0: not broken).
    [[nodiscard]] virtual Size Of(Item item, std::int32_t width) const = 0;

  protected:
    ~TextMeasure() = default;
};

struct Request {
    std::int32_t dotsAnInch = 96;
    std::int32_t lineHeight = 13;  // of the form's font
    std::int32_t widest = 0;       // inside; 0: no limit
    std::int32_t tallest = 0;      // the same
};

struct Layout {
    Size inside;
    std::array<Rect, items> at;
    [[nodiscard]] const Rect& Of(Item item) const { return at[static_cast<std::size_t>(item)]; }
};

[[nodiscard]] Layout Arranged(const Request& request, const TextMeasure& measure);

}  // namespace OptionsLayout
