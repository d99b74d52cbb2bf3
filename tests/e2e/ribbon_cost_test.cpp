// What the ribbon costs the host, and what is left where calls of the host fail.
#include <doctest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "e2e/RecordedCorvella.h"
#include "e2e/Session.h"

using e2e::RibbonIs;
using e2e::Session;
using standin::Fault;
using standin::FolderKind;
using standin::ItemClass;
using standin::Window;

namespace {

constexpr int ribbonVersions[] = {14, 15, 16};
constexpr const char* sendToPhone = "TabContacts_ButtonSendToPhone";

bool TouchesBars(const std::string& line) { return line.find("CommandBar") != std::string::npos; }

// A day with the ribbon. What a fault has kept away is not clicked.
void PlayDay(Session& session) {
    session.host.Start();
    const Window window = session.FirstWindow();
    const standin::Item contact = session.host.AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
    session.host.SwitchFolder(window, FolderKind::Contacts);
    session.host.Select(window, {contact});
    session.host.ClickRibbon(window, sendToPhone);
    session.host.ClickContextMenu(window, "ContextMenuContactItem_ButtonSendToPhone");
    const Window opened = session.host.OpenInspector(session.host.NewItem(ItemClass::Contact));
    session.host.ClickRibbon(opened, "TabContact_ButtonUpdate");
    const Window second = session.host.OpenExplorer(FolderKind::Inbox);
    CHECK_FALSE(session.host.Ribbon(second).empty());
    session.host.CloseWindow(second);
    session.host.SwitchFolder(window, FolderKind::Inbox);
    session.host.UnloadAddIn(e2e::progId);
    session.host.LoadAddIn(e2e::progId);
    session.host.Quit();
}

}  // namespace

TEST_CASE("connection and ribbon together make at most 60 calls of the host, and touch no command bar") {
    for (const int version : ribbonVersions) {
        CAPTURE(version);
        Session session({.version = version}, RibbonIs::Asked);
        session.host.Record();
        session.host.Start();
        const int calls = session.host.Calls();
        MESSAGE("Outlook " << version << ": " << calls << " calls");
        CHECK(calls > 5);
        CHECK(calls <= 60);
        PlayDay(session);
        const std::vector<std::string> lines = session.host.Transcript();
        REQUIRE(lines.size() > 20);
        CHECK(std::none_of(lines.begin(), lines.end(), TouchesBars));
    }
}

TEST_CASE("a folder switch and a selection that change nothing have nothing asked for again") {
    Session session({.version = 16}, RibbonIs::Asked);
    session.host.Start();
    session.host.SwitchFolder(session.FirstWindow(), FolderKind::Tasks);
    session.host.Record();
    session.host.SwitchFolder(session.FirstWindow(), FolderKind::Calendar);
    session.host.Select(session.FirstWindow(), {});
    const std::vector<std::string> lines = session.host.Transcript();
    CHECK(std::none_of(lines.begin(), lines.end(),
                       [](const std::string& line) { return line.find("Invalidate") != std::string::npos; }));
    CHECK(lines.size() > 2);
}

TEST_CASE("with any one host call of the ribbon's day failing, nothing is held and Outlook goes on") {
    const Fault faults[] = {Fault::Fails(E_FAIL), Fault::Exception(E_ACCESSDENIED), Fault::Fails(RPC_E_DISCONNECTED),
                            Fault::Empty()};
    int calls = 0;
    {
        Session undisturbed({.version = 16}, RibbonIs::Asked);
        PlayDay(undisturbed);
        calls = undisturbed.host.Calls();
    }
    REQUIRE(calls > 60);
    MESSAGE(calls << " calls");
    for (int number = 1; number <= calls; ++number) {
        const Fault& fault = faults[number % 4];
        CAPTURE(number);
        Session session({.version = ribbonVersions[number % 3]}, RibbonIs::Asked);
        session.host.FailCall(number, fault);
        PlayDay(session);
        for (const standin::AddInView& addIn : session.host.AddIns()) CHECK(addIn.loadBehavior == 3);
        CHECK(session.host.References() == 0);
        CHECK(session.host.Advises() == 0);
    }
}
