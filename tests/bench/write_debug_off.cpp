// What a call of WriteDebug costs while the log is off, in calls of an empty function: in turns with that, and by the
// shortest times, since other work slows the whole processor down. Built for Windows and natively: no call of Windows
// is in it, but that of every 256th call, which is measured apart (under Windows alone).
#include "bench/Bench.h"
#include "support/Debug.h"
#ifdef _WIN32
#include "bench/PrivateKey.h"
#include "support/RegEdit.h"
#endif

namespace {

// Neither inlined nor known to do nothing.
[[gnu::noinline]] void EmptyCall(const char*, int) { Bench::Touch(); }

constexpr int rounds = 4001;
constexpr int calls = 20000;  // a fraction of a time slice: even a busy machine leaves a few of the rounds alone
constexpr double target = 3;  // some 3.6 ns, where nothing else is at work

#ifdef _WIN32
std::string ReadMode(const std::string& key) {
    return RegEdit::GetRegString(RegEdit::Root::CurrentUser, key, "DebugMode");
}
const std::string where = " (Windows)";
#else
const std::string where = " (native)";
#endif

}  // namespace

int main(int argc, char** argv) {
    Bench::Report report;
    const auto nothing = [] {};
    const auto emptyCall = [] { EmptyCall("AddChangedItem", 0); };
    std::string text = "a text of the caller's, too long to be stored inside of its string";
    const std::string_view view = text;
    report.Add(
        "WriteDebug off, name of a procedure" + where,
        Bench::TakeTurnsForMinima(rounds, calls, nothing, emptyCall, [] { Debug::WriteDebug("AddChangedItem", 0); }),
        target);
    report.Add("WriteDebug off, the caller's text" + where,
               Bench::TakeTurnsForMinima(rounds, calls, nothing, emptyCall, [&] { Debug::WriteDebug(text, -1); }),
               target);
    report.Add("WriteDebug off, a view" + where,
               Bench::TakeTurnsForMinima(rounds, calls, nothing, emptyCall, [&] { Debug::WriteDebug(view, 5); }),
               target);
    report.Add("Trace off, a whole procedure: two calls" + where,
               Bench::TakeTurnsForMinima(rounds, calls, nothing, emptyCall,
                                         [] { const Debug::Trace trace("AddChangedItem"); }),
               2 * target);
#ifdef _WIN32
    const PrivateKey key;
    Debug::state.DebugKey = "Software\\Quillmark\\Corvella\\OlAddIn";
    Debug::Plug({ReadMode, nullptr, [] {}});
    report.Add("WriteDebug off with its share of the registry read" + where,
               Bench::MedianOf(21, 256 * 40, [] { Debug::WriteDebug("AddChangedItem", 0); }));
#endif
    return report.Finish(argc, argv);
}
