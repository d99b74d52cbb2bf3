// support/Product.h: what the product is called, on the screen and on the disk.
#pragma once

namespace Product {

inline constexpr const char* Name = "Corvella";
inline constexpr const char* Folder = "Corvella\\";  // in the folders that Windows has for data

}  // namespace Product
