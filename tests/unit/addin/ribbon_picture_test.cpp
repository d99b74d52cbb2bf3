#include <doctest.h>

#include <algorithm>

#include "addin/RibbonPicture.h"

using platform::Pixels;
using RibbonPicture::Draw;

namespace {

constexpr std::uint32_t black = 0, white = 0xFFFFFF, blue = 0x1C4C9C;

Pixels Plain(int side, std::uint32_t colour) {
    return {side, side, std::vector<std::uint32_t>(static_cast<std::size_t>(side * side), colour)};
}

// A blue square with three pixels of nothing on each side.
Pixels SquareMask() {
    Pixels mask = Plain(16, white);
    for (int y = 3; y < 13; ++y) {
        for (int x = 3; x < 13; ++x) mask.At(x, y) = black;
    }
    return mask;
}

std::uint32_t Alpha(std::uint32_t pixel) { return pixel >> 24; }

}  // namespace

TEST_CASE("pictures have the size that the resolution asks for") {
    const int small[] = {16, 20, 24, 32}, large[] = {32, 40, 48, 64};
    const int dots[] = {96, 120, 144, 192};
    for (std::size_t i = 0; i < 4; ++i) {
        CHECK(RibbonPicture::SmallSide(dots[i]) == small[i]);
        CHECK(RibbonPicture::LargeSide(dots[i]) == large[i]);
        for (const int side : {small[i], large[i]}) {
            const Pixels picture = Draw(Plain(16, blue), SquareMask(), side);
            CHECK(picture.width == side);
            CHECK(picture.height == side);
            CHECK(picture.values.size() == static_cast<std::size_t>(side * side));
        }
    }
}

TEST_CASE("a resolution that no screen has still gives a picture") {
    CHECK(RibbonPicture::SmallSide(0) == 16);
    CHECK(RibbonPicture::LargeSide(-5) == 32);
    CHECK(RibbonPicture::LargeSide(100000) == 128);
}

TEST_CASE("where the mask is black the face shows opaque, far from it nothing does") {
    for (const int side : {16, 20, 24, 32, 40, 48, 64}) {
        CAPTURE(side);
        const Pixels picture = Draw(Plain(16, blue), SquareMask(), side);
        CHECK(picture.At(side / 2, side / 2) == (0xFF000000 | blue));
        CHECK(picture.At(0, 0) == 0);
        CHECK(picture.At(side - 1, side - 1) == 0);
    }
}

TEST_CASE("a face has a light edge, by which a dark one is seen on a dark ground") {
    const Pixels picture = Draw(Plain(16, black), SquareMask(), 16);
    const std::uint32_t beside = picture.At(2, 8);
    CHECK(Alpha(beside) >= 128);
    CHECK((beside & 0xFF) == Alpha(beside));  // white, multiplied by its alpha
    CHECK(Alpha(picture.At(1, 8)) == 0);
}

TEST_CASE("no colour is larger than its alpha, in no size and with no face") {
    Pixels face = Plain(16, 0), mask = Plain(16, white);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            face.At(x, y) = static_cast<std::uint32_t>(x * 7919 + y * 104729) * 2654435761u & 0xFFFFFF;
            mask.At(x, y) = (x * 31 + y * 17) % 3 == 0 ? white : black;
        }
    }
    for (const int side : {1, 7, 16, 17, 20, 31, 32, 33, 48, 64, 96}) {
        CAPTURE(side);
        const Pixels picture = Draw(face, mask, side);
        CHECK(std::all_of(picture.values.begin(), picture.values.end(), [](std::uint32_t pixel) {
            const std::uint32_t alpha = Alpha(pixel);
            return (pixel >> 16 & 0xFF) <= alpha && (pixel >> 8 & 0xFF) <= alpha && (pixel & 0xFF) <= alpha;
        }));
    }
}

TEST_CASE("a face without its mask, and a size that is none, give no picture") {
    CHECK(Draw({}, {}, 16).Empty());
    CHECK(Draw(Plain(16, blue), {}, 16).Empty());
    CHECK(Draw(Plain(16, blue), Plain(8, black), 16).Empty());
    CHECK(Draw({16, 8, std::vector<std::uint32_t>(128)}, {16, 8, std::vector<std::uint32_t>(128)}, 16).Empty());
    CHECK(Draw(Plain(16, blue), SquareMask(), 0).Empty());
    CHECK(Draw(Plain(16, blue), SquareMask(), 257).Empty());
}
