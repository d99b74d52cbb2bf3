// What the add-in costs beyond the calls that it must make. One session is recorded (bench/replay): every call of the
// host and of the registry, every picture that is loaded and put on a button, every file that is read or asked for its
// time, the start of a program. Then a bare loop makes the same calls again, in sessions like it, in turns with the
// add-in itself. Of each event the shortest times of a turn are held against each other, and the median of the turns'
// ratios counts, so that one lucky moment on a busy machine does not. The stand-in's own work is in both. Each building
// of a menu reads settings and texts anew, because they may have changed; what these files take is shown by a second
// replay that leaves them out.
#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/AddIns.h"
#include "bench/Bench.h"
#include "bench/ImportCounter.h"
#include "bench/MainApplication.h"
#include "bench/PrivateKey.h"
#include "bench/replay/Player.h"
#include "bench/replay/Recorder.h"
#include "outlook/Outlook.h"

namespace {

using Bench::Library;
using Bench::Step;
using standin::FolderKind;
using standin::Outlook;

constexpr double nearTheReplay = 1.25;
constexpr int turns = 9;
constexpr int starts = 4;  // of each turn: a start is long, and seldom without other work on the machine

enum Event { Start, PlainSwitch, ButtonSwitch, Opening, Click, Disconnection, Connection, eventCount };
constexpr const char* eventNames[] = {
    "start with menus",
    "folder switch without a button's change",
    "folder switch that changes the button",
    "opening an Inspector",
    "click to the process start",
    "OnDisconnection",
    "OnConnection with two windows",
};

[[noreturn]] void GiveUp(const std::string& why) {
    std::printf("nothing was measured: %s\n", why.c_str());
    std::exit(2);
}

// Of each event the shortest time, in nanoseconds, and the calls of the host in the first one of a session.
struct Taken {
    std::array<double, eventCount> shortest;
    std::array<int, eventCount> calls{};
    Taken() { shortest.fill(1e30); }

    void Add(const Taken& other) {
        for (std::size_t event = 0; event < eventCount; ++event)
            shortest[event] = std::min(shortest[event], other.shortest[event]);
        calls = other.calls;
    }
};

// A session is always the same, with whichever add-in it is given. The short one only starts and ends.
enum class Length { Short, Whole };

class Session {
  public:
    Session(int version, IUnknown* factory, const Bench::MainApplication& main)
        : outlook_({.version = version}), main_(main) {
        outlook_.IgnoreRegistry();
        outlook_.UseAddIn(Bench::progId, factory);
        contact_ = outlook_.AddItem(FolderKind::Contacts, {{"FullName", "Ann Baker"}});
    }

    Taken Play(Length length) {
        standin::Window window;
        Time(Start, 1, [&] {
            outlook_.Start();
            window = outlook_.OpenExplorer(FolderKind::Inbox);  // the second: its events are sunk by every version
        });
        if (length == Length::Whole) PlayDay(window);
        outlook_.Quit();
        return taken_;
    }

  private:
    void PlayDay(standin::Window window) {
        const auto switchTo = [&](FolderKind folder) { outlook_.SwitchFolder(window, folder); };
        const auto thereAndBack = [&](FolderKind folder) {
            switchTo(folder);
            switchTo(FolderKind::Inbox);
        };
        for (int i = 0; i < 4; ++i) Time(PlainSwitch, 20, [&] { thereAndBack(FolderKind::Tasks); });
        for (int i = 0; i < 4; ++i) Time(ButtonSwitch, 2, [&] { thereAndBack(FolderKind::Contacts); });
        for (int i = 0; i < 4; ++i) {
            standin::Window inspector;
            Time(Opening, 1, [&] { inspector = outlook_.OpenInspector(contact_); });
            outlook_.CloseWindow(inspector);
        }
        const standin::ControlView entry = outlook_.FindCaption(outlook_.Windows().front(), "Synchronize");
        if (!entry) GiveUp("there is no menu");
        for (int i = 0; i < 3; ++i) {
            Time(Click, 1, [&] { outlook_.Click(entry); });
            main_.WaitForEnd();
        }
        for (int i = 0; i < 4; ++i) {
            Time(Disconnection, 1, [&] { outlook_.UnloadAddIn(Bench::progId); });
            Time(Connection, 1, [&] { outlook_.LoadAddIn(Bench::progId); });
        }
    }

    template <class Work>
    void Time(Event event, int times, Work&& work) {
        const bool first = taken_.calls[event] == 0;
        if (first) outlook_.ResetCalls();
        taken_.shortest[event] = std::min(taken_.shortest[event], Bench::NanosecondsPerCall(times, work));
        if (first) taken_.calls[event] = outlook_.Calls() / times;
    }

    Outlook outlook_;
    const Bench::MainApplication& main_;
    standin::Item contact_;
    Taken taken_;
};

class Version {
  public:
    Version(int number, const Library& library, const Bench::MainApplication& main)
        : number_(number), library_(library), main_(main) {}

    void Measure(Bench::Report& report, const std::string& name) {
        Play(Length::Whole);  // what is set up once is there
        const Taken recorded = Record(Length::Whole);
        Record(Length::Short);
        Taken shortest;
        std::array<std::vector<double>, eventCount> ratios, withoutFiles;
        for (int turn = 0; turn < turns; ++turn) {
            const Turn taken = TakeTurn();
            if (taken.bare.calls != taken.whole.calls || taken.bare.calls != recorded.calls)
                GiveUp("the replay makes another number of calls");
            shortest.Add(taken.whole);
            for (std::size_t event = 0; event < eventCount; ++event) {
                ratios[event].push_back(taken.whole.shortest[event] / taken.bare.shortest[event]);
                withoutFiles[event].push_back(taken.whole.shortest[event] / taken.withoutFiles.shortest[event]);
            }
        }
        const auto add = [&](std::size_t event, const char* what, const std::vector<double>& found, double target) {
            const double time = shortest.shortest[event];
            report.Add(name + eventNames[event] + what, Bench::Medians{time / Bench::Median(found), time}, target);
        };
        for (std::size_t event = 0; event < eventCount; ++event)
            add(event, ", against its calls", ratios[event], nearTheReplay);
        for (const Event event : {Start, Connection})
            add(event, ", the same without files", withoutFiles[event], Bench::none);
    }

  private:
    struct Turn {
        Taken bare, withoutFiles, whole;
    };

    [[nodiscard]] Turn TakeTurn() const {
        Turn turn;
        const auto play = [&](Length length) {
            turn.bare.Add(Replay(length, Bench::Files::Read));
            turn.withoutFiles.Add(Replay(length, Bench::Files::LeftOut));
            turn.whole.Add(Play(length));
        };
        for (int start = 0; start < starts; ++start) play(Length::Short);
        play(Length::Whole);
        return turn;
    }

    Taken With(IUnknown* factory, Length length) const { return Session(number_, factory, main_).Play(length); }
    Taken Play(Length length) const { return With(library_.Factory(), length); }
    [[nodiscard]] const std::shared_ptr<const Bench::Tape>& TapeOf(Length length) const {
        return length == Length::Short ? start_ : whole_;
    }

    // The tape of one session, held against what is counted elsewhere.
    Taken Record(Length length) {
        Bench::Recorder recorder(library_.module, library_.Factory());
        const ImportCounter registry(library_.module, "ADVAPI32.dll", "Reg");
        const Taken taken = With(recorder.Factory(), length);
        if (!recorder.Whole()) GiveUp("the add-in did what cannot be recorded");
        const std::shared_ptr<const Bench::Tape> tape = recorder.Finish();
        if (tape->Count(Step::Kind::RegistryCall) != static_cast<int>(registry.Calls()))
            GiveUp("not all calls of the registry were recorded");
        (length == Length::Short ? start_ : whole_) = tape;
        return taken;
    }

    [[nodiscard]] Taken Replay(Length length, Bench::Files files) const {
        const Bench::Tape& tape = *TapeOf(length);
        Bench::Player player(TapeOf(length), files);
        const Taken taken = With(player.Factory(), length);
        if (!player.Whole()) GiveUp("the replay went another way");
        for (const Step::Kind kind : {Step::Kind::HostCall, Step::Kind::RegistryCall, Step::Kind::PictureCall,
                                      Step::Kind::FileCall, Step::Kind::ProgramStart}) {
            const bool leftOut = kind == Step::Kind::FileCall && files == Bench::Files::LeftOut;
            if (player.Made(kind) != (leftOut ? 0 : tape.Count(kind))) GiveUp("the replay left calls out");
        }
        return taken;
    }

    int number_;
    const Library& library_;
    const Bench::MainApplication& main_;
    std::shared_ptr<const Bench::Tape> start_, whole_;
};

}  // namespace

int main(int argc, char** argv) {
    CoInitialize(nullptr);
    Bench::Report report;
    {
        const PrivateKey privateKey;
        const Bench::MainApplication mainApplication;
        const Library library(Bench::Folder() + "\\CVOutlookAddIn.dll", Bench::ourClass);
        const std::pair<int, const char*> versions[] = {{9, "2000"}, {10, "2002"}, {11, "2003"}, {12, "2007"}};
        for (const auto& [version, year] : versions)
            Version(version, library, mainApplication).Measure(report, "Outlook " + std::string(year) + ": ");
    }
    return report.Finish(argc, argv);
}
