// bench/replay/WindowsCalls.h: the functions of Windows whose calls are recorded: those of the registry, those that load
// pictures and put them on the clipboard, those that read a file, and the start of a program.
#pragma once
#include "testing/ImportPatch.h"

namespace Bench {

extern const std::vector<ImportPatch::Import> recordedCalls;

}  // namespace Bench
