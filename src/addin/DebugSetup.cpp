#include "addin/DebugSetup.h"

#include <utility>

#include "config/IniFile.h"
#include "language/Language.h"
#include "platform/Err.h"
#include "platform/File.h"
#include "platform/Instance.h"
#include "platform/LastError.h"
#include "platform/Text.h"
#include "support/CommandLine.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/LogLine.h"
#include "support/Product.h"
#include "support/Prompt.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using Debug::WriteDebug;
using platform::Root;

namespace DebugSetup {
namespace {

constexpr const char* virusScannerKey = "SOFTWARE\\KasperskyLab\\InstalledProducts\\Kaspersky Anti-Virus Personal";

constexpr std::int32_t modesAfterUncleanEnd = 15;
constexpr std::int32_t defaultMaxSize = 4000000;

constexpr std::int32_t virusScannerMessage = 232;

// For a language file that lacks the questions.
constexpr const char* defaultUncleanQuestion =
    "Corvella was not closed properly the last time.\r\rTurn on debug mode? The log file is %f.%e";
constexpr const char* defaultKeepQuestion = "Debug mode is on, which makes Outlook slower.\r\rTurn it off?";

Ports plugged;

// What the registry and the settings say when the set-up begins.
struct Start {
    bool anotherInstance = false;
    std::int32_t active = 0;  // not 0: the session before this one did not end cleanly
    std::int32_t mode = 0;
};

// Entries are dropped as long as one lives: the set-up's questions log too, and the
// first line of a new log file is its "start".
class Silence {
  public:
    Silence() noexcept : earlier_(std::exchange(Debug::state.Muted, true)) {}
    ~Silence() { Debug::state.Muted = earlier_; }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

  private:
    bool earlier_;
};

std::int32_t AddInNumber(const char* name) {
    return platform::ValLong(RegEdit::GetRegString(Root::CurrentUser, Debug::state.DebugKey, name));
}

void FindSettings() {
    if (IniFile::location.CurrentFile.empty() && plugged.findSettings != nullptr) plugged.findSettings();
}

std::int32_t ModeInBaseSettings() {
    FindSettings();
    return platform::ValLong(IniFile::GetIniSettingDefault("Debug", "DebugMode"));
}

std::int32_t MaxSize() {
    const Silence silence;
    FindSettings();
    return IniFile::GetIniSettingLong("Debug", "MaxSize", defaultMaxSize);
}

bool AnotherInstanceRuns() {
    return plugged.anotherInstanceRuns == nullptr ? platform::AnotherInstanceRuns() : plugged.anotherInstanceRuns();
}

bool HostWasRestarted() {
    const std::string commandLine =
        plugged.hostCommandLine == nullptr ? platform::HostCommandLine() : plugged.hostCommandLine();
    return CommandLine::Arguments(commandLine) == "restart";
}

Start LookAround() {
    Start start;
    start.anotherInstance = AnotherInstanceRuns();
    if (!start.anotherInstance) {
        start.active = AddInNumber("Active");
        start.mode = AddInNumber("DebugMode");
        if (start.mode == 0) start.mode = ModeInBaseSettings();
    }
    return start;
}

std::string Message(const char* key, const char* defaultText) {
    const std::string text = Language::GetLanguageString("Messages", key);
    return text.empty() ? defaultText : text;
}

bool AnswersFirstButton(std::string question) {
    return Prompt::Ask(Prompt::Id::Plain, question, Prompt::Style::OKCancel | Prompt::Style::Question, {}) ==
           Prompt::Answer::OK;
}

std::string UncleanQuestion() {
    std::string question = Message("Debug1", defaultUncleanQuestion);
    question = platform::Replace(question, "%e", {});
    question = platform::Replace(question, "Corvella", "Corvella AddIn");
    return platform::Replace(question, "%f", Debug::state.DebugFile);  // last: its path stays as it is
}

void SetUpAfterUncleanEnd(const Start& start, bool force) {
    Debug::State& log = Debug::state;
    const std::string question = UncleanQuestion();
    const bool switchOn = force || (!start.anotherInstance && AnswersFirstButton(question));
    if (!switchOn) {
        log.DebugLevel = start.mode;
        return;
    }
    if (log.DebugLevel > 0) CheckKaspersky();
    log.DebugStampsWanted = (start.mode & LogLine::WithTimeStamps) != 0;
    const std::int32_t lowBits = start.mode & modesAfterUncleanEnd;
    log.DebugLevel = lowBits == 0 ? 1 : lowBits;
    log.DebugActive = true;
}

void SetUpAfterCleanEnd(const Start& start, bool force) {
    Debug::State& log = Debug::state;
    log.DebugLevel = start.mode;
    if (log.DebugLevel == 0) return;
    const bool switchOff = !force && AnswersFirstButton(Message("Debug2", defaultKeepQuestion));
    if (switchOff) {
        RegEdit::SaveRegValue(Root::CurrentUser, log.DebugKey, "DebugMode", {}, RegEdit::TypeText);
        log.DebugLevel = 0;
        log.DebugActive = false;
    } else if (log.DebugLevel > 0) {
        CheckKaspersky();
    }
}

void ChooseMode(bool force) {
    Debug::State& log = Debug::state;
    const Silence silence;
    Start start = LookAround();
    log.DebugActive = start.mode != 0;
    if (log.DebugFile.empty()) log.DebugFile = LogLine::FilePath(Files::AppFolder(), Product::Name);
    if (HostWasRestarted()) start.active = 0;
    if (start.active != 0) {
        SetUpAfterUncleanEnd(start, force);
    } else {
        SetUpAfterCleanEnd(start, force);
    }
}

void RemoveOldLog(const std::string& logFile) {
    const std::string oldLog = LogLine::OldFilePath(logFile);
    if (oldLog != logFile && platform::PathExists(oldLog)) platform::RemoveFile(oldLog);
}

void BeginLog() {
    Debug::State& log = Debug::state;
    log.DebugActive = true;
    log.DebugFile = LogLine::WithoutQuotes(log.DebugFile);
    RemoveOldLog(log.DebugFile);
    if (log.DebugLevel == LogLine::RegistryTrace) return;
    const std::optional<std::uint64_t> size = platform::FileSize(log.DebugFile);
    const bool tooLong = size && static_cast<std::int64_t>(*size) > MaxSize();
    if (tooLong) platform::RemoveFile(log.DebugFile);
    if (tooLong || !size) WriteDebug("start", 0);
    platform::AppendToFile(log.DebugFile, "\r\n");
}

// The key may also hold a section "Debug" of the settings, where these are kept in the registry.
void ForgetTrace() { RegEdit::DeleteDefaultValue(Root::CurrentUser, RegistryKeys::DebugTrace); }

void SetUp(bool force, bool keyOnly) {
    Debug::State& log = Debug::state;
    const bool setUpAlready = !log.DebugFile.empty() && !force;
    if (setUpAlready && !log.DebugActive) return;
    if (!setUpAlready) {
        log.DebugIndent.clear();
        log.DebugActive = false;
        log.DebugKey = RegistryKeys::AddIn;
        if (keyOnly) return;
        ChooseMode(force);
    }
    if (setUpAlready || log.DebugLevel != 0) BeginLog();
    ForgetTrace();
}

std::string ReadMode(const std::string& key) { return RegEdit::GetRegString(Root::CurrentUser, key, "DebugMode"); }

void WriteTrace(const std::string& entry) {
    RegEdit::SaveRegValue(Root::CurrentUser, std::string_view(RegistryKeys::DebugTrace), {}, entry, RegEdit::TypeText);
}

void SwitchOn() { InitDebug(true, false); }

}  // namespace

void InitDebug(bool force, bool keyOnly) noexcept {
    const platform::LastErrorScope lastError;
    const platform::ErrorScope pending;
    try {
        SetUp(force, keyOnly);
    } catch (...) {  // the log stays as far as it got
    }
}

void CheckKaspersky() {
    if (RegEdit::GetRegString(Root::LocalMachine, virusScannerKey, "Folder").empty()) return;
    Prompt::Message(Prompt::Id::VirusScanner, virusScannerMessage, Prompt::Style::Information);
}

bool IsInIde() noexcept { return Debug::state.DebugInIde; }

Debug::Ports PortsOfDebug() noexcept { return {ReadMode, WriteTrace, SwitchOn}; }

Ports Plug(const Ports& ports) noexcept { return std::exchange(plugged, ports); }

}  // namespace DebugSetup
