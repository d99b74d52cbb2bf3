// bridge/OptionsLayout.h: where everything stands in the options dialog. Pure: asks for the size of texts, knows no
// windows.
//
// Shapes  Pixels of the form's inside. Lengths of the design are those at 96 dots an inch. Controls are numbered as
//         their places are listed, from 0.
// Rules   Controls stand below each other in the order in which they are listed: groups as wide as the widest text
//         needs, in them lines of a label and its field, or options; the buttons in a row at the end. The fields of all
//         groups begin in one column, and every label stands on the line of its field. Where the screen is too narrow
//         for that, options and the introduction are broken into lines; where it is too low everything moves closer
//         together.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/Geometry.h"

namespace OptionsLayout {

using platform::Rect;
using platform::Size;

// What a control is to the layout.
enum class Place : std::uint8_t {
    Nowhere,       // it is never shown
    Picture,       // in the head of the dialog; there is one
    Introduction,  // beside the picture; there is one
    Group,         // the frame around all that follows, up to the next group or the buttons
    Label,         // begins a line of its group
    Number,        // a short field on the line of its label
    Unit,          // a text behind it
    Field,         // a field as wide as the group leaves room for
    Option,        // a line of its own
    Button,
};

class TextMeasure {
  public:
    // What the caption of a control needs, broken into lines at `width` (0: not broken).
    [[nodiscard]] virtual Size Of(std::size_t control, std::int32_t width) const = 0;

  protected:
    ~TextMeasure() = default;
};

struct Request {
    std::int32_t dotsAnInch = platform::designDotsAnInch;
    std::int32_t lineHeight = 13;  // of the form's font
    std::int32_t widest = 0;       // inside; 0: no limit
    std::int32_t tallest = 0;      // the same
};

struct Layout {
    Size inside;
    std::vector<Rect> at;  // of each control; what stands nowhere is empty
};

[[nodiscard]] Layout Arrange(const Request& request, std::span<const Place> places, const TextMeasure& measure);

}  // namespace OptionsLayout
