// What the add-in costs the host: every call that crosses into it is counted at the stand-in's gate, QueryInterface for
// connection points included, and told apart by its line in the transcript.
#include <doctest.h>

#include <algorithm>

#include "addin/Members.h"
#include "e2e/Session.h"
#include "testing/HostCalls.h"
#include "testing/MenuTable.h"
#include "testing/Versions.h"

using platform::Dispatch;

namespace {

int CallsOfSwitch(e2e::Session& session, standin::Window window, standin::FolderKind folder) {
    session.host.ResetCalls();
    session.host.SwitchFolder(window, folder);
    return session.host.Calls();
}

void CheckIds(const Dispatch& object, std::initializer_list<platform::Member> members) {
    REQUIRE(object);
    for (const platform::Member& member : members) {
        CAPTURE(member.Name());
        wchar_t name[32] = L"";
        MultiByteToWideChar(CP_ACP, 0, member.Name(), -1, name, 32);
        LPOLESTR names = name;
        DISPID id = DISPID_UNKNOWN;
        CHECK(object.Get()->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id) == S_OK);
        CHECK(id == member.Id());
    }
}

}  // namespace

IN_EVERY_VERSION(
    "a menu costs at most 24 calls of the host and four an entry beyond writing and walking over controls") {
    e2e::Session session({.version = version});
    const HostCalls::MenuBuild build = HostCalls::OfMenu(session.host);
    constexpr int entries = static_cast<int>(std::size(menuTable));
    CHECK(session.Popups(session.host.Windows().back()).front().entries.size() == entries);
    CHECK(build.entryWrites > entries * 6);
    CHECK(build.rest > entries * 4);        // each entry is added, and its clicks connected in three calls
    CHECK(build.rest <= 24 + entries * 4);  // two of them ask which folder the window opens with
    const HostCalls::Lines all = session.host.Transcript();
    CHECK(std::count_if(all.begin(), all.end(), HostCalls::IsCall) == session.host.Calls());  // each has its line
}

IN_EVERY_VERSION("a folder switch that changes no button costs at most 3 calls of the host") {
    e2e::Session session({.version = version});
    session.host.Start();
    const standin::Window second = session.host.OpenExplorer(standin::FolderKind::Inbox);  // sunk by every version
    const int calls = CallsOfSwitch(session, second, standin::FolderKind::Tasks);
    CHECK(calls > 0);
    CHECK(calls <= 3);
    CHECK(CallsOfSwitch(session, second, standin::FolderKind::OutlookToday) <= 3);
    CHECK(CallsOfSwitch(session, session.FirstWindow(), standin::FolderKind::Calendar) <= 3);
    CHECK(CallsOfSwitch(session, second, standin::FolderKind::Contacts) > 3);  // it gets its button
    CHECK(session.OwnControls(second, "107").size() == 1);
}

IN_EVERY_VERSION("a known id is the one by which the host has the member of that name, in every version") {
    e2e::Session session({.version = version});
    session.host.AddItem(standin::FolderKind::Inbox);
    session.host.Start();
    session.OpenNew(standin::ItemClass::Task);
    using namespace Members;
    const Dispatch outlook = Dispatch::Attach(session.host.Application());
    CheckIds(outlook, {Application, Class, Outlook::Name, Outlook::Version, Outlook::ActiveExplorer, Outlook::Explorers,
                       Outlook::Inspectors});
    const Dispatch explorers = outlook.Object("Explorers");
    CheckIds(explorers, {Collection::Count, Collection::Item});
    CheckIds(outlook.Object("Inspectors"), {Collection::Count, Collection::Item});
    const Dispatch explorer = explorers.Object("Item", 1);
    CheckIds(explorer, {Application, Class, Window::CommandBars, Window::CurrentFolder, Window::Selection});
    CheckIds(explorer.Object("Selection"), {Collection::Count, Collection::Item});
    CheckIds(explorer.Object("CurrentFolder"), {Folder::DefaultItemType});
    const Dispatch inspector = outlook.Object("ActiveInspector");
    CheckIds(inspector, {Application, Window::CommandBars, Window::CurrentItem});
    CheckIds(inspector.Object("CurrentItem"), {Class, Item::EntryID, Item::Close});
    CheckIds(outlook.Object("COMAddIns").Object("Item", 1), {AddIn::ProgId});
    const Dispatch bars = explorer.Object("CommandBars");
    CheckIds(bars, {Bars::Item});
    const Dispatch bar = bars.Object("Item", "Menu Bar");
    CheckIds(bar, {Bar::Controls, Bar::Name});
    const Dispatch controls = bar.Object("Controls");
    CheckIds(controls, {Controls::Add, Controls::Count, Controls::Item});
    const Dispatch popup = controls.Object("Item", "Corvella");
    CheckIds(popup, {Control::BeginGroup, Control::BuiltIn, Control::Caption, Control::Delete, Control::Enabled,
                     Control::InstanceId, Control::OLEUsage, Control::OnAction, Control::Parameter, Control::Tag,
                     Control::Visible, Popup::CommandBar, Popup::Controls});
    const Dispatch entry = popup.Object("Controls").Object("Item", 1);
    CheckIds(entry, {Control::BeginGroup, Control::Caption, Button::FaceId, Button::PasteFace, Button::Style});
    if (version >= 10) CheckIds(entry, {Button::Picture, Button::Mask});
}

TEST_CASE(
    "a user of another process finds the ribbon's controls by their ids, and clicks them in the window in front") {
    e2e::Session session({.version = 16}, e2e::RibbonIs::Asked);
    session.host.Start();
    {
        const Dispatch user = Dispatch::Attach(session.host.User());
        CHECK(user.Object("FindRibbon", "TabMail_mEditor").Text("Label") == "Corvella Editor");
        CHECK(user.Object("FindRibbon", "TabMail_Main").Text("Kind") == "menu");
        CHECK_FALSE(user.Object("FindRibbon", "TabMail_None"));
        CHECK_FALSE(user.Flag("ClickRibbon", "TabContact_ButtonUpdate"));
        const standin::Window contact = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann"}});
        CHECK_FALSE(user.Object("FindRibbon", "TabMail_mEditor"));
        CHECK(user.Object("FindRibbon", "TabContact_ButtonUpdate").Flag("Enabled"));
        CHECK(user.Flag("ClickRibbon", "TabContact_ButtonUpdate"));
        CHECK_FALSE(session.host.Exists(contact));
        CHECK(user.Text("RibbonsAsked") == "Microsoft.Outlook.Explorer Microsoft.Outlook.Contact ");
        CHECK_FALSE(Dispatch::Attach(session.host.Application()).Object("User"));
    }
    session.host.Quit();
    CHECK(session.host.References() == 0);
}
