// program/Places.h: where windows open, so that all of them, and the log below, can be seen on any screen from 800x600.
//
// Shapes  pixels; `screen` is what the desktop leaves to windows. Windows of a kind count from 0, each a step to the right
//         and down from the one before, the seventh where the first one is.
#pragma once
#include <windows.h>

namespace program {

[[nodiscard]] RECT PlaceOfExplorer(const RECT& screen, int number);
[[nodiscard]] RECT PlaceOfInspector(const RECT& screen, int number);
[[nodiscard]] RECT PlaceOfLog(const RECT& screen);

[[nodiscard]] RECT Screen();

}  // namespace program
