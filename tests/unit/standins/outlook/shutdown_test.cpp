// How a session of the stand-in ends in each version.
#include <doctest.h>

#include <algorithm>

#include "testing/Versions.h"
#include "unit/standins/outlook/client.h"

using namespace client;
using standin::Ending;

namespace {

using Told = std::vector<std::string>;

// A host with one add-in that holds the Application when it is told to, and notes what it hears at the end.
struct Ended {
    explicit Ended(const standin::Options& options, bool hold, bool letGoInQuit = false) : outlook(options) {
        addIn.onConnection = [this, hold, letGoInQuit](IDispatch* application, IDispatch*) {
            if (!hold) return S_OK;
            application->AddRef();
            held = Object(application);
            if (!letGoInQuit) return S_OK;
            onApplication = std::make_unique<Sink>(held, applicationEvents, [this](DISPID id, DISPPARAMS&) {
                if (id != 0xF007) return;
                quit = true;
                onApplication->Cut();
                held = {};
            });
            return S_OK;
        };
        outlook.IgnoreRegistry();
        outlook.UseAddIn("Some.AddIn", &addIn);
        outlook.Start();
        addIn.told.clear();
    }
    ~Ended() { held = {}; }
    AddIn addIn;
    Object held;
    std::unique_ptr<Sink> onApplication;
    bool quit = false;
    standin::Outlook outlook;
};

const Told shutDown = {"OnBeginShutdown", "OnDisconnection 0"};

}  // namespace

IN_VERSIONS("with nothing held every version up to 2007 tells its add-ins of the end", 9, 10, 11, 12) {
    Ended host({.version = version}, false);
    CHECK(host.outlook.Quit() == Ending::AddInsTold);
    CHECK(host.addIn.told == shutDown);
    CHECK(host.outlook.References() == 0);
}

IN_VERSIONS("a reference keeps 2000 to 2003 in memory and no add-in is told, 2007 ends all the same", 9, 10, 11, 12) {
    Ended host({.version = version}, true);
    CHECK(host.outlook.Quit() == (version < 12 ? Ending::StaysInMemory : Ending::AddInsTold));
    CHECK(host.addIn.told == (version < 12 ? Told{} : shutDown));
    CHECK(host.outlook.ReferenceList() == Told{"Application: 1"});
}

TEST_CASE("what stays in memory goes on working, and ends when the last reference goes") {
    Ended host({.version = 11}, true);
    host.outlook.Quit();
    CHECK(Get(host.held, "Name").AsText() == "Outlook");
    CHECK(host.outlook.LookAgain() == Ending::StaysInMemory);
    host.held = {};
    CHECK(host.outlook.LookAgain() == Ending::AddInsNotTold);
    CHECK(host.addIn.told.empty());
}

TEST_CASE("the Quit event comes in any case but is too late to let go in 2000 to 2003") {
    Ended host({.version = 11}, true, true);
    CHECK(host.outlook.Quit() == Ending::AddInsNotTold);
    CHECK(host.quit);
    CHECK(host.addIn.told.empty());
    CHECK(host.outlook.References() == 0);
}

TEST_CASE("to let go in the last window's Close event is in time") {
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        AddIn addIn;
        Object explorer;
        std::unique_ptr<Sink> sink;
        addIn.onConnection = [&](IDispatch* app, IDispatch*) {
            app->AddRef();
            explorer = Call(Get(Object(app), "Explorers").AsObject(), "Item", {1}).AsObject();
            sink = std::make_unique<Sink>(explorer, explorerEvents, [&](DISPID id, DISPPARAMS&) {
                if (id != 0xF008) return;
                sink->Cut();
                explorer = {};
            });
            return S_OK;
        };
        standin::Outlook outlook({.version = 10, .closingWindow = counted});
        outlook.IgnoreRegistry();
        outlook.UseAddIn("Some.AddIn", &addIn);
        outlook.Start();
        outlook.CloseWindow(outlook.Windows().front());
        CHECK(outlook.HowItEnded() == Ending::AddInsTold);
    }
}

IN_VERSIONS("2010 and later tell of Quit and of the windows' ends only, whatever is held", 14, 15, 16) {
    Ended host({.version = version}, true);
    Sink onApplication(host.held, applicationEvents);
    Sink onWindow(Call(host.held, "ActiveExplorer").AsObject(), explorerEvents);
    CHECK(host.outlook.Quit() == Ending::AddInsNotTold);
    CHECK(onApplication.events == std::vector<DISPID>{0xF007});
    CHECK(onWindow.events == std::vector<DISPID>{0xF008});
    CHECK(host.addIn.told.empty());
    CHECK(host.addIn.references == 2);
    CHECK(Get(host.held, "Name").code == E_UNEXPECTED);
}

TEST_CASE("an administrator can have 2010 and later tell of the end, and an earlier version can be told not to") {
    Ended asked({.version = 14, .shutdownCalls = standin::ShutdownCalls::All}, true);
    CHECK(asked.outlook.Quit() == Ending::AddInsTold);
    CHECK(asked.addIn.told == shutDown);
    Ended earlier({.version = 12, .shutdownCalls = standin::ShutdownCalls::None}, false);
    CHECK(earlier.outlook.Quit() == Ending::AddInsNotTold);
    CHECK(earlier.addIn.told.empty());
}

IN_VERSIONS("a closed window tells of nothing more, whatever the others do", 11, 14, 16) {
    Ended host({.version = version}, true);
    const standin::Window first = host.outlook.Windows().front();
    const standin::Window second = host.outlook.OpenExplorer();
    const Object closed = Call(host.held, "ActiveExplorer").AsObject();
    Sink sink(closed, explorerEvents);
    host.outlook.CloseWindow(second);
    CHECK(sink.events == std::vector<DISPID>{0xF008});
    host.outlook.SwitchFolder(first, standin::FolderKind::Contacts);
    host.outlook.Deactivate(first);
    host.outlook.Activate(first);
    CHECK(sink.events.size() == 1);
    CHECK(Get(closed, "Caption").code == RPC_E_DISCONNECTED);
}

TEST_CASE("closing the last window ends the session, closing another does not") {
    Ended host({}, false);
    const standin::Window second = host.outlook.OpenExplorer();
    host.outlook.CloseWindow(second);
    CHECK(host.outlook.HowItEnded() == Ending::StillRunning);
    const standin::Window inspector = host.outlook.OpenInspector(host.outlook.NewItem(standin::ItemClass::Mail));
    host.outlook.CloseWindow(host.outlook.Windows().front());
    CHECK(host.outlook.HowItEnded() == Ending::StillRunning);
    host.outlook.CloseWindow(inspector);
    CHECK(host.outlook.HowItEnded() == Ending::AddInsTold);
}

TEST_CASE("while another program holds it, the session goes on without a window and ends when that lets go") {
    for (const int version : {9, 10, 11, 12, 14, 15, 16}) {
        CAPTURE(version);
        Ended host({.version = version, .heldByClient = true}, false);
        host.outlook.CloseWindow(host.outlook.Windows().front());
        CHECK(host.outlook.HowItEnded() == Ending::StillRunning);
        const standin::Window later = host.outlook.OpenExplorer();
        host.outlook.ClientLetsGo();
        CHECK(host.outlook.HowItEnded() == Ending::StillRunning);
        host.outlook.CloseWindow(later);
        CHECK(host.outlook.HowItEnded() == (version < 14 ? Ending::AddInsTold : Ending::AddInsNotTold));
    }
    Ended host({.heldByClient = true}, false);
    host.outlook.CloseWindow(host.outlook.Windows().front());
    host.outlook.ClientLetsGo();
    CHECK(host.outlook.HowItEnded() == Ending::AddInsTold);
}

TEST_CASE("Quit closes every window first, each with its Close event") {
    Ended host({.version = 12}, false);
    host.outlook.OpenExplorer();
    const Object application(host.outlook.Application());
    Told order;
    const Object explorers = Get(application, "Explorers").AsObject();
    Sink first(Call(explorers, "Item", {1}).AsObject(), explorerEvents, [&](DISPID id, DISPPARAMS&) {
        if (id == 0xF008) order.push_back("first");
    });
    Sink second(Call(explorers, "Item", {2}).AsObject(), explorerEvents, [&](DISPID id, DISPPARAMS&) {
        if (id == 0xF008) order.push_back("second");
    });
    Sink quit(application, applicationEvents, [&](DISPID id, DISPPARAMS&) {
        if (id == 0xF007) order.push_back("quit");
    });
    host.outlook.Quit();
    CHECK(order == Told{"second", "first", "quit"});
}

TEST_CASE("a user who does not let an item go stays in Outlook") {
    Ended host({.prompted = standin::Prompted::Cancel}, false);
    const standin::Item item = host.outlook.NewItem(standin::ItemClass::Task, {{"Subject", "changed"}});
    host.outlook.OpenInspector(item);
    CHECK(host.outlook.Quit() == Ending::StillRunning);
    CHECK(host.addIn.told.empty());
    CHECK(host.outlook.OpenExplorer());
}

TEST_CASE("after the end every object returns a failure") {
    Ended host({.version = 12}, true);
    host.outlook.Quit();
    CHECK(Get(host.held, "Name").code == E_UNEXPECTED);
    CHECK(Call(host.held, "ActiveExplorer").code == E_UNEXPECTED);
}

TEST_CASE("a process that ends tells nobody, and what is held returns that it is disconnected") {
    Ended host({}, true);
    Sink sink(host.held, applicationEvents);
    host.outlook.EndProcess();
    CHECK(host.addIn.told.empty());
    CHECK(sink.events.empty());
    CHECK(sink.references == 1);
    CHECK(host.addIn.references == 2);
    CHECK(Get(host.held, "Name").code == RPC_E_DISCONNECTED);
}

TEST_CASE("objects may outlive the host that made them") {
    Object application, button;
    {
        const Host host;
        application = host.application;
        button = host.Button("mark");
    }
    CHECK(Get(application, "Name").code == RPC_E_DISCONNECTED);
    CHECK(Get(button, "Caption").code == RPC_E_DISCONNECTED);
}

TEST_CASE("a session that an add-in ends from an event ends after the event") {
    Ended host({.version = 12}, false);
    const Object application(host.outlook.Application());
    bool toldInside = false;
    Sink sink(Call(application, "ActiveExplorer").AsObject(), explorerEvents, [&](DISPID id, DISPPARAMS&) {
        if (id != 0xF002) return;
        Call(application, "Quit");
        toldInside = !host.addIn.told.empty();
    });
    host.outlook.SwitchFolder(host.outlook.Windows().front(), standin::FolderKind::Tasks);
    CHECK_FALSE(toldInside);
    CHECK(host.addIn.told == shutDown);
    CHECK(host.outlook.Quit() == Ending::AddInsTold);
}

TEST_CASE("a client that closes the last window outside of any event ends the session, after its call") {
    Ended host({.version = 12}, true);
    const Object explorer = Call(host.held, "ActiveExplorer").AsObject();
    host.outlook.Record();
    Call(explorer, "Close");
    CHECK(host.outlook.HowItEnded() == Ending::AddInsTold);
    CHECK(host.addIn.told == shutDown);
    const Told lines = host.outlook.Transcript();
    CHECK(std::find(lines.begin(), lines.end(), "! Some.AddIn: OnBeginShutdown") != lines.end());  // not indented
}

TEST_CASE("an add-in that closes the last window from an event is told of the end after the event") {
    Ended host({.version = 12}, true);
    const Object explorer = Call(host.held, "ActiveExplorer").AsObject();
    std::size_t toldInside = 0;
    Sink sink(explorer, explorerEvents, [&](DISPID id, DISPPARAMS&) {
        if (id != 0xF002) return;
        CHECK(Call(explorer, "Close").code == S_OK);
        toldInside = host.addIn.told.size();
    });
    host.outlook.SwitchFolder(host.outlook.Windows().front(), standin::FolderKind::Tasks);
    CHECK(toldInside == 0);
    CHECK(host.addIn.told == shutDown);
}
