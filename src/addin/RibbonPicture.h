// addin/RibbonPicture.h: a button's face and mask as the picture that the ribbon wants: any size, soft edges, real
// transparency, and a light edge by which its dark outlines are seen on a dark theme. Pure: no Windows header.
//
// Shapes  Faces are opaque, masks black where the face shows (host quirk 8); the result's colours are multiplied by
//         its alpha. Sizes are in pixels of a side.
// Errors  A face that is empty, not square or not of its mask's size gives an empty picture, as does a size below 1
//         or above 256.
#pragma once
#include "platform/Pixels.h"

namespace RibbonPicture {

// Sides of small and large pictures at that many dots an inch: 16 and 32 at 96.
[[nodiscard]] int SmallSide(int dotsPerInch);
[[nodiscard]] int LargeSide(int dotsPerInch);

[[nodiscard]] platform::Pixels Draw(const platform::Pixels& face, const platform::Pixels& mask, int side);

}  // namespace RibbonPicture
