#include "shell/WindowsMiscLaunch.h"

#include "platform/Clock.h"
#include "platform/Environment.h"
#include "platform/Err.h"
#include "platform/Process.h"
#include "shell/ExecText.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/RegEdit.h"

using Debug::WriteDebug;
using platform::Show;
using RegEdit::Root;

namespace WindowsMisc {
namespace {

constexpr const char* fileExtensions = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\";
constexpr const char* openCommand = "\\shell\\open\\command";
constexpr std::uint32_t searchPause = 10;  // milliseconds

[[nodiscard]] std::string ClassText(const std::string& key) {
    return RegEdit::GetRegString(Root::ClassesRoot, key, {});
}

class ThisMachine : public ExecText::Surroundings {
  public:
    std::string ClassText(const std::string& key) override { return WindowsMisc::ClassText(key); }
    std::string Variable(const std::string& name) override { return platform::EnvironmentVariable(name); }
    bool FileExists(const std::string& path) override { return Files::FileExists(path); }
    void Note(const std::string& text) override {
        std::string note = text;  // the log folds the umlauts of what it is given
        WriteDebug(note, -1);
    }
};

// "start" belongs to the command interpreter and would take a path in double quotes for the title of its window; the
// desktop itself opens the same things without a console and without a second reading of the text.
void StartThroughDesktop(const ExecText::Target& target) {
    if (platform::StartDocument(target.file, target.arguments, Show::Minimised)) return;
    const ExecText::Target program = ExecText::AsProgram(target);
    if (!program.file.empty()) platform::Err().Clear();
    platform::StartDocument(program.file, program.arguments, Show::Minimised);
}

[[nodiscard]] std::string OpenCommandOf(const std::string& fileType) {
    return fileType.empty() ? std::string() : ClassText(fileType + openCommand);
}

}  // namespace

void ExecApp(const std::string& command, std::int32_t) {
    const platform::ErrorScope swallowed;
    const Debug::Trace trace("ExecApp");
    ThisMachine machine;
    const ExecText::CommandLine line = ExecText::Build(command, machine);
    machine.Note("ExecApp: " + line.text);
    if (line.direct) {
        platform::StartProcess(line.text, Show::Normal);
    } else {
        StartThroughDesktop(ExecText::StartTarget(line.text));
    }
}

std::string GetApplForExt(const std::string& extension) {
    const Debug::Trace trace("GetApplForExt");
    const std::string suffix = ExecText::WithPoint(extension);
    const std::string chosenByUser = RegEdit::GetRegString(Root::CurrentUser, fileExtensions + suffix, "ProgID");
    std::string command = OpenCommandOf(chosenByUser);
    if (command.empty()) command = OpenCommandOf(ClassText(suffix));
    return ExecText::WithQuotedMark(command);
}

platform::WindowHandle FindWindowByTitle(std::string_view title, platform::Whose whose) {
    const platform::WindowHandle found = platform::TopWindowWithTitle(title, whose);
    platform::Pause(searchPause);
    platform::RunPendingMessages();
    return found;
}

}  // namespace WindowsMisc
