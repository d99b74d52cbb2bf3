// check/Reading.h: reads what the checks judge. Changes nothing: no key, value or file, and no time of them.
//
// Errors  what cannot be read is kept as that.
// Effects none; may wait for a drive or a share of the network. Runs beside the thread of the user interface.
#pragma once
#include "check/Snapshot.h"

namespace Check {

// Told the key of the text for each step before it begins.
using StepBegins = void (*)(const char* key);

[[nodiscard]] Snapshot ReadSnapshot(StepBegins stepBegins);

}  // namespace Check
