#include <doctest.h>

#include <initializer_list>

#include "outlook/program/Places.h"

using namespace program;

namespace {

constexpr RECT screens[] = {{0, 0, 800, 600},    {0, 0, 1024, 768},  {0, 0, 1280, 1024},
                            {0, 28, 1920, 1056}, {64, 0, 1366, 740}, {0, 0, 3840, 2160}};

bool Holds(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

}  // namespace

TEST_CASE("every window lies on the screen as a whole, whichever it is") {
    for (const RECT& screen : screens) {
        CAPTURE(screen.right);
        CHECK(Holds(screen, PlaceOfLog(screen)));
        for (int number = 0; number < 13; ++number) {
            CAPTURE(number);
            CHECK(Holds(screen, PlaceOfExplorer(screen, number)));
            CHECK(Holds(screen, PlaceOfInspector(screen, number)));
        }
    }
}

TEST_CASE("the first windows leave the log to be seen, and all are large enough to work with") {
    for (const RECT& screen : screens) {
        CAPTURE(screen.right);
        const RECT log = PlaceOfLog(screen);
        CHECK(log.bottom - log.top >= 140);
        CHECK(log.right - log.left >= 790);
        for (const RECT& place : {PlaceOfExplorer(screen, 0), PlaceOfInspector(screen, 0)}) {
            CHECK(place.bottom <= log.top);
            CHECK(place.right - place.left >= 640);
            CHECK(place.bottom - place.top >= 400);
        }
    }
}

TEST_CASE("where there is room, windows have the size and place of the pictures") {
    const RECT explorer = PlaceOfExplorer({0, 0, 1280, 1024}, 0);
    CHECK(explorer.left == 40);
    CHECK(explorer.top == 30);
    CHECK(explorer.right == 940);
    CHECK(explorer.bottom == 630);
    const RECT inspector = PlaceOfInspector({0, 0, 1280, 1024}, 1);
    CHECK(inspector.left == 340);
    CHECK(inspector.top == 230);
}
