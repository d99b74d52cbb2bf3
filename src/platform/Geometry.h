// platform/Geometry.h: sizes, places and scaled lengths.
//
// Shapes  Pixels, of the screen or of a form's inside as the user of the value says; right and bottom lie just outside.
#pragma once
#include <cstdint>

#include "platform/Text.h"

namespace platform {

// What the lengths of our designs are meant for.
inline constexpr std::int32_t designDotsAnInch = 96;

// A length of the design at another resolution.
[[nodiscard]] inline std::int32_t Scaled(std::int32_t lengthAt96, std::int32_t dotsAnInch) {
    return RoundHalfEven(static_cast<double>(lengthAt96) * dotsAnInch / designDotsAnInch);
}

struct Size {
    std::int32_t width = 0, height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    std::int32_t left = 0, top = 0, width = 0, height = 0;
    [[nodiscard]] std::int32_t Right() const { return left + width; }
    [[nodiscard]] std::int32_t Bottom() const { return top + height; }
    bool operator==(const Rect&) const = default;
};

}  // namespace platform
