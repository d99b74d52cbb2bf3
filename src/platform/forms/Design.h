// platform/forms/Design.h: what all forms have alike. Lengths are pixels at 96 dots an inch.
#pragma once
#include <cstdint>

namespace platform {

inline constexpr std::int32_t buttonWidthAt96 = 75;  // at least, as Windows' own dialogs have it

}  // namespace platform
