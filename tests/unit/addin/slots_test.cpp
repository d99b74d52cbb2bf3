#include <doctest.h>

#include <vector>

#include "addin/Slots.h"

namespace {

constexpr auto isFree = [](int window) { return window == 0; };

}  // namespace

TEST_CASE("opening and closing the same window twice uses the first slot again instead of growing the array") {
    std::vector<int> slots{0};
    for (int round = 0; round < 2; ++round) {
        Slots::FirstFree(slots, isFree) = 7;
        CHECK(slots == std::vector<int>{7});
        slots[0] = 0;
    }
}

TEST_CASE("the array grows by one slot when none is free and keeps its contents") {
    std::vector<int> slots{1, 2};
    Slots::FirstFree(slots, isFree) = 3;
    CHECK(slots == std::vector<int>{1, 2, 3});
}

TEST_CASE("of several free slots the lowest is taken") {
    std::vector<int> slots{1, 0, 3, 0};
    Slots::FirstFree(slots, isFree) = 2;
    CHECK(slots == std::vector<int>{1, 2, 3, 0});
}
