// check/Mending.h: makes changes in the registry, and a file that takes them back.
//
// Effects the undo file is written before the first change; where it cannot be, nothing is changed. What cannot be read
//         is not overwritten.
#pragma once
#include <string>
#include <vector>

#include "check/Finding.h"

namespace Check {

// A new file in the folder of the user's settings, or that for temporary files; not yet there.
[[nodiscard]] std::string UndoFileFor(const Snapshot& snapshot);

struct Mended {
    bool undoWritten = false;
    bool all = false;  // every change was made
};
[[nodiscard]] Mended Mend(const std::vector<Change>& changes, const std::string& undoFile);

}  // namespace Check
