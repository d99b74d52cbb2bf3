#include "shell/ExecText.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/Text.h"

using platform::Contains;
using platform::Replace;

namespace ExecText {
namespace {

constexpr std::string_view openCommandKey = "\\shell\\open\\command";
constexpr std::string_view start = "start ";
constexpr std::string_view quote = "\"";

[[nodiscard]] bool IsMail(std::string_view text) { return Contains(text, "mailto:"); }
[[nodiscard]] bool IsWeb(std::string_view text) {
    return Contains(text, ".htm") || Contains(text, "://") || Contains(text, "www.");
}
[[nodiscard]] std::string WithoutBlanks(std::string_view text) { return Replace(text, " ", "%20"); }

[[nodiscard]] std::string Quote(std::string_view text) {
    if (!Contains(text, " ") || text.starts_with('"')) return std::string(text);
    return std::string(quote).append(text).append(quote);
}

// `text` with all that was sought replaced.
struct Expansion {
    std::string text;
    std::size_t end;  // where a position of the old text lies in it: behind the value that has taken its place
};

// None where the text would grow too long.
[[nodiscard]] std::optional<Expansion> Everywhere(std::string_view text, std::string_view sought,
                                                  std::string_view value, std::size_t end, std::size_t longest) {
    Expansion expansion{{}, 0};
    std::size_t from = 0;
    for (;;) {
        const std::size_t at = std::min(text.find(sought, from), text.size());
        if (from <= end && end <= at) expansion.end = expansion.text.size() + (end - from);
        expansion.text.append(text.substr(from, at - from));
        if (at < text.size()) expansion.text.append(value);
        if (expansion.text.size() > longest) return std::nullopt;
        if (at == text.size()) return expansion;
        from = at + sought.size();
        if (at < end && end < from) expansion.end = expansion.text.size();
    }
}

[[nodiscard]] std::string ReplacedWithin(std::size_t longest, std::string_view text, std::string_view sought,
                                         std::string_view value) {
    auto expansion = Everywhere(text, sought, value, 0, longest);
    return expansion ? std::move(expansion->text) : std::string(text);
}

[[nodiscard]] std::string MailCommand(const std::string& address, const std::string& handler, std::size_t longest) {
    const std::string plain = WithoutBlanks(address);
    std::string command = ReplacedWithin(longest, ReplacedWithin(longest, handler, "%1", plain), "%l", plain);
    if (Contains(handler, "notes")) command = ReplacedWithin(longest, command, "\r", "%20");
    return command;
}

// The program at the front of a registered command.
[[nodiscard]] std::string ProgramOf(std::string_view handler) {
    if (!handler.starts_with('"')) return std::string(handler.substr(0, handler.find(' ')));
    handler.remove_prefix(1);
    return std::string(handler.substr(0, handler.find('"')));
}

[[nodiscard]] bool ProgramIsMissing(std::string_view handler, Surroundings& surroundings) {
    const std::string program = ProgramOf(handler);
    if (!Contains(program, ".") || surroundings.FileExists(program)) return false;
    return !surroundings.FileExists(Replace(program, "\\\\", "\\"));
}

[[nodiscard]] std::string BrowserCommand(const std::string& page, const std::string& handler, std::size_t longest) {
    for (const std::string_view mark : {"%l", "%1"}) {
        if (Contains(handler, mark)) return ReplacedWithin(longest, handler, mark, page);
    }
    return handler + " " + page;
}

// The registered browser with `page`; none where there is no browser or its program is gone.
[[nodiscard]] std::optional<std::string> WebCommand(const std::string& page, Surroundings& surroundings) {
    const std::string fileType = surroundings.ClassText(".htm");
    surroundings.Note(fileType + "1:");
    if (fileType.empty()) return std::nullopt;
    const std::string handler = surroundings.ClassText(fileType + std::string(openCommandKey));
    surroundings.Note(handler + "2:");
    if (handler.empty() || ProgramIsMissing(handler, surroundings)) return std::nullopt;
    return BrowserCommand(page, handler, surroundings.LongestCommand());
}

[[nodiscard]] std::string_view ShellPrefix(std::string_view command, Shell shell) {
    if (shell == Shell::Start) return start;
    return IsMail(command) || Contains(command, "://") ? "cmd /c start " : "cmd /c ";
}

// What begins with "www." is no file, though one of that name may lie in the current folder (".com" is a program's
// ending).
[[nodiscard]] std::string AsAddress(std::string_view file) {
    const bool isWeb = platform::ToLower(file.substr(0, 4)) == "www.";
    return (isWeb ? "http://" : "") + std::string(file);
}

[[nodiscard]] CommandLine Chosen(const std::string& command, Surroundings& surroundings, Shell shell) {
    if (IsMail(command)) {
        const std::string handler = surroundings.ClassText("mailto" + std::string(openCommandKey));
        if (!handler.empty()) return {MailCommand(command, handler, surroundings.LongestCommand()), true};
    }
    std::string text = Quote(command);
    if (IsWeb(text)) {
        if (auto browser = WebCommand(text, surroundings)) return {*browser, true};
    }
    if (IsMail(command)) text = WithoutBlanks(text);
    return {text.insert(0, ShellPrefix(command, shell)), false};
}

}  // namespace

CommandLine Build(const std::string& command, Surroundings& surroundings, Shell shell) {
    CommandLine line = Chosen(command, surroundings, shell);
    line.text = WithVariables(Replace(line.text, "\"\"", quote), surroundings);
    return line;
}

std::string WithVariables(std::string text, Surroundings& surroundings) {
    std::vector<std::string> tried;  // variables with the "%" around them
    std::size_t from = 0;
    while (tried.size() < mostExpansions) {
        const std::size_t first = text.find('%', from);
        if (first == std::string::npos) return text;
        const std::size_t second = text.find('%', first + 1);
        if (second == std::string::npos) return text;
        from = second + 1;
        const std::string variable = text.substr(first, from - first);
        if (std::find(tried.begin(), tried.end(), variable) != tried.end()) continue;
        const std::string value = surroundings.Variable(text.substr(first + 1, second - first - 1));
        if (value.empty() || Contains(value, quote)) continue;
        tried.push_back(variable);
        auto expansion = Everywhere(text, variable, value, from, surroundings.LongestCommand());
        if (!expansion) continue;
        text = std::move(expansion->text);
        from = expansion->end;
    }
    return text;
}

Target StartTarget(std::string_view commandLine) {
    if (commandLine.starts_with(start)) commandLine.remove_prefix(start.size());
    if (!commandLine.starts_with('"')) return {AsAddress(commandLine), {}};
    commandLine.remove_prefix(1);
    const std::size_t end = std::min(commandLine.find('"'), commandLine.size());
    std::string_view arguments = commandLine.substr(std::min(end + 1, commandLine.size()));
    arguments.remove_prefix(std::min(arguments.find_first_not_of(' '), arguments.size()));
    return {AsAddress(commandLine.substr(0, end)), std::string(arguments)};
}

Target AsProgram(const Target& target) {
    const std::size_t blank = target.file.find(' ');
    if (blank == std::string::npos || !target.arguments.empty()) return {};
    const std::string program = target.file.substr(0, blank);
    if (program.find_first_of("\\/:") != std::string::npos) return {};
    return {program, target.file.substr(blank + 1)};
}

std::string WithPoint(std::string_view extension) {
    return extension.starts_with('.') ? std::string(extension) : "." + std::string(extension);
}

std::string WithQuotedMark(std::string_view openCommand) {
    return Replace(Replace(openCommand, "\"%1\"", "\"%l\""), "%1", "\"%l\"");
}

std::string ForDocument(std::string_view openCommand, std::string_view document) {
    return Replace(openCommand, "\"%l\"", std::string(quote).append(document).append(quote));
}

}  // namespace ExecText
