#include "check/Report.h"

#include <algorithm>

#include "check/Judge.h"
#include "platform/Text.h"

using platform::Decimal;

namespace Check {
namespace {

constexpr std::string_view lineEnd = "\r\n";

std::int32_t Count(const std::vector<Finding>& findings, Sign sign) {
    return static_cast<std::int32_t>(
        std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) { return finding.sign == sign; }));
}

void Line(std::string& report, std::string_view text) { report.append(text).append(lineEnd); }

// What is there, without judging it.
void AddVersions(std::string& report, const Snapshot& snapshot) {
    Line(report, "Windows " + snapshot.windows + (snapshot.has64Bits ? ", 64 bits" : ", 32 bits") + ", code page " +
                     Decimal(static_cast<std::int32_t>(snapshot.language.systemPage)));
    for (const Outlook& outlook : snapshot.outlooks) {
        const Program file = snapshot.FileAt(outlook.program);
        Line(report, NameOfOutlook(outlook.version) + ", " + Decimal(BitsOf(snapshot, outlook)) + " bits" +
                         (outlook.clickToRun ? ", Click-to-Run" : "") + ": " + outlook.program +
                         (file.found == Found::There ? ", " + file.version : ", not there"));
    }
    for (const ClassEntry& entry : snapshot.classes) {
        if (entry.path.empty()) continue;
        const Program file = snapshot.FileAt(entry.path);
        Line(report, std::string("Add-in ") + (entry.scope == Scope::User ? "(user, " : "(all users, ") +
                         Decimal(entry.view) + " bits): " + entry.path +
                         (file.found == Found::There ? ", " + file.version + ", " + file.modified : ", not there"));
    }
}

// One folder behind `marker` shortened.
std::string ShortBehind(std::string_view text, std::string_view marker) {
    std::string made;
    std::size_t at = 0;
    for (;;) {
        const std::size_t found = platform::FindIgnoringCase(text, marker, at);
        if (found == std::string_view::npos) break;
        const std::size_t begin = found + marker.size();
        const std::size_t end = std::min(text.find_first_of("\\\r\n\"", begin), text.size());
        made.append(text.substr(at, std::min(begin + 1, end) - at));
        if (end > begin + 1) made.append("...");
        at = end;
    }
    return made.append(text.substr(at));
}

}  // namespace

std::string WithShortNames(std::string_view text, std::string_view userName) {
    std::string made(text);
    for (const char* marker : {"\\Users\\", "\\Documents and Settings\\"}) made = ShortBehind(made, marker);
    if (userName.size() < 2) return made;
    const std::string folder = "\\" + std::string(userName) + "\\";
    const std::string shortened = "\\" + std::string(userName.substr(0, 1)) + "...\\";
    for (std::size_t at = 0; (at = platform::FindIgnoringCase(made, folder, at)) != std::string::npos; ++at) {
        made.replace(at, folder.size(), shortened);
    }
    return made;
}

const char* SignKey(Sign sign) {
    return sign == Sign::Fine ? "SignFine" : sign == Sign::Hint ? "SignHint" : "SignFault";
}

std::string Summary(const std::vector<Finding>& findings, const Lookup& lookup) {
    const std::int32_t faults = Count(findings, Sign::Fault), hints = Count(findings, Sign::Hint);
    if (faults > 0) return TextFor(lookup, "Result2", {Decimal(faults), Decimal(hints)});
    return hints > 0 ? TextFor(lookup, "Result1", {Decimal(hints)}) : TextFor(lookup, "Result0");
}

std::string Report(const Snapshot& snapshot, const std::vector<Finding>& findings, const Lookup& lookup) {
    std::string report;
    Line(report, "Corvella for Outlook " + snapshot.ownVersion + ", " + snapshot.now);
    AddVersions(report, snapshot);
    Line(report, "");
    for (const Finding& finding : findings) {
        const Sentences sentences = SentencesOf(lookup, finding);
        Line(report, TextFor(lookup, SignKey(finding.sign)) + "  [" + finding.key + "] " + sentences.found);
        if (finding.sign != Sign::Fine) Line(report, "      " + sentences.meaning);
    }
    Line(report, "");
    Line(report, Summary(findings, lookup));
    return WithShortNames(report, snapshot.userName);
}

std::string Describe(const std::vector<Change>& changes) {
    std::string text;
    for (const Change& change : changes) {
        text += change.root == Root::CurrentUser ? "HKEY_CURRENT_USER\\" : "HKEY_LOCAL_MACHINE\\";
        text += change.key + "\\" + (change.name.empty() ? "(default)" : change.name);
        if (change.removes) {
            text += ": -";
        } else {
            const Value value{Found::There, change.type, change.bytes};
            text += " = " + AddInText(value);
        }
        text.append(lineEnd);
    }
    return text;
}

int ExitCode(const std::vector<Finding>& findings) { return static_cast<int>(Worst(findings)); }

}  // namespace Check
