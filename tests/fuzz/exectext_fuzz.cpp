// Any command on any machine: it comes to an end, stays within its bounds, and changes nothing that nobody knows.
#include <algorithm>
#include <map>

#include "Fuzz.h"
#include "shell/ExecText.h"

namespace {

// A machine whose answers are the input's own. Names are short, so that they meet those of the command.
class Machine : public ExecText::Surroundings {
  public:
    explicit Machine(fuzz::Input& input) {
        for (std::uint8_t count = input.Byte() % 6; count > 0; --count) {
            const std::string name = input.Text(1 + input.Byte() % 2);
            variables_[name] = input.Text(input.Byte() % 64);
        }
        mail_ = input.Text(input.Byte() % 48);
        fileType_ = input.Text(input.Byte() % 4);
        browser_ = input.Text(input.Byte() % 48);
        filesExist_ = input.Byte();
        if (input.Byte() != rareMark) longest_ = shortened;
    }

    std::string ClassText(const std::string& key) override {
        if (key == ".htm") return fileType_;
        return key == "mailto\\shell\\open\\command" ? mail_ : browser_;
    }
    std::string Variable(const std::string& name) override {
        fuzz::Expect(++asked_ <= mostQuestions, "the search for variables comes to an end");
        const auto found = variables_.find(name);
        return found == variables_.end() ? "" : found->second;
    }
    bool FileExists(const std::string& path) override { return (path.size() + filesExist_) % 2 == 0; }
    void Note(const std::string&) override { ++notes_; }
    [[nodiscard]] std::size_t LongestCommand() const override { return longest_; }

    void Forget() { variables_.clear(); }
    [[nodiscard]] int Notes() const { return notes_; }

  private:
    // Every question is answered by going on to the next pair of signs or by the first use of a variable.
    static constexpr std::size_t mostQuestions = 8 * ExecText::longestCommand;
    // Commands that grow to all that Windows takes need their time, so most machines take less.
    static constexpr std::size_t shortened = 700;
    static constexpr std::uint8_t rareMark = 0x5A;

    std::map<std::string, std::string> variables_;
    std::string mail_, fileType_, browser_;
    std::size_t filesExist_ = 0, asked_ = 0, longest_ = ExecText::longestCommand;
    int notes_ = 0;
};

void LookAtTarget(const std::string& text) {
    const ExecText::Target target = ExecText::StartTarget(text);
    fuzz::Expect(target.file.size() + target.arguments.size() <= text.size(), "a target is part of its command");
    const ExecText::Target program = ExecText::AsProgram(target);
    fuzz::Expect(program.file.find_first_of("\\/: ") == std::string::npos, "a program is a bare name");
    fuzz::Expect(program.file.empty() || target.file == program.file + " " + program.arguments,
                 "a program and its arguments are the whole target");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    Machine machine(input);
    const auto shell = (input.Byte() & 1) != 0 ? ExecText::Shell::Start : ExecText::Shell::CommandInterpreter;
    const std::string command = input.Text(size);

    const ExecText::CommandLine line = ExecText::Build(command, machine, shell);
    const std::size_t asWritten = 4 * command.size() + 128;  // each blank as "%20", prefix or handler, double quotes
    fuzz::Expect(line.text.size() <= std::max(machine.LongestCommand(), asWritten), "a command keeps its bound");
    fuzz::Expect(machine.Notes() == 0 || machine.Notes() == 1 || machine.Notes() == 2, "at most two notes are taken");
    if (!line.direct) LookAtTarget(line.text);

    machine.Forget();
    fuzz::Expect(ExecText::WithVariables(command, machine) == command, "without variables nothing changes");

    const std::string opening = ExecText::WithQuotedMark(command);
    fuzz::Expect(opening.find("%1") == std::string::npos, "a registered command keeps one kind of mark");
    const std::string filled = ExecText::ForDocument(opening, "D");
    fuzz::Expect(filled.size() <= opening.size(), "a document takes the place of its mark");
    return 0;
}
