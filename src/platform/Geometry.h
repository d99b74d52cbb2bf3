// platform/Geometry.h: sizes and places.
//
// Shapes  Pixels, of the screen or of a form's inside as the user of the value says; right and bottom lie just outside.
#pragma once
#include <cstdint>

namespace platform {

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
