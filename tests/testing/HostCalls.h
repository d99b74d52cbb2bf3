// testing/HostCalls.h: the calls of the host among the lines of the stand-in's transcript (recorded with
// Detail::Everything, so that each call has its line), told apart by what they are for.
#pragma once
#include <algorithm>
#include <string>
#include <vector>

#include "outlook/Outlook.h"

namespace HostCalls {

using Lines = std::vector<std::string>;

inline bool Holds(const std::string& line, const char* part) { return line.find(part) != std::string::npos; }

// A call in, as opposed to actions and events of the host.
inline bool IsCall(const std::string& line) {
    const std::size_t first = line.find_first_not_of(' ');
    return first != std::string::npos && line[first] != '#' && line[first] != '!' && line[first] != '?';
}

// From the last line that holds `part` on; nothing when none does.
inline Lines From(const Lines& lines, const char* part) {
    const auto found = std::find_if(lines.rbegin(), lines.rend(), [&](const auto& line) { return Holds(line, part); });
    return found == lines.rend() ? Lines() : Lines(found.base() - 1, lines.end());
}

// Up to the first line that holds `part`; all when none does.
inline Lines Until(const Lines& lines, const char* part) {
    return {lines.begin(),
            std::find_if(lines.begin(), lines.end(), [&](const auto& line) { return Holds(line, part); })};
}

struct MenuBuild {
    int walk = 0;          // over the controls that are there already
    int entryWrites = 0;   // to the properties of the entries
    int buttonWrites = 0;  // to those of the synchronise button
    int rest = 0;
};

inline bool IsWalk(const std::string& line) {
    if (Holds(line, "Controls of ")) return Holds(line, ".Count ->") || Holds(line, ".Item(");
    return Holds(line, ".Caption -> ") || Holds(line, ".BuiltIn -> ") || Holds(line, ".Tag -> ") ||
           Holds(line, ".OnAction -> ") || Holds(line, ".Parameter -> ");
}

inline MenuBuild Sort(const Lines& lines) {
    MenuBuild build;
    bool atEntries = true;
    for (const std::string& line : lines) {
        if (!IsCall(line)) continue;
        if (Holds(line, ".Item(\"Standard\")")) atEntries = false;
        if (IsWalk(line))
            ++build.walk;
        else if (Holds(line, "CommandBarButton ") && Holds(line, " = "))
            ++(atEntries ? build.entryWrites : build.buttonWrites);
        else
            ++build.rest;
    }
    return build;
}

// The calls of one build of the menu, made by a host that is not yet started: in the second window's first activation;
// in Outlook 2000, which has the menu in its first window alone, in the connection, up to where that goes on to the
// windows that are open already.
inline MenuBuild OfMenu(standin::Outlook& outlook) {
    outlook.Record(standin::Detail::Everything);
    outlook.Start();
    if (outlook.Version() == 9) {
        const Lines build = From(outlook.Transcript(), "Explorer 1.Class");
        return Sort(Until(build, "Application.Explorers"));
    }
    outlook.OpenExplorer(standin::FolderKind::Calendar);
    return Sort(From(outlook.Transcript(), "! Explorer 2: Activate()"));
}

}  // namespace HostCalls
