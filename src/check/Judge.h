// check/Judge.h: the checks: decisions over what was read. Pure.
//
// Shapes  One finding at least for each check, in the order in which Outlook comes to need things. What follows from a
//         fault that was found is not found again.
#pragma once
#include <vector>

#include "check/Finding.h"

namespace Check {

[[nodiscard]] std::vector<Finding> Judge(const Snapshot& snapshot);

// The worst of them.
[[nodiscard]] Sign Worst(const std::vector<Finding>& findings);

// "Outlook 2003"; "Outlook 2016 or later".
[[nodiscard]] std::string NameOfOutlook(int version);

}  // namespace Check
