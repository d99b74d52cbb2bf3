#include "outlook/program/Places.h"

#include <algorithm>

namespace program {

namespace {

constexpr int step = 40, stepsInARow = 6, margin = 4;
constexpr SIZE explorerSize{900, 600}, inspectorSize{640, 430}, logSize{1200, 260};
constexpr int leastLog = 140;  // that many pixels, or a quarter of the screen

// A window of `size`, made smaller where it must be, as near to `wanted` as the screen's edges allow.
RECT Within(const RECT& area, POINT wanted, SIZE size) {
    const LONG width = std::min(size.cx, area.right - area.left), height = std::min(size.cy, area.bottom - area.top);
    const LONG left = std::clamp(area.left + wanted.x, area.left, area.right - width);
    const LONG top = std::clamp(area.top + wanted.y, area.top, area.bottom - height);
    return {left, top, left + width, top + height};
}

LONG LogHeight(const RECT& screen) {
    const LONG height = screen.bottom - screen.top;
    return std::clamp(height / 4, LONG{leastLog}, logSize.cy);
}

// The first window of a kind leaves the log to be seen; later ones may cover it, but for its lowest lines.
RECT Placed(const RECT& screen, int number, POINT first, SIZE size) {
    const RECT above{screen.left, screen.top, screen.right, screen.bottom - LogHeight(screen) - 2 * margin};
    const RECT place = Within(above, first, size);
    const int further = step * (number % stepsInARow);
    const POINT wanted{place.left - screen.left + further, place.top - screen.top + further};
    return Within(screen, wanted, {place.right - place.left, place.bottom - place.top});
}

}  // namespace

RECT PlaceOfExplorer(const RECT& screen, int number) { return Placed(screen, number, {40, 30}, explorerSize); }

RECT PlaceOfInspector(const RECT& screen, int number) { return Placed(screen, number, {300, 190}, inspectorSize); }

RECT PlaceOfLog(const RECT& screen) {
    const POINT wanted{40, screen.bottom - screen.top - LogHeight(screen) - margin};
    return Within(screen, wanted, {logSize.cx, LogHeight(screen)});
}

RECT Screen() {
    RECT screen{0, 0, 800, 600};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &screen, 0);
    return screen;
}

}  // namespace program
