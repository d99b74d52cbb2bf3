// shell/ExecText.h: how a document, web address or e-mail address becomes a command line. Pure text: no Windows
// header, no globals; what the system around it says comes through an interface.
//
// Shapes  ANSI bytes. Marks for the document in a registered command are "%1" and "%l". Searches in
//         them are case-sensitive. Windows-125x only: a second byte of a two-byte
//         character may be taken for a backslash.
// Errors  none: every text has a reading; what the system does not know is the empty text.
// Bounds  A variable is expanded once in a command, in all places where it is spelled the same, so that one whose
//         value names itself ends, and at most mostExpansions are. A replacement that would make the command longer
//         than the system takes is left out, for good; so is a value with a double quote, which would end the
//         handler's own.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace ExecText {

inline constexpr std::size_t longestCommand = 32767;
inline constexpr std::size_t mostExpansions = 1000;

// What the registry, the environment and the disk hold, the log, and what Windows takes.
class Surroundings {
  public:
    virtual ~Surroundings() = default;
    // The default value of a key below HKEY_CLASSES_ROOT.
    [[nodiscard]] virtual std::string ClassText(const std::string& key) = 0;
    [[nodiscard]] virtual std::string Variable(const std::string& name) = 0;
    [[nodiscard]] virtual bool FileExists(const std::string& path) = 0;
    virtual void Note(const std::string& text) = 0;
    [[nodiscard]] virtual std::size_t LongestCommand() const { return longestCommand; }
};

// How a command is written that has no program of its own.
enum class Shell : std::uint8_t { Start, CommandInterpreter };

struct CommandLine {
    std::string text;
    bool direct = false;  // names a program; otherwise the shell is to start something
};
[[nodiscard]] CommandLine Build(const std::string& command, Surroundings& surroundings, Shell shell = Shell::Start);

// What a command of the shell ("start ...") starts.
struct Target {
    std::string file, arguments;
};
// The file is what stands in double quotes, or all of it where it begins with none. What begins with "www." becomes
// a web address.
[[nodiscard]] Target StartTarget(std::string_view commandLine);
// The file of `target` as a program and its arguments, for one that is no file; the empty file where it does not
// look like one: with a folder or a drive before its first blank it is the path of something that is missing.
[[nodiscard]] Target AsProgram(const Target& target);

[[nodiscard]] std::string WithVariables(std::string text, Surroundings& surroundings);

// --- registered commands

[[nodiscard]] std::string WithPoint(std::string_view extension);
// Every mark for the document written as "%l" in double quotes.
[[nodiscard]] std::string WithQuotedMark(std::string_view openCommand);
// `openCommand`, so written, with `document` in the quotes of its marks.
[[nodiscard]] std::string ForDocument(std::string_view openCommand, std::string_view document);

}  // namespace ExecText
