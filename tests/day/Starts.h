// day/Starts.h: what Corvella itself recorded of its starts, in "Corvella.record.txt" beside it.
#pragma once
#include <string>
#include <vector>

namespace program::day {

struct CorvellaStart {
    int show = -1;                              // Windows' number of the show state, -1 where the starter said none
    std::string appointments, contacts, tasks;  // the lists of changed items as Corvella found them
    std::string commandLine;
};

// In order; empty where there is no record. Corvella's folder is the one in the registry.
[[nodiscard]] std::vector<CorvellaStart> StartsOfCorvella();

}  // namespace program::day
