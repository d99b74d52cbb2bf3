#include "support/CommandLine.h"

#include <algorithm>

namespace CommandLine {
namespace {

constexpr std::string_view blanks = " \t";

std::size_t EndOfProgram(std::string_view commandLine) {
    if (!commandLine.starts_with('"')) return std::min(commandLine.find_first_of(blanks), commandLine.size());
    const std::size_t closing = commandLine.find('"', 1);
    return closing == std::string_view::npos ? commandLine.size() : closing + 1;
}

}  // namespace

std::string_view Arguments(std::string_view commandLine) {
    const std::string_view behind = commandLine.substr(EndOfProgram(commandLine));
    const std::size_t first = behind.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return behind.substr(first, behind.find_last_not_of(blanks) - first + 1);
}

}  // namespace CommandLine
