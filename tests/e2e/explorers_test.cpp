// Explorer windows: their menu, their toolbar buttons, and how these follow the window.
#include <doctest.h>

#include <algorithm>

#include "e2e/Session.h"
#include "testing/MenuTable.h"
#include "testing/Versions.h"

using e2e::Session;
using standin::FolderKind;

namespace {

const char* const contactButton = "107";

std::ptrdiff_t CountOf(const std::vector<std::string>& lines, const std::string& part) {
    return std::count_if(lines.begin(), lines.end(),
                         [&](const std::string& line) { return line.find(part) != std::string::npos; });
}

}  // namespace

TEST_CASE("Outlook 2000: the menu is there at start, and activation rebuilds nothing") {
    Session session({.version = 9});
    session.host.Start();
    const standin::Window window = session.FirstWindow();
    const auto before = session.Popups(window);
    REQUIRE(before.size() == 1);
    CHECK(session.host.AdviseList().size() > 0);
    session.host.Deactivate(window);
    session.host.Activate(window);
    const auto after = session.Popups(window);
    REQUIRE(after.size() == 1);
    CHECK(after.front().instance == before.front().instance);
}

TEST_CASE("Outlook 2000 is known by the application events it lacks, and its windows are followed all the same") {
    Session session({.version = 9});
    session.host.Record(standin::Detail::Everything);
    session.host.Start();
    // Host quirk 7: its own set is there and would tell nothing of the version.
    CHECK(CountOf(session.host.Transcript(), "Application.FindConnectionPoint(ApplicationEvents_10) -> fails") == 1);
    CHECK(CountOf(session.host.Transcript(), "FindConnectionPoint(ApplicationEvents)") == 0);
    CHECK(CountOf(session.host.AdviseList(), "ApplicationEvents") == 0);
    CHECK(session.SendButton(session.OpenNew(standin::ItemClass::Contact)));
    session.host.OpenExplorer();
    CHECK(session.host.Complaints().empty());
}

FROM_VERSION("from Outlook 2002 on the application's events of that version are sunk", 10) {
    Session session({.version = version});
    session.host.Start();
    CHECK(CountOf(session.host.AdviseList(), "Application ApplicationEvents_10") == 1);
    CHECK(CountOf(session.host.AdviseList(), "ApplicationEvents") == 1);
}

FROM_VERSION("from Outlook 2002 on the menu is built at the first activation and not again", 10) {
    Session session({.version = version});
    session.host.Start();
    const standin::Window second = session.host.OpenExplorer();
    const auto before = session.Popups(second);
    REQUIRE(before.size() == 1);
    session.host.Activate(session.FirstWindow());
    session.host.Activate(second);
    CHECK(session.Popups(second).front().instance == before.front().instance);
}

IN_VERSIONS("each of two Explorers gets its own menu and synchronise button, and the second leaves the first alone", 10,
            11, 12) {
    Session session({.version = version});
    session.host.Start();
    const standin::Window first = session.FirstWindow();
    const int popup = session.Popups(first).front().instance;
    const int button = session.OwnControls(first, "103").front().instance;
    session.host.Record();
    const standin::Window second = session.host.OpenExplorer();
    for (const std::string& line : session.host.Transcript()) {
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

IN_EVERY_VERSION("a menu bar with seven controls gets the popup at position 7, before the last one") {
    Session session({.version = version});
    session.host.Start();
    const auto controls = session.host.Controls(session.FirstWindow(), "Menu Bar");
    REQUIRE(controls.size() == 8);
    CHECK(controls.at(6).caption == "C&orvella");
    CHECK(controls.at(6).temporary);
    CHECK(controls.at(6).menuName == "Corvella");
}

IN_VERSIONS("switching from the contacts folder to the inbox removes the send-to-phone button, switching back adds it",
            10, 11, 12) {
    Session session({.version = version});
    session.host.Start();
    const standin::Window window = session.FirstWindow();
    CHECK(session.OwnControls(window, contactButton).empty());
    session.host.SwitchFolder(window, FolderKind::Contacts);
    REQUIRE(session.OwnControls(window, contactButton).size() == 1);
    CHECK(session.OwnControls(window, contactButton).front().index == 8);
    session.host.SwitchFolder(window, FolderKind::Inbox);
    CHECK(session.OwnControls(window, contactButton).empty());
    session.host.SwitchFolder(window, FolderKind::Contacts);
    CHECK(session.OwnControls(window, contactButton).size() == 1);
}

FROM_VERSION("a window that opens with a contacts folder has the send-to-phone button at its first activation", 10) {
    Session session({.version = version, .startFolder = FolderKind::Contacts});
    session.host.AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
    session.host.Start();
    CHECK(session.OwnControls(session.FirstWindow(), contactButton).size() == 1);
    const standin::Window second = session.host.OpenExplorer(FolderKind::Contacts);
    REQUIRE(session.OwnControls(second, contactButton).size() == 1);
    CHECK(session.OwnControls(second, contactButton).front().index == 8);
    CHECK(session.OwnControls(second, contactButton).front().enabled);
    session.host.Activate(session.FirstWindow());
    session.host.Activate(second);
    CHECK(session.OwnControls(second, contactButton).size() == 1);
    session.host.SwitchFolder(second, FolderKind::Inbox);
    CHECK(session.OwnControls(second, contactButton).empty());
}

FROM_VERSION("the button that a window opens with is disabled where the contacts folder has nothing to send", 10) {
    Session session({.version = version});
    session.host.Start();
    const standin::Window second = session.host.OpenExplorer(FolderKind::Contacts);
    REQUIRE(session.OwnControls(second, contactButton).size() == 1);
    CHECK_FALSE(session.OwnControls(second, contactButton).front().enabled);
}

TEST_CASE("Outlook 2000: a later window gets the send-to-phone button with a change of folder, not by activation") {
    Session session({.version = 9});
    session.host.Start();
    const standin::Window second = session.host.OpenExplorer(FolderKind::Contacts);
    CHECK(session.OwnControls(second, contactButton).empty());
    session.host.SwitchFolder(second, FolderKind::Inbox);
    session.host.SwitchFolder(second, FolderKind::Contacts);
    CHECK(session.OwnControls(second, contactButton).size() == 1);
}

FROM_VERSION("the send-to-phone button stands where the registry says", 10) {
    Session session({.version = version});
    e2e::WriteValue(e2e::addInKey, "107Pos", "2");
    session.host.Start();
    session.host.SwitchFolder(session.FirstWindow(), FolderKind::Contacts);
    REQUIRE(session.OwnControls(session.FirstWindow(), contactButton).size() == 1);
    CHECK(session.OwnControls(session.FirstWindow(), contactButton).front().index == 2);
}

FROM_VERSION("the send-to-phone button is enabled while something is selected", 10) {
    Session session({.version = version});
    session.host.Start();
    const standin::Item ann = session.host.AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
    const standin::Window window = session.FirstWindow();
    session.host.SwitchFolder(window, FolderKind::Contacts);
    const auto enabled = [&] { return session.OwnControls(window, contactButton).front().enabled; };
    session.host.Select(window, {});
    CHECK_FALSE(enabled());
    session.host.Select(window, {ann});
    CHECK(enabled());
}

FROM_VERSION("three selected contacts are queued in order by one click", 10) {
    Session session({.version = version});
    session.host.Start();
    std::string expected;
    std::vector<standin::Item> items;
    for (const char* name : {"Ann", "Bob", "Cec"}) {
        items.push_back(session.host.AddItem(FolderKind::Contacts, {{"FullName", name}}));
        expected += ";" + session.host.EntryId(items.back());
    }
    const standin::Window window = session.FirstWindow();
    session.host.SwitchFolder(window, FolderKind::Contacts);
    session.host.Select(window, items);
    session.host.Click(session.OwnControls(window, contactButton).front());
    CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC") == expected);
}

FROM_VERSION("a selected item that the host cannot give is passed over and the others are queued", 10) {
    Session session({.version = version});
    session.host.Start();
    const standin::Item ann = session.host.AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
    const standin::Item bob = session.host.AddItem(FolderKind::Contacts, {{"FullName", "Bob"}});
    const standin::Window window = session.FirstWindow();
    session.host.SwitchFolder(window, FolderKind::Contacts);
    session.host.Select(window, {ann, bob});
    session.host.FailMember("Selection.Item", standin::Fault::Fails(E_FAIL), 1);
    session.host.Click(session.OwnControls(window, contactButton).front());
    CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC") == ";" + session.host.EntryId(bob));
}

IN_EVERY_VERSION("a popup left from an earlier run is deleted and rebuilt, never duplicated") {
    Session session({.version = version});
    session.host.Start();
    const standin::Window window = session.FirstWindow();
    session.host.UnloadAddIn(e2e::progId);
    session.host.AddCustomButton(window, "Menu Bar", "Cor&vella", "");  // the same caption but for its mark
    session.LoadAddIn();
    const auto controls = session.host.Controls(window, "Menu Bar");
    CHECK(std::count_if(controls.begin(), controls.end(), [](const auto& control) {
              return control.caption == "C&orvella" || control.caption == "Cor&vella";
          }) == 1);
    CHECK(session.Popups(window).size() == 1);
}

IN_EVERY_VERSION("a closed Explorer lets go of everything of its window") {
    Session session({.version = version});
    session.host.Start();
    const int references = session.host.References();
    const int advises = session.host.Advises();
    for (int round = 0; round < 3; ++round) session.host.CloseWindow(session.host.OpenExplorer(FolderKind::Contacts));
    CHECK(session.host.References() == references);
    CHECK(session.host.Advises() == advises);
}

FROM_VERSION("windows that were open before the add-in was loaded get their buttons too", 10) {
    Session session({.version = version});
    session.host.Start();
    session.host.UnloadAddIn(e2e::progId);
    const standin::Window second = session.host.OpenExplorer();
    const standin::Window contact = session.OpenNew(standin::ItemClass::Contact);
    session.LoadAddIn();
    CHECK(session.SendButton(contact));
    session.host.Activate(session.FirstWindow());
    session.host.Activate(second);
    CHECK(session.Popups(session.FirstWindow()).size() == 1);
    CHECK(session.Popups(second).size() == 1);
}

FROM_VERSION("a click on the synchronise button of one of two windows runs one command once", 10) {
    Session session({.version = version});
    e2e::WriteValue(e2e::productKey, "Path", "Z:\\nowhere");
    session.host.Start();
    const standin::Window second = session.host.OpenExplorer();
    session.host.Record();
    const standin::ClickResult click = session.host.Click(session.OwnControls(second, "103").front());
    CHECK(click.sinks == 2);
    int acted = 0;  // the wrapper that acts reads the clicked control's mark
    for (const std::string& line : session.host.Transcript())
        acted += line.find(".OnAction ->") != std::string::npos ? 1 : 0;
    CHECK(acted == 1);
}

FROM_VERSION("menu entries have no tag, so the host asks all of them in all windows, and one acts once", 10) {
    Session session({.version = version});
    session.host.Start();
    const standin::Window second = session.host.OpenExplorer();
    const standin::ControlView popup = session.Popups(second).front();
    REQUIRE(popup.entries.size() == std::size(menuTable));
    session.host.Record();
    CHECK(session.host.Click(popup.entries.at(4)).sinks == static_cast<int>(2 * std::size(menuTable)));
    int acted = 0;  // a handler that is let through reads the clicked control's mark
    for (const std::string& line : session.host.Transcript()) {
        acted += line.find(".OnAction ->") != std::string::npos ? 1 : 0;
    }
    CHECK(acted == 1);
}
