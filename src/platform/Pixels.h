// platform/Pixels.h: a picture as numbers. Pure: no Windows header.
//
// Shapes  Rows from the top. A pixel is 0xAARRGGBB; whether its colours are multiplied by its alpha says whoever has
// it.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform {

struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> values;  // width * height

    [[nodiscard]] bool Empty() const { return values.empty(); }
    [[nodiscard]] std::uint32_t At(int x, int y) const { return values[Place(x, y)]; }
    [[nodiscard]] std::uint32_t& At(int x, int y) { return values[Place(x, y)]; }

  private:
    [[nodiscard]] std::size_t Place(int x, int y) const { return static_cast<std::size_t>(y * width + x); }
};

}  // namespace platform
