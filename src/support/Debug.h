// support/Debug.h: the debug log, in which every procedure reports its entry, exit and errors.
//
// Shapes  An entry is a text and a code: 0 at a procedure's entry, 999 at its exit, -1 for free text, any other
//         number is written behind the text. The lines are those of LogLine.h; each ends with CR LF.
// Errors  none: a line that cannot be written is lost. The pending error is written before the entry and stays
//         pending; the thread's last error stays too.
// Effects The log file (DebugMode other than 0) or the default value of one registry key (-1) is written and closed
//         with every entry. Off, nothing is formatted, copied or read, except that every 256th call asks whether the
//         log is to be switched on. Running out of memory and components that do not load (7, 372, 374) are shown in
//         a message box even then, each once until
//         a whole event has passed without it.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Err.h"

namespace Debug {

struct State {
    bool DebugActive = false;         // the log is on
    bool Muted = false;               // entries are dropped: the log is being set up, or writes one
    bool DebugInIde = false;          // never true in the product
    std::int32_t DebugLevel = 0;      // the mode in force: -1 registry, any other a file; 16: with time stamps
    bool DebugStampsWanted = false;   // bit 16 of the mode before an unclean end took it away; not read
    std::int32_t DebugCallCount = 0;  // entries reported while the log was off
    std::int32_t OpenProcedures = 0;  // that trace themselves
    std::int32_t ShownFailure = 0;    // the number of the shortage that was shown, until it has gone
    bool FailureSeen = false;         // since the outermost procedure began
    std::string DebugFile;            // whole path; empty until the first set-up
    std::string DebugIndent;          // one blank for each procedure that is open
    std::string DebugKey;             // the add-in's registry key, below HKEY_CURRENT_USER
};

extern State state;

// What the log needs of the floors above it; DebugSetup.h fills it. Where nothing is plugged in, the log stays off
// and a registry trace is lost.
struct Ports {
    std::string (*readMode)(const std::string& key) = nullptr;  // "DebugMode" below DebugKey
    void (*writeTrace)(const std::string& entry) = nullptr;
    void (*switchOn)() = nullptr;  // sets the log up without a question
};

// Returns what was plugged in before.
Ports Plug(const Ports& ports) noexcept;

// All that happens while the log is off stands in the calling function, also where the compiler is told to save room.
namespace detail {

// While the log is on, writes the pending error and then the entry; shows a shortage even when it is off.
void Report(std::string& text, std::int32_t code) noexcept;
void Report(std::string_view text, std::int32_t code) noexcept;
void AskForMode() noexcept;

[[nodiscard, gnu::always_inline]] inline bool HasSomethingToReport() noexcept {
    return state.DebugActive || platform::Err();
}

// A shortage has gone once a whole event passed without it.
inline void EndOutermost() noexcept {
    if (!std::exchange(state.FailureSeen, false)) state.ShownFailure = 0;
}

[[gnu::always_inline]] inline void CountCall() noexcept {
    state.DebugCallCount = static_cast<std::int32_t>(static_cast<std::uint32_t>(state.DebugCallCount) + 1u);
    if ((state.DebugCallCount & 255) == 255) AskForMode();
}

}  // namespace detail

// Folds the umlauts in the caller's own text when the log is on and `code` is -1.
inline void WriteDebug(std::string& text, std::int32_t code) noexcept {
    detail::HasSomethingToReport() ? detail::Report(text, code) : detail::CountCall();
}

inline void WriteDebug(std::string_view text, std::int32_t code) noexcept {
    detail::HasSomethingToReport() ? detail::Report(text, code) : detail::CountCall();
}

inline void WriteDebug(const char* text, std::int32_t code) noexcept {
    detail::HasSomethingToReport() ? detail::Report(std::string_view(text), code) : detail::CountCall();
}

// Reports the entry of the procedure in whose first line it stands, and its exit.
class Trace {
  public:
    // The name is kept as it is: a text that lives as long as the program.
    explicit Trace(const char* name) noexcept : name_(name) {
        WriteDebug(name_, 0);
        ++state.OpenProcedures;
    }
    ~Trace() {
        WriteDebug(name_, 999);
        if (--state.OpenProcedures == 0) detail::EndOutermost();
    }
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

  private:
    const char* name_;
};

}  // namespace Debug
