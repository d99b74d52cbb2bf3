// The add-in's life in the host: connection, disconnection, and everything the host may leave out.
#include <doctest.h>

#include "e2e/Session.h"

using e2e::Session;

namespace {

bool IsActive() { return e2e::ReadValue(e2e::addInKey, "Active").has_value(); }

}  // namespace

TEST_CASE("connected with a window the add-in is active, follows Outlook and has its menu") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        CHECK(e2e::ReadValue(e2e::addInKey, "Active") == "1");
        CHECK(session.Popups(session.FirstWindow()).size() == 1);
        CHECK(session->Advises() > 0);
        CHECK(session->Complaints().empty());
    }
}
TEST_CASE("Outlook started without windows: active, no menu and no sink, and disconnection still ends it") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version, .startedBy = standin::StartedBy::Automation});
        session->Start();
        CHECK(e2e::ReadValue(e2e::addInKey, "Active") == "1");
        CHECK(session->Advises() == 0);
        CHECK(session->References() == 0);
        const standin::Window window = session->OpenExplorer();
        CHECK(session.OwnControls(window).empty());
        CHECK(session->UnloadAddIn(e2e::progId));
        CHECK_FALSE(IsActive());
    }
}
TEST_CASE("unloaded through the dialog: menus and buttons of all Explorers are gone, and so is the active mark") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Window second = session->OpenExplorer(standin::FolderKind::Contacts);
        session->SwitchFolder(second, standin::FolderKind::Inbox);
        session->SwitchFolder(second, standin::FolderKind::Contacts);
        CHECK(session->UnloadAddIn(e2e::progId));
        for (const standin::Window window : session->Windows()) {
            CHECK(session.Popups(window).empty());
            CHECK(session.OwnControls(window).empty());
        }
        CHECK_FALSE(IsActive());
        CHECK(session->References() == 0);
        CHECK(session->Advises() == 0);
    }
}
TEST_CASE("a second connection after an unload in the same session is active again and builds its menus afresh") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        REQUIRE(session->UnloadAddIn(e2e::progId));
        REQUIRE(session->LoadAddIn(e2e::progId));
        CHECK(e2e::ReadValue(e2e::addInKey, "Active") == "1");
        CHECK(session.Popups(session.FirstWindow()).size() == 1);
        CHECK(session.OwnControls(session.FirstWindow(), "103").size() == 1);
    }
}
TEST_CASE("Quit deletes the active mark even when the host never tells of a disconnection") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version, .shutdownCalls = standin::ShutdownCalls::None});
        session->Start();
        session->Quit();
        CHECK_FALSE(IsActive());
        CHECK(session->Advises() == 0);
    }
}
TEST_CASE("a host that ends its process without any call meets no harm") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        session.OpenNew(standin::ItemClass::Contact);
        session->EndProcess();
        CHECK(session->References() == 0);  // what the add-in held went with its object
    }
}
TEST_CASE("Outlook never stays in memory because of the add-in, whether it counts a closing window or not") {
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        for (const int version : e2e::allVersions) {
            CAPTURE(version);
            Session session({.version = version, .closingWindow = counted});
            session->Start();
            session->CloseWindow(session.FirstWindow());
            CHECK(session->HowItEnded() == standin::Ending::AddInsTold);
            CHECK(session->References() == 0);
            CHECK_FALSE(IsActive());
        }
    }
}
TEST_CASE("any kind of window may be the last one to close") {
    using enum standin::ItemClass;
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        for (const int version : e2e::allVersions) {
            for (const standin::ItemClass last : {Mail, Contact, Task, Appointment, Note, DistList}) {
                CAPTURE(version);
                CAPTURE(static_cast<int>(last));
                Session session({.version = version, .closingWindow = counted});
                session->Start();
                const standin::Window window = session.OpenNew(last);
                session->CloseWindow(session.FirstWindow());
                REQUIRE(session->HowItEnded() == standin::Ending::StillRunning);
                CHECK(IsActive());
                session->CloseWindow(window, standin::SaveMode::Discard);
                CHECK(session->HowItEnded() == standin::Ending::AddInsTold);
                CHECK(session->References() == 0);
            }
        }
    }
}
TEST_CASE("no window that is still open ever loses its buttons") {
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        for (const int version : {10, 11, 12}) {
            CAPTURE(version);
            Session session({.version = version, .closingWindow = counted});
            session->Start();
            const standin::Window first = session.FirstWindow();
            const standin::Window second = session->OpenExplorer();
            const standin::Window contact = session.OpenNew(standin::ItemClass::Contact);
            const standin::Window mail = session.OpenNew(standin::ItemClass::Mail);
            session->CloseWindow(first);
            CHECK(session.Popups(second).size() == 1);
            CHECK(session.SendButton(contact));
            session->CloseWindow(second);
            session->CloseWindow(mail, standin::SaveMode::Discard);
            CHECK(session.SendButton(contact));
            e2e::WriteValue(e2e::outlookKey, "ChangedC", "");
            CHECK(session->Click(session.SendButton(contact)).sinks == 1);
            CHECK_FALSE(e2e::ReadValue(e2e::outlookKey, "ChangedC").value_or("").empty());
        }
    }
}
TEST_CASE("a mail window that outlives a contact's keeps the add-in at work for the next contact") {
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        Session session({.version = 11, .closingWindow = counted});
        session->Start();
        const standin::Window mail = session.OpenNew(standin::ItemClass::Mail);
        const standin::Window contact = session.OpenNew(standin::ItemClass::Contact);
        session->CloseWindow(session.FirstWindow());
        session->CloseWindow(contact, standin::SaveMode::Discard);
        CHECK(session.SendButton(session.OpenNew(standin::ItemClass::Task)));
        CHECK(session->Exists(mail));
    }
}
TEST_CASE("events that arrive after Quit, without a disconnection, fall on nothing") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version, .shutdownCalls = standin::ShutdownCalls::None});
        session->Start();
        const standin::Window window = session.FirstWindow();
        REQUIRE(session->UnloadAddIn(e2e::progId));
        session->ResetCalls();
        session->SwitchFolder(window, standin::FolderKind::Contacts);
        session->Deactivate(window);
        session->Activate(window);
        session.OpenNew(standin::ItemClass::Contact);
        session->OpenExplorer();
        CHECK(session->Calls() == 0);
        session->Quit();
        CHECK_FALSE(IsActive());
    }
}
TEST_CASE("a second connection without a disconnection starts over and leaves one menu and one button") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const int references = session->References();
        const int advises = session->Advises();
        session->ConnectAgain(e2e::progId);
        CHECK(session.Popups(session.FirstWindow()).size() == 1);
        CHECK(session.OwnControls(session.FirstWindow(), "103").size() == 1);
        CHECK(session->References() <= references);
        CHECK(session->Advises() <= advises);
        CHECK(session->Quit() == standin::Ending::AddInsTold);
        CHECK(session->References() == 0);
        CHECK_FALSE(IsActive());
    }
}
