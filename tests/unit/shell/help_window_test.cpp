#include <doctest.h>

#include "shell/HelpWindow.h"

using HelpWindow::Enlarge;
using platform::Rect;
using platform::Size;

namespace {

// A window by its edges, as one thinks of it here.
Rect Edges(int left, int top, int right, int bottom) { return {left, top, right - left, bottom - top}; }

constexpr Size large{1024, 768}, small{800, 600};

}  // namespace

TEST_CASE("a viewer that is large enough stays as it is") {
    CHECK_FALSE(Enlarge(Edges(10, 20, 610, 520), large));
    CHECK_FALSE(Enlarge(Edges(0, 0, 1024, 768), large));
}

TEST_CASE("a narrow viewer grows to the left and keeps its right edge") {
    CHECK(Enlarge(Edges(600, 20, 1010, 620), large) == Edges(10, 20, 1010, 620));
    CHECK(Enlarge(Edges(421, 20, 1020, 620), large) == Edges(20, 20, 1020, 620));
}

TEST_CASE("on a screen of 800 pixels a narrow viewer is made 800 wide") {
    CHECK(Enlarge(Edges(400, 20, 805, 620), small) == Edges(5, 20, 805, 620));
    CHECK(Enlarge(Edges(400, 20, 805, 620), Size{801, 600}) == std::nullopt);  // 1000 do not fit
}

TEST_CASE("a low viewer grows downwards and keeps its top edge") {
    CHECK(Enlarge(Edges(10, 20, 900, 519), large) == Edges(10, 20, 900, 720));
    CHECK(Enlarge(Edges(10, 20, 900, 300), Size{1024, 701}) == Edges(10, 20, 900, 720));
}

TEST_CASE("on a screen 700 pixels high a low viewer is made 600 high") {
    CHECK(Enlarge(Edges(10, 20, 700, 300), small) == Edges(10, 20, 700, 620));
    CHECK(Enlarge(Edges(10, 20, 900, 300), Size{1024, 700}) == Edges(10, 20, 900, 620));
}

TEST_CASE("a narrow and low viewer grows in both directions") {
    CHECK(Enlarge(Edges(800, 20, 1020, 120), large) == Edges(20, 20, 1020, 720));
}

TEST_CASE("a viewer 500 pixels wide on a 1024-pixel screen whose right edge is at 900 is not moved") {
    CHECK_FALSE(Enlarge(Edges(400, 20, 900, 620), large));
}

TEST_CASE("a narrow viewer without room on the left is left alone although it is low, too") {
    CHECK_FALSE(Enlarge(Edges(400, 20, 900, 120), large));
    CHECK_FALSE(Enlarge(Edges(600, 20, 1000, 120), large));  // a left edge of 0 is no room either
    CHECK(Enlarge(Edges(600, 20, 1001, 120), large) == Edges(1, 20, 1001, 720));
}
