// Any bytes in Outlook's list of disabled items, and as the front of a program: they are read within their bounds, what is
// understood can be written back to the same bytes, and nothing of others is ever taken for ours.
#include "Fuzz.h"
#include "check/Judge.h"
#include "check/ProgramFile.h"
#include "check/Resiliency.h"

namespace {

const std::u16string ours = u"c:\\corvella\\cvoutlookaddin.dll";

void LookAtEntry(const std::string& bytes) {
    const auto entry = Resiliency::Parse(bytes);
    if (entry) fuzz::Expect(Resiliency::Bytes(*entry) == bytes, "an entry is all that its bytes hold");
    const bool holds = Resiliency::Holds(bytes, ours);
    if (entry && Resiliency::SameFolded(entry->path, ours)) fuzz::Expect(holds, "an entry of ours holds our path");

    Check::Snapshot snapshot;
    snapshot.lowerPaths.push_back(ours);
    snapshot.listed.push_back({16, false, "1", {Check::Found::There, platform::RegistryBinary, bytes}});
    for (const Check::Finding& finding : Check::Judge(snapshot)) {
        for (const Check::Change& change : finding.mend) {
            fuzz::Expect(change.name != "1" || (entry && Resiliency::SameFolded(entry->path, ours)),
                         "only what is ours for certain is removed");
        }
    }
}

void LookAtProgram(const std::string& bytes) {
    Check::Program program;
    Check::ReadHeader(bytes, bytes.size(), program);
    fuzz::Expect(program.bits == 0 || program.bits == 32 || program.bits == 64, "a program has 32 or 64 bits, or none");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::string bytes = input.Text(size);
    LookAtEntry(bytes);
    LookAtProgram(bytes);
    return 0;
}
