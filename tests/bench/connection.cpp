// What the add-in costs the host in everyday events, in every Outlook version: the time of each against the same event
// with an add-in that does nothing, both measured in turns, and its calls of the host and of the registry (the empty
// add-in makes none of either). The stand-in's own work is in all times.
#include <windows.h>

#include <objbase.h>

#include <cstdlib>
#include <memory>
#include <utility>

#include "bench/AddIns.h"
#include "bench/Bench.h"
#include "bench/ImportCounter.h"
#include "bench/MainApplication.h"
#include "bench/PrivateKey.h"
#include "config/IniFile.h"
#include "language/Language.h"
#include "outlook/Outlook.h"
#include "support/Files.h"
#include "testing/HostCalls.h"

namespace {

using Bench::emptyClass;
using Bench::Folder;
using Bench::Library;
using Bench::MainApplication;
using Bench::ourClass;
using standin::FolderKind;
using standin::Outlook;

constexpr int rounds = 15;
constexpr int mostCallsOfMenu = 60, mostCallsOfSwitch = 3;

// A host with one of the two add-ins in it.
class Host {
  public:
    Host(int version, const Library& library) : outlook_({.version = version}) {
        outlook_.IgnoreRegistry();
        outlook_.UseAddIn("CVOutlookAddIn.Connect", library.Factory());
        contact_ = outlook_.AddItem(FolderKind::Contacts, {{"FullName", "Ann Baker"}});
    }
    Outlook* operator->() { return &outlook_; }
    Outlook& operator*() { return outlook_; }

    void Start() {
        outlook_.Start();
        window_ = outlook_.OpenExplorer(FolderKind::Inbox);  // the second: its events are sunk by every version
        const standin::ControlView ours = outlook_.FindCaption(outlook_.Windows().front(), "Synchronize");
        entry_ = ours ? ours : outlook_.AddCustomButton(window_, "Standard", "Nobody's", "nobody");
    }
    // From one folder to the other, and back the next time.
    void Switch(FolderKind one, FolderKind other) {
        outlook_.SwitchFolder(window_, outlook_.View(window_).folder == one ? other : one);
    }
    void OpenContact() { inspector_ = outlook_.OpenInspector(contact_); }
    void CloseContact() { outlook_.CloseWindow(inspector_); }
    bool Click() { return outlook_.Click(entry_).sinks != 0; }

  private:
    Outlook outlook_;
    standin::Item contact_;
    standin::Window window_, inspector_;
    standin::ControlView entry_;
};

// A start of a program before this one shall have ended.
void Settle() { Sleep(100); }

class Version {
  public:
    Version(Bench::Report& report, int number, const char* year, const Library& ours, const Library& empty,
            const MainApplication& main)
        : report_(report),
          number_(number),
          name_("Outlook " + std::string(year) + ": "),
          ours_(ours),
          empty_(empty),
          main_(main) {}

    void Measure() {
        Starts();
        const auto one = [&](const Library& library) {
            auto host = std::make_unique<Host>(number_, library);
            host->Start();
            return host;
        };
        const std::unique_ptr<Host> bare = one(empty_), whole = one(ours_);
        Switches(*bare, *whole);
        Inspectors(*bare, *whole);
        Clicks(*bare, *whole);
        Connections(**bare, **whole);
    }

  private:
    using Values = std::vector<double>;

    // From the start of the session to its first window, menus included; the end of the session is not timed.
    void Starts() {
        const auto time = [&](const Library& library) {
            Host host(number_, library);
            const double taken = Bench::NanosecondsPerCall(1, [&] { host->Start(); });
            host->Quit();
            return taken;
        };
        Values bare, whole;
        for (int round = 0; round < rounds; ++round) {
            bare.push_back(time(empty_));
            whole.push_back(time(ours_));
        }
        Host host(number_, ours_);
        Add("start with menus", {Bench::Median(bare), Bench::Median(whole)}, *host, [&] { host->Start(); });
        host->Quit();

        Host counted(number_, ours_);
        const HostCalls::MenuBuild build = HostCalls::OfMenu(*counted);
        counted->Quit();  // else the next connection would ask why this one did not end
        report_.AddCount(name_ + "menu build, host calls but those that follow", build.rest, mostCallsOfMenu);
        report_.AddCount(name_ + "menu build, writes to the nine entries", build.entryWrites);
        report_.AddCount(name_ + "menu build, writes to the synchronise button", build.buttonWrites);
        report_.AddCount(name_ + "menu build, walk over existing controls", build.walk);
    }

    void Connections(Outlook& bare, Outlook& whole) {
        constexpr const char* progId = "CVOutlookAddIn.Connect";
        Values times[4];
        for (int round = 0; round < rounds; ++round) {
            times[0].push_back(Bench::NanosecondsPerCall(1, [&] { bare.UnloadAddIn(progId); }));
            times[1].push_back(Bench::NanosecondsPerCall(1, [&] { whole.UnloadAddIn(progId); }));
            times[2].push_back(Bench::NanosecondsPerCall(1, [&] { bare.LoadAddIn(progId); }));
            times[3].push_back(Bench::NanosecondsPerCall(1, [&] { whole.LoadAddIn(progId); }));
        }
        report_.Add(name_ + "OnDisconnection", Bench::Medians{Bench::Median(times[0]), Bench::Median(times[1])});
        whole.UnloadAddIn(progId);
        Add("OnConnection with two windows", {Bench::Median(times[2]), Bench::Median(times[3])}, whole,
            [&] { whole.LoadAddIn(progId); });
    }

    void Switches(Host& bare, Host& whole) {
        const auto measure = [&](const char* what, FolderKind one, FolderKind other, double most) {
            const Bench::Medians medians = Bench::TakeTurns(
                rounds, 20, [] {}, [&] { bare.Switch(one, other); }, [&] { whole.Switch(one, other); });
            Add(
                what, medians, *whole, [&] { whole.Switch(one, other); }, most);
        };
        measure("folder switch without a button's change", FolderKind::Inbox, FolderKind::Tasks, mostCallsOfSwitch);
        whole.Switch(FolderKind::Inbox, FolderKind::Inbox);
        measure("folder switch that changes the button", FolderKind::Inbox, FolderKind::Contacts, Bench::none);
    }

    void Inspectors(Host& bare, Host& whole) {
        Values times[2];
        for (int round = 0; round < rounds; ++round) {
            times[0].push_back(Bench::NanosecondsPerCall(1, [&] { bare.OpenContact(); }));
            times[1].push_back(Bench::NanosecondsPerCall(1, [&] { whole.OpenContact(); }));
            bare.CloseContact();
            whole.CloseContact();
        }
        Add("opening an Inspector", {Bench::Median(times[0]), Bench::Median(times[1])}, *whole,
            [&] { whole.OpenContact(); });
        whole.CloseContact();
    }

    // With the empty add-in a button of nobody is clicked, and the program is started here.
    void Clicks(Host& bare, Host& whole) {
        const Bench::Medians medians = Bench::TakeTurns(
            rounds, 1, Settle,
            [&] {
                bare.Click();
                main_.Start();
            },
            [&] { whole.Click(); });
        bool reached = false;
        Add("click to the process start", medians, *whole, [&] { reached = whole.Click(); });
        if (!reached) std::exit(2);  // nothing was measured
        Settle();
    }

    // The time, and what `work`, done once more, calls of the host and of the registry.
    template <class Work>
    void Add(const std::string& what, const Bench::Medians& medians, Outlook& outlook, Work&& work,
             double mostCalls = Bench::none) {
        const ImportCounter registry(ours_.module, "ADVAPI32.dll", "Reg");
        outlook.ResetCalls();
        work();
        report_.Add(name_ + what, medians);
        report_.AddCount(name_ + what + ", host calls", outlook.Calls(), mostCalls);
        report_.AddCount(name_ + what + ", registry calls", static_cast<int>(registry.Calls()));
    }

    Bench::Report& report_;
    int number_;
    std::string name_;
    const Library& ours_;
    const Library& empty_;
    const MainApplication& main_;
};

// The first OnConnection of a freshly loaded library, in nanoseconds. Each needs a library file of its own: module
// state lives as long as the library.
double FirstConnection(int number) {
    const std::string copy = Folder() + "\\fresh" + std::to_string(number) + ".dll";
    CopyFileA((Folder() + "\\CVOutlookAddIn.dll").c_str(), copy.c_str(), FALSE);
    const Library library(copy, ourClass);
    double taken = 0;
    {
        Outlook outlook({.version = 11});
        outlook.IgnoreRegistry();
        outlook.Start();
        outlook.UseAddIn("CVOutlookAddIn.Connect", library.Factory());
        taken = Bench::NanosecondsPerCall(1, [&] { outlook.LoadAddIn("CVOutlookAddIn.Connect"); });
        outlook.Quit();
    }
    FreeLibrary(library.module);
    DeleteFileA(copy.c_str());
    return taken;
}

double LoadLanguage() {
    return Bench::NanosecondsPerCall(1, [] {
        IniFile::IniInit(false);
        Language::LangInit();
    });
}

// The same file is loaded by the add-in and here, in turns.
void MeasureLanguage(Bench::Report& report) {
    const std::string settings = Folder() + "\\corvella.ini";
    Files::Plug({.applicationPath = [] { return Folder() + "\\"; }});
    IniFile::location = {settings, settings, 0};
    std::vector<double> connections, loadings;
    for (int round = 0; round < rounds; ++round) {
        connections.push_back(FirstConnection(round));
        loadings.push_back(LoadLanguage());
    }
    const double connection = Bench::Median(connections);
    report.Add("first OnConnection of a library", connection);
    report.Add("first OnConnection of a library, loading the language and its share",
               {connection, Bench::Median(loadings)});
}

}  // namespace

int main(int argc, char** argv) {
    CoInitialize(nullptr);
    Bench::Report report;
    {
        const PrivateKey privateKey;
        const MainApplication mainApplication;
        const Library ours(Folder() + "\\CVOutlookAddIn.dll", ourClass);
        const Library empty(Folder() + "\\empty_addin.dll", emptyClass);
        const std::pair<int, const char*> versions[] = {{9, "2000"}, {10, "2002"}, {11, "2003"}, {12, "2007"}};
        for (const auto& [version, year] : versions)
            Version(report, version, year, ours, empty, mainApplication).Measure();
        MeasureLanguage(report);
    }
    return report.Finish(argc, argv);
}
