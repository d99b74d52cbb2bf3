// check/UndoText.h: a file for Windows' registry editor that takes changes back. Pure.
//
// Shapes  "REGEDIT4", which every Windows reads: ANSI text, lines with CR LF. The editor of a 64-bit Windows sees what
//         32-bit programs see below "Wow6432Node".
#pragma once
#include <string>
#include <vector>

#include "check/Finding.h"

namespace Check {

// A change, and what stood there before it.
struct Done {
    Change change;
    Value before;
    Found keyBefore = Found::There;  // Missing: the key was made for it
};

[[nodiscard]] std::string UndoText(const std::vector<Done>& done, bool has64Bits);

}  // namespace Check
