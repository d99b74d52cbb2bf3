#include "addin/RibbonPicture.h"

#include <algorithm>

using platform::Pixels;

namespace RibbonPicture {
namespace {

constexpr int standardDots = 96;
constexpr int largest = 256;
constexpr std::uint32_t opaque = 0xFF000000;
constexpr std::uint32_t colours = 0x00FFFFFF;
constexpr std::uint32_t lightest = 160;  // the alpha of the light edge beside an opaque pixel

struct Channels {
    std::uint32_t alpha = 0, red = 0, green = 0, blue = 0;
};

Channels Split(std::uint32_t pixel) { return {pixel >> 24, pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF}; }
std::uint32_t Joined(const Channels& channels) {
    return channels.alpha << 24 | channels.red << 16 | channels.green << 8 | channels.blue;
}

Pixels Blank(int side) {
    return {side, side, std::vector<std::uint32_t>(static_cast<std::size_t>(side) * static_cast<std::size_t>(side))};
}

template <class Value>
Pixels Filled(int side, Value value) {
    Pixels pixels = Blank(side);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) pixels.At(x, y) = value(x, y);
    }
    return pixels;
}

// Outside it is transparent.
std::uint32_t AtOrNothing(const Pixels& pixels, int x, int y) {
    const bool inside = x >= 0 && y >= 0 && x < pixels.width && y < pixels.height;
    return inside ? pixels.At(x, y) : 0;
}

// Twice the size; a corner takes the colour of its two neighbours where they agree, which keeps slanted lines smooth.
Pixels Doubled(const Pixels& from) {
    return Filled(from.width * 2, [&](int x, int y) {
        const int column = x / 2, row = y / 2;
        const int sideways = x % 2 == 0 ? -1 : 1, upright = y % 2 == 0 ? -1 : 1;
        const std::uint32_t beside = AtOrNothing(from, column + sideways, row);
        const std::uint32_t above = AtOrNothing(from, column, row + upright);
        const bool corner = beside == above && beside != AtOrNothing(from, column - sideways, row) &&
                            above != AtOrNothing(from, column, row - upright);
        return corner ? beside : from.At(column, row);
    });
}

// One pixel of the smaller picture: the mean of what it covers of the larger one. Places are in 1/side of a pixel.
std::uint32_t Mean(const Pixels& from, int x, int y, int side) {
    Channels sum;
    const int wide = from.width;
    for (int row = y * wide / side; row * side < (y + 1) * wide; ++row) {
        const int high = std::min((row + 1) * side, (y + 1) * wide) - std::max(row * side, y * wide);
        for (int column = x * wide / side; column * side < (x + 1) * wide; ++column) {
            const int broad = std::min((column + 1) * side, (x + 1) * wide) - std::max(column * side, x * wide);
            const auto weight = static_cast<std::uint32_t>(high * broad);
            const Channels pixel = Split(from.At(column, row));
            sum.alpha += pixel.alpha * weight;
            sum.red += pixel.red * weight;
            sum.green += pixel.green * weight;
            sum.blue += pixel.blue * weight;
        }
    }
    const auto area = static_cast<std::uint32_t>(wide * wide);
    const auto mean = [&](std::uint32_t channel) { return (channel + area / 2) / area; };
    return Joined({mean(sum.alpha), mean(sum.red), mean(sum.green), mean(sum.blue)});
}

// A pixel is opaque or nothing at all, so its colours are multiplied by its alpha already.
Pixels Cut(const Pixels& face, const Pixels& mask) {
    return Filled(face.width, [&](int x, int y) {
        const bool shows = (mask.At(x, y) & colours) == 0;
        return shows ? opaque | face.At(x, y) : 0u;
    });
}

Pixels Scaled(Pixels pixels, int side) {
    while (pixels.width < side) pixels = Doubled(pixels);
    if (pixels.width == side) return pixels;
    return Filled(side, [&](int x, int y) { return Mean(pixels, x, y, side); });
}

std::uint32_t AlphaAround(const Pixels& pixels, int x, int y, int reach) {
    std::uint32_t most = 0;
    for (int dy = -reach; dy <= reach; ++dy) {
        for (int dx = -reach; dx <= reach; ++dx) most = std::max(most, AtOrNothing(pixels, x + dx, y + dy) >> 24);
    }
    return most;
}

// White behind the picture's edge, which is not seen on a light ground.
Pixels WithLightEdge(const Pixels& pixels) {
    const int reach = std::max(1, pixels.width / 24);
    return Filled(pixels.width, [&](int x, int y) {
        const Channels own = Split(pixels.At(x, y));
        const std::uint32_t light = AlphaAround(pixels, x, y, reach) * lightest / 255 * (255 - own.alpha) / 255;
        return Joined({own.alpha + light, own.red + light, own.green + light, own.blue + light});
    });
}

bool FitTogether(const Pixels& face, const Pixels& mask) {
    return !face.Empty() && face.width == face.height && mask.width == face.width && mask.height == face.height;
}

int Side(int atStandard, int dotsPerInch) {
    return atStandard * std::clamp(dotsPerInch, standardDots, 4 * standardDots) / standardDots;
}

}  // namespace

int SmallSide(int dotsPerInch) { return Side(16, dotsPerInch); }
int LargeSide(int dotsPerInch) { return Side(32, dotsPerInch); }

Pixels Draw(const Pixels& face, const Pixels& mask, int side) {
    if (!FitTogether(face, mask) || side < 1 || side > largest) return {};
    return WithLightEdge(Scaled(Cut(face, mask), side));
}

}  // namespace RibbonPicture
