#include "day/Starts.h"

#include "day/Observed.h"
#include "outlook/program/StartRecord.h"

namespace program::day {

std::vector<CorvellaStart> StartsOfCorvella() {
    std::vector<CorvellaStart> starts;
    for (NotedStart& noted : ReadStarts(Folder() + "\\Corvella.record.txt"))
        starts.push_back({noted.show, noted.fields["ChangedA"], noted.fields["ChangedC"], noted.fields["ChangedT"],
                          noted.commandLine});
    return starts;
}

}  // namespace program::day
