// The add-in's life in the host: connection, disconnection, and everything the host may leave out.
#include <doctest.h>

#include "e2e/Session.h"
#include "testing/Versions.h"

using e2e::Session;

namespace {

bool IsActive() { return e2e::ReadValue(e2e::addInKey, "Active").has_value(); }

}  // namespace

IN_EVERY_VERSION("connected with a window the add-in is active, follows Outlook and has its menu") {
    Session session({.version = version});
    session.host.Start();
    CHECK(e2e::ReadValue(e2e::addInKey, "Active") == "1");
    CHECK(session.Popups(session.FirstWindow()).size() == 1);
    CHECK(session.host.Advises() > 0);
    CHECK(session.host.Complaints().empty());
}

IN_EVERY_VERSION("Outlook started without windows: active, no menu and no sink, and disconnection still ends it") {
    Session session({.version = version, .startedBy = standin::StartedBy::Automation});
    session.host.Start();
    CHECK(e2e::ReadValue(e2e::addInKey, "Active") == "1");
    const bool hearsOfQuit = version >= 14;
    CHECK(session.host.Advises() == (hearsOfQuit ? 1 : 0));
    CHECK((session.host.References() != 0) == hearsOfQuit);
    const standin::Window window = session.host.OpenExplorer();
    CHECK(session.OwnControls(window).empty());
    CHECK(session.host.UnloadAddIn(e2e::progId));
    CHECK_FALSE(IsActive());
}

FROM_VERSION("Outlook 2010 and later, started without windows and ended, leaves no active mark", 14) {
    Session session({.version = version, .startedBy = standin::StartedBy::Automation});
    session.host.Start();
    REQUIRE(e2e::ReadValue(e2e::addInKey, "Active") == "1");
    CHECK(session.host.Quit() == standin::Ending::AddInsNotTold);
    CHECK_FALSE(IsActive());
    CHECK(session.host.Advises() == 0);
    CHECK(session.host.References() == 0);
}

FROM_VERSION("where an administrator has add-ins told of the end, Outlook 2010 and later end as 2007 does", 14) {
    Session session({.version = version, .shutdownCalls = standin::ShutdownCalls::All});
    session.host.Start();
    session.OpenNew(standin::ItemClass::Contact);
    CHECK(session.host.Quit() == standin::Ending::AddInsTold);
    CHECK_FALSE(IsActive());
    CHECK(session.host.References() == 0);
}

IN_EVERY_VERSION(
    "unloaded through the dialog: menus and buttons of all Explorers are gone, and so is the active mark") {
    Session session({.version = version});
    session.host.Start();
    const standin::Window second = session.host.OpenExplorer(standin::FolderKind::Contacts);
    session.host.SwitchFolder(second, standin::FolderKind::Inbox);
    session.host.SwitchFolder(second, standin::FolderKind::Contacts);
    CHECK(session.host.UnloadAddIn(e2e::progId));
    for (const standin::Window window : session.host.Windows()) {
        CHECK(session.Popups(window).empty());
        CHECK(session.OwnControls(window).empty());
    }
    CHECK_FALSE(IsActive());
    CHECK(session.host.References() == 0);
    CHECK(session.host.Advises() == 0);
}

IN_EVERY_VERSION(
    "a second connection after an unload in the same session is active again and builds its menus afresh") {
    Session session({.version = version});
    session.host.Start();
    REQUIRE(session.host.UnloadAddIn(e2e::progId));
    REQUIRE(session.LoadAddIn());
    CHECK(e2e::ReadValue(e2e::addInKey, "Active") == "1");
    CHECK(session.Popups(session.FirstWindow()).size() == 1);
    CHECK(session.OwnControls(session.FirstWindow(), "103").size() == 1);
}

IN_EVERY_VERSION("Quit deletes the active mark even when the host never tells of a disconnection") {
    Session session({.version = version, .shutdownCalls = standin::ShutdownCalls::None});
    session.host.Start();
    session.host.Quit();
    CHECK_FALSE(IsActive());
    CHECK(session.host.Advises() == 0);
}

IN_EVERY_VERSION("a host that ends its process without any call meets no harm") {
    Session session({.version = version});
    session.host.Start();
    session.OpenNew(standin::ItemClass::Contact);
    session.host.EndProcess();
    CHECK(session.host.References() == 0);  // what the add-in held went with its object
}

IN_EVERY_VERSION("Outlook never stays in memory because of the add-in, whether it counts a closing window or not") {
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        Session session({.version = version, .closingWindow = counted});
        session.host.Start();
        session.host.CloseWindow(session.FirstWindow());
        CHECK(session.host.HowItEnded() == e2e::OrderlyEnd(version));
        CHECK(session.host.References() == 0);
        CHECK_FALSE(IsActive());
    }
}

IN_EVERY_VERSION("any kind of window may be the last one to close") {
    using enum standin::ItemClass;
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        for (const standin::ItemClass last : {Mail, Contact, Task, Appointment, Note, DistList}) {
            CAPTURE(static_cast<int>(last));
            Session session({.version = version, .closingWindow = counted});
            session.host.Start();
            const standin::Window window = session.OpenNew(last);
            session.host.CloseWindow(session.FirstWindow());
            REQUIRE(session.host.HowItEnded() == standin::Ending::StillRunning);
            CHECK(IsActive());
            session.host.CloseWindow(window, standin::SaveMode::Discard);
            CHECK(session.host.HowItEnded() == e2e::OrderlyEnd(version));
            CHECK(session.host.References() == 0);
        }
    }
}

FROM_VERSION("no window that is still open ever loses its buttons", 10) {
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        Session session({.version = version, .closingWindow = counted});
        session.host.Start();
        const standin::Window first = session.FirstWindow();
        const standin::Window second = session.host.OpenExplorer();
        const standin::Window contact = session.OpenNew(standin::ItemClass::Contact);
        const standin::Window mail = session.OpenNew(standin::ItemClass::Mail);
        session.host.CloseWindow(first);
        CHECK(session.Popups(second).size() == 1);
        CHECK(session.SendButton(contact));
        session.host.CloseWindow(second);
        session.host.CloseWindow(mail, standin::SaveMode::Discard);
        CHECK(session.SendButton(contact));
        e2e::WriteValue(e2e::outlookKey, "ChangedC", "");
        CHECK(session.host.Click(session.SendButton(contact)).sinks == 1);
        CHECK_FALSE(e2e::ReadValue(e2e::outlookKey, "ChangedC").value_or("").empty());
    }
}

TEST_CASE("a mail window that outlives a contact's keeps the add-in at work for the next contact") {
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        Session session({.version = 11, .closingWindow = counted});
        session.host.Start();
        const standin::Window mail = session.OpenNew(standin::ItemClass::Mail);
        const standin::Window contact = session.OpenNew(standin::ItemClass::Contact);
        session.host.CloseWindow(session.FirstWindow());
        session.host.CloseWindow(contact, standin::SaveMode::Discard);
        CHECK(session.SendButton(session.OpenNew(standin::ItemClass::Task)));
        CHECK(session.host.Exists(mail));
    }
}

IN_EVERY_VERSION("events that arrive after Quit, without a disconnection, fall on nothing") {
    Session session({.version = version, .shutdownCalls = standin::ShutdownCalls::None});
    session.host.Start();
    const standin::Window window = session.FirstWindow();
    REQUIRE(session.host.UnloadAddIn(e2e::progId));
    session.host.ResetCalls();
    session.host.SwitchFolder(window, standin::FolderKind::Contacts);
    session.host.Deactivate(window);
    session.host.Activate(window);
    session.OpenNew(standin::ItemClass::Contact);
    session.host.OpenExplorer();
    CHECK(session.host.Calls() == 0);
    session.host.Quit();
    CHECK_FALSE(IsActive());
}

IN_EVERY_VERSION("a second connection without a disconnection starts over and leaves one menu and one button") {
    Session session({.version = version});
    session.host.Start();
    const int references = session.host.References();
    const int advises = session.host.Advises();
    session.host.ConnectAgain(e2e::progId);
    CHECK(session.Popups(session.FirstWindow()).size() == 1);
    CHECK(session.OwnControls(session.FirstWindow(), "103").size() == 1);
    CHECK(session.host.References() <= references);
    CHECK(session.host.Advises() <= advises);
    CHECK(session.host.Quit() == e2e::OrderlyEnd(version));
    CHECK(session.host.References() == 0);
    CHECK_FALSE(IsActive());
}
