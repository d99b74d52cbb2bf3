// check/Report.h: what was found as plain text, for people who help. Pure.
//
// Shapes  Lines end with CR LF. It holds versions, paths and times, but nothing that a user wrote: no entry ids, no
//         names of documents. The names of users in paths are shortened to their first letter.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "check/Texts.h"

namespace Check {

[[nodiscard]] std::string Report(const Snapshot& snapshot, const std::vector<Finding>& findings, const Lookup& lookup);

// The key of a sign's text.
[[nodiscard]] const char* SignKey(Sign sign);

// "No fault was found. Hints: 2."
[[nodiscard]] std::string Summary(const std::vector<Finding>& findings, const Lookup& lookup);

// "C:\Users\Anna\x" is "C:\Users\A...\x", in each of Windows' usual places, and wherever the name itself is a folder.
[[nodiscard]] std::string WithShortNames(std::string_view text, std::string_view userName);

// A line for each change: where, and what is written.
[[nodiscard]] std::string Describe(const std::vector<Change>& changes);

[[nodiscard]] int ExitCode(const std::vector<Finding>& findings);  // 0 fine, 1 hints, 2 faults

}  // namespace Check
