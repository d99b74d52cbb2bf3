// The program that looks why the add-in is not there.
//
//     CorvellaCheck                  shows the window
//     CorvellaCheck /report[=FILE]   writes what was found to the console, or to the file
//     CorvellaCheck /repair          mends what it can without asking; with /all also what somebody may have wanted so
//
// Exit code  0 everything is fine, 1 hints, 2 faults: as it is afterwards.
#include <string>
#include <vector>

#include "check/FormCheck.h"
#include "check/Judge.h"
#include "check/Mending.h"
#include "check/Reading.h"
#include "check/Report.h"
#include "platform/Beside.h"
#include "platform/Console.h"
#include "platform/Locale.h"
#include "platform/Text.h"

namespace {

using namespace Check;

constexpr int cannotWork = 2;

struct Options {
    bool report = false, repair = false, all = false;
    std::string file;
};

Options Read(const std::vector<std::string>& arguments) {
    Options options;
    for (const std::string& argument : arguments) {
        const std::string lowered = platform::ToLower(argument);
        options.repair = options.repair || lowered == "/repair";
        options.all = options.all || lowered == "/all";
        options.report = options.report || lowered == "/report" || lowered.starts_with("/report=");
        if (lowered.starts_with("/report=")) options.file = argument.substr(8);
    }
    return options;
}

Snapshot LookAround() {
    return ReadSnapshot([](const char*) {});
}

void Repair(const Snapshot& snapshot, bool all) {
    std::vector<Change> changes;
    for (const Finding& finding : Judge(snapshot)) {
        if (finding.chosenByUser && !all) continue;
        changes.insert(changes.end(), finding.mend.begin(), finding.mend.end());
    }
    if (!changes.empty()) static_cast<void>(Mend(changes, UndoFileFor(snapshot)));
}

int Run(const Options& options) {
    if (!options.report && !options.repair) return FormCheck().Run();
    if (options.repair) Repair(LookAround(), options.all);
    const Snapshot snapshot = LookAround();
    const std::vector<Finding> findings = Judge(snapshot);
    if (options.report) {
        const std::string report = Report(snapshot, findings, TextsOf(snapshot));
        const bool written =
            options.file.empty() ? platform::WriteToConsole(report) : platform::WriteReportFile(options.file, report);
        if (!written) return cannotWork;
    }
    return ExitCode(findings);
}

}  // namespace

int main(int count, char** values) {
    platform::TellLeadBytes(platform::IsLeadByte);
    platform::EndProgram(Run(Read(std::vector<std::string>(values + 1, values + count))));
}
