#include "corvella/Start.h"

#include <algorithm>

namespace Corvella {
namespace {

std::string OneLine(std::string_view value) {
    std::string line;
    for (const char c : value) {
        switch (c) {
            case '\t': line += "\\t"; break;
            case '\r': line += "\\r"; break;
            case '\n': line += "\\n"; break;
            case '\\': line += "\\\\"; break;
            default: line += c;
        }
    }
    return line;
}

struct Action {
    std::string_view arguments;
    const char* doing;
};
constexpr Action actions[] = {
    {"", "The editor"},
    {"sync", "Synchronising everything"},
    {"sync 0", "Synchronising the contacts"},
    {"sync 1", "Synchronising the calendar"},
    {"syncdlg", "The synchronisation dialog"},
    {"smsnew", "A new SMS"},
    {"settings", "The settings"},
    {"update", "Sending changed items to the phone"},
};

constexpr std::string_view fromOutlook = " ol";

}  // namespace

std::string Note(const Start& start) {
    std::string note;
    const auto add = [&note](const std::string& list, const char* kind) {
        const auto count = std::count(list.begin(), list.end(), ';');
        if (count != 0)
            note += (note.empty() ? "" : ", ") + std::to_string(count) + " " + kind + (count == 1 ? "" : "s");
    };
    add(start.changedC, "contact");
    add(start.changedT, "task");
    add(start.changedA, "appointment");
    return note;
}

std::string RecordLine(const Start& start) {
    return "show=" + std::to_string(start.showState) + "\tChangedA=" + OneLine(start.changedA) +
           "\tChangedC=" + OneLine(start.changedC) + "\tChangedT=" + OneLine(start.changedT) +
           "\tnote=" + OneLine(Note(start)) + "\tcommand=" + OneLine(start.commandLine) + "\r\n";
}

std::string Arguments(std::string_view commandLine) {
    const bool quoted = !commandLine.empty() && commandLine.front() == '"';
    const std::size_t end = quoted ? commandLine.find('"', 1) : commandLine.find(' ');
    if (end == std::string_view::npos) return {};
    const std::string_view rest = commandLine.substr(end + 1);
    const std::size_t first = rest.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(rest.substr(first, rest.find_last_not_of(' ') - first + 1));
}

std::string Doing(std::string_view arguments) {
    const bool outlook = arguments.size() >= fromOutlook.size() &&
                         arguments.substr(arguments.size() - fromOutlook.size()) == fromOutlook;
    const std::string_view action = outlook ? arguments.substr(0, arguments.size() - fromOutlook.size()) : arguments;
    for (const Action& known : actions) {
        if (known.arguments == action) return std::string(known.doing) + (outlook ? ", as Outlook asked" : "");
    }
    return "Asked for something that it does not know";
}

}  // namespace Corvella
