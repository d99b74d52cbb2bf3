// corvella/Start.h: one start of Corvella, as a line of the record and as words for a person. Pure text.
//
// Shapes  A line: fields "name=value" with a tab between, a note for people and the command line last, CR LF at the end. Tabs, line
//         breaks and backslashes inside a value are written "\t", "\r", "\n", "\\", so that a start is one line.
#pragma once
#include <string>
#include <string_view>

namespace Corvella {

struct Start {
    std::string commandLine;  // as it arrived
    int showState = -1;       // Windows' number, -1 where the starter said none
    std::string changedA;     // the lists of changed items as they were found
    std::string changedC;
    std::string changedT;
};

[[nodiscard]] std::string RecordLine(const Start& start);

// The changed items that were found, for a person: "2 contacts, 1 task"; empty for none.
[[nodiscard]] std::string Note(const Start& start);

// What stands behind the program in a command line, without the blanks around it.
[[nodiscard]] std::string Arguments(std::string_view commandLine);

// What Corvella would do now.
[[nodiscard]] std::string Doing(std::string_view arguments);

}  // namespace Corvella
