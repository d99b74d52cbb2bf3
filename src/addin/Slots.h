// addin/Slots.h: arrays whose slots are used again after their windows have closed. No Windows header.
#pragma once
#include <algorithm>

namespace Slots {

// The first slot that is free; a new one at the end where there is none.
template <class Array, class IsFree>
auto& FirstFree(Array& slots, IsFree isFree) {
    const auto free = std::find_if(slots.begin(), slots.end(), isFree);
    return free != slots.end() ? *free : slots.emplace_back();
}

}  // namespace Slots
