// Explorer windows: their menu, their toolbar buttons, and how these follow the window.
#include <doctest.h>

#include <algorithm>

#include "e2e/Session.h"

using e2e::Session;
using standin::FolderKind;

namespace {

const char* const contactButton = "107";

}  // namespace

TEST_CASE("Outlook 2000: the menu is there at start, and activation rebuilds nothing") {
    Session session({.version = 9});
    session->Start();
    const standin::Window window = session.FirstWindow();
    const auto before = session.Popups(window);
    REQUIRE(before.size() == 1);
    CHECK(session->AdviseList().size() > 0);
    session->Deactivate(window);
    session->Activate(window);
    const auto after = session.Popups(window);
    REQUIRE(after.size() == 1);
    CHECK(after.front().instance == before.front().instance);
}
TEST_CASE("Outlook 2000: new windows are followed although the application's own events cannot be sunk") {
    Session session({.version = 9});
    session->Start();
    for (const std::string& advise : session->AdviseList())
        CHECK(advise.find("ApplicationEvents") == std::string::npos);
    CHECK(session.SendButton(session.OpenNew(standin::ItemClass::Contact)));
    session->OpenExplorer();
    CHECK(session->Complaints().size() <= 1);  // that it asked for the application's events
}
TEST_CASE("from Outlook 2002 on the menu is built at the first activation and not again") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Window second = session->OpenExplorer();
        const auto before = session.Popups(second);
        REQUIRE(before.size() == 1);
        session->Activate(session.FirstWindow());
        session->Activate(second);
        CHECK(session.Popups(second).front().instance == before.front().instance);
    }
}
TEST_CASE("each of two Explorers gets its own menu and synchronise button, and the second leaves the first alone") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Window first = session.FirstWindow();
        const int popup = session.Popups(first).front().instance;
        const int button = session.OwnControls(first, "103").front().instance;
        session->Record();
        const standin::Window second = session->OpenExplorer();
        for (const std::string& line : session->Transcript()) {
            CAPTURE(line);
            const bool byTheHost = line.find("! Explorer 1: Deactivate") != std::string::npos;
            CHECK((byTheHost || line.find("Explorer 1") == std::string::npos));
        }
        CHECK(session.Popups(second).size() == 1);
        CHECK(session.OwnControls(second, "103").size() == 1);
        REQUIRE(session.Popups(first).size() == 1);
        CHECK(session.Popups(first).front().instance == popup);
        CHECK(session.OwnControls(first, "103").front().instance == button);
    }
}
TEST_CASE("a menu bar with seven controls gets the popup at position 7, before the last one") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const auto controls = session->Controls(session.FirstWindow(), "Menu Bar");
        REQUIRE(controls.size() == 8);
        CHECK(controls.at(6).caption == "C&orvella");
        CHECK(controls.at(6).temporary);
        CHECK(controls.at(6).menuName == "Corvella");
    }
}
TEST_CASE("switching from the contacts folder to the inbox removes the send-to-phone button, switching back adds it") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Window window = session.FirstWindow();
        CHECK(session.OwnControls(window, contactButton).empty());
        session->SwitchFolder(window, FolderKind::Contacts);
        REQUIRE(session.OwnControls(window, contactButton).size() == 1);
        CHECK(session.OwnControls(window, contactButton).front().index == 8);
        session->SwitchFolder(window, FolderKind::Inbox);
        CHECK(session.OwnControls(window, contactButton).empty());
        session->SwitchFolder(window, FolderKind::Contacts);
        CHECK(session.OwnControls(window, contactButton).size() == 1);
    }
}
TEST_CASE("the send-to-phone button stands where the registry says") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        e2e::WriteValue(e2e::addInKey, "107Pos", "2");
        session->Start();
        session->SwitchFolder(session.FirstWindow(), FolderKind::Contacts);
        REQUIRE(session.OwnControls(session.FirstWindow(), contactButton).size() == 1);
        CHECK(session.OwnControls(session.FirstWindow(), contactButton).front().index == 2);
    }
}
TEST_CASE("the send-to-phone button is enabled while something is selected") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Item ann = session->AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
        const standin::Window window = session.FirstWindow();
        session->SwitchFolder(window, FolderKind::Contacts);
        const auto enabled = [&] { return session.OwnControls(window, contactButton).front().enabled; };
        session->Select(window, {});
        CHECK_FALSE(enabled());
        session->Select(window, {ann});
        CHECK(enabled());
    }
}
TEST_CASE("three selected contacts are queued in order by one click") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        std::string expected;
        std::vector<standin::Item> items;
        for (const char* name : {"Ann", "Bob", "Cec"}) {
            items.push_back(session->AddItem(FolderKind::Contacts, {{"FullName", name}}));
            expected += ";" + session->EntryId(items.back());
        }
        const standin::Window window = session.FirstWindow();
        session->SwitchFolder(window, FolderKind::Contacts);
        session->Select(window, items);
        session->Click(session.OwnControls(window, contactButton).front());
        CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC") == expected);
    }
}
TEST_CASE("a selected item that the host cannot give is passed over and the others are queued") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Item ann = session->AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
        const standin::Item bob = session->AddItem(FolderKind::Contacts, {{"FullName", "Bob"}});
        const standin::Window window = session.FirstWindow();
        session->SwitchFolder(window, FolderKind::Contacts);
        session->Select(window, {ann, bob});
        session->FailMember("Selection.Item", standin::Fault::Fails(E_FAIL), 1);
        session->Click(session.OwnControls(window, contactButton).front());
        CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC") == ";" + session->EntryId(bob));
    }
}
TEST_CASE("a popup left from an earlier run is deleted and rebuilt, never duplicated") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Window window = session.FirstWindow();
        session->UnloadAddIn(e2e::progId);
        session->AddCustomButton(window, "Menu Bar", "Cor&vella", "");  // the same caption but for its mark
        session->LoadAddIn(e2e::progId);
        const auto controls = session->Controls(window, "Menu Bar");
        CHECK(std::count_if(controls.begin(), controls.end(), [](const auto& control) {
                  return control.caption == "C&orvella" || control.caption == "Cor&vella";
              }) == 1);
        CHECK(session.Popups(window).size() == 1);
    }
}
TEST_CASE("a closed Explorer lets go of everything of its window") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const int references = session->References();
        const int advises = session->Advises();
        for (int round = 0; round < 3; ++round) session->CloseWindow(session->OpenExplorer(FolderKind::Contacts));
        CHECK(session->References() == references);
        CHECK(session->Advises() == advises);
    }
}
TEST_CASE("windows that were open before the add-in was loaded get their buttons too") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        session->UnloadAddIn(e2e::progId);
        const standin::Window second = session->OpenExplorer();
        const standin::Window contact = session.OpenNew(standin::ItemClass::Contact);
        session->LoadAddIn(e2e::progId);
        CHECK(session.SendButton(contact));
        session->Activate(session.FirstWindow());
        session->Activate(second);
        CHECK(session.Popups(session.FirstWindow()).size() == 1);
        CHECK(session.Popups(second).size() == 1);
    }
}
TEST_CASE("a click on the synchronise button of one of two windows runs one command once") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        e2e::WriteValue("Software\\Quillmark\\Corvella", "Path", "Z:\\nowhere");
        session->Start();
        const standin::Window second = session->OpenExplorer();
        session->Record();
        const standin::ClickResult click = session->Click(session.OwnControls(second, "103").front());
        CHECK(click.sinks == 2);
        int acted = 0;  // the wrapper that acts reads the clicked control's mark
        for (const std::string& line : session->Transcript())
            acted += line.find(".OnAction ->") != std::string::npos ? 1 : 0;
        CHECK(acted == 1);
    }
}
TEST_CASE("menu entries have no tag, so the host asks all of them in all windows, and one acts once") {
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Window second = session->OpenExplorer();
        const standin::ControlView popup = session.Popups(second).front();
        REQUIRE(popup.entries.size() == 9);
        session->Record();
        CHECK(session->Click(popup.entries.at(4)).sinks == 18);
        int acted = 0;  // a handler that is let through reads the clicked control's mark
        for (const std::string& line : session->Transcript()) {
            acted += line.find(".OnAction ->") != std::string::npos ? 1 : 0;
        }
        CHECK(acted == 1);
    }
}
