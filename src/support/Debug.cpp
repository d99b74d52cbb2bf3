#include "support/Debug.h"

#include <utility>

#include "platform/Clock.h"
#include "platform/File.h"
#include "platform/LastError.h"
#include "platform/Locale.h"
#include "platform/MessageBox.h"
#include "platform/Text.h"
#include "support/LogLine.h"
#include "support/Prompt.h"

namespace Debug {

State state;

namespace {

constexpr std::uint32_t westernCodePage = 1252;  // elsewhere the same bytes are other letters

Ports plugged;

bool IsLoadFailure(std::int32_t number) {
    return number == platform::OutOfMemory || number == platform::ComponentNotLoaded ||
           number == platform::ComponentTooOld;
}

// The box pumps messages, so what is shown is noted before.
void ShowOnce(std::int32_t number, const std::string& error) {
    state.FailureSeen = true;
    if (std::exchange(state.ShownFailure, number) != number) {
        platform::ShowMessageBox(error, Prompt::Style::Warning);
    }
}

void ShowUnregisteredComponent(const std::string& error) {
    std::string prompt = "E#" + error;
    Prompt::Ask(Prompt::Id::Plain, prompt, Prompt::Style::OK, {});
}

// A failing registry write reports itself in the log, which must not lead back here.
void WriteTrace(const std::string& entry) {
    if (state.DebugInIde || plugged.writeTrace == nullptr) return;
    state.Muted = true;
    plugged.writeTrace(entry);
    state.Muted = false;
}

void AppendLines(const std::string& error, const std::string& entry) {
    std::string lines;
    if (!error.empty()) lines.append(state.DebugIndent).append(error).append("\r\n");
    if ((state.DebugLevel & LogLine::WithTimeStamps) != 0) {
        lines += LogLine::TimeStamp(platform::SecondsSinceMidnight(), platform::DecimalSeparator());
    }
    lines.append(state.DebugIndent).append(entry).append("\r\n");
    platform::AppendToFile(state.DebugFile, lines);
}

void WriteEntry(const std::string& error, std::string& text, std::int32_t code) {
    LogLine::IndentBefore(code, state.DebugIndent);
    if (code == LogLine::FreeText && platform::AnsiCodePage() == westernCodePage) LogLine::FoldUmlauts(text);
    const std::string entry = LogLine::EntryText(text, code);
    if (state.DebugLevel == LogLine::RegistryTrace) {
        WriteTrace(entry);
    } else {
        AppendLines(error, entry);
    }
    LogLine::IndentAfter(code, state.DebugIndent);
}

void ReportWithError(std::string& text, std::int32_t code) {
    const std::int32_t number = platform::Err().Number();
    if (!state.DebugActive && !IsLoadFailure(number)) return detail::CountCall();
    const std::string error = number == 0 ? std::string() : LogLine::ErrorText(number, platform::Err().Description());
    const platform::ErrorScope pending;
    if (IsLoadFailure(number)) ShowOnce(number, error);
    if (!state.DebugActive) return detail::CountCall();
    if (number == platform::ComponentNotRegistered) ShowUnregisteredComponent(error);
    if (!state.Muted) WriteEntry(error, text, code);
}

}  // namespace

Ports Plug(const Ports& ports) noexcept { return std::exchange(plugged, ports); }

void detail::Report(std::string& text, std::int32_t code) noexcept {
    const platform::LastErrorScope lastError;
    try {
        ReportWithError(text, code);
    } catch (...) {  // the entry is lost
    }
}

void detail::Report(std::string_view text, std::int32_t code) noexcept {
    const platform::LastErrorScope lastError;
    try {
        std::string own(text);
        ReportWithError(own, code);
    } catch (...) {  // the entry is lost
    }
}

void detail::AskForMode() noexcept {
    if (state.Muted || plugged.readMode == nullptr || plugged.switchOn == nullptr) return;
    const platform::LastErrorScope lastError;
    const platform::ErrorScope pending;
    try {
        if (platform::ValLong(plugged.readMode(state.DebugKey)) != 0) plugged.switchOn();
    } catch (...) {  // the log stays off
    }
}

}  // namespace Debug
