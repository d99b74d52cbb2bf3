// What the add-in costs the host: every call that crosses into it is counted at the stand-in's gate, QueryInterface for
// connection points included, and told apart by its line in the transcript.
#include <doctest.h>

#include <algorithm>

#include "addin/Members.h"
#include "e2e/Session.h"

using platform::Dispatch;

namespace {

using Lines = std::vector<std::string>;

bool Holds(const std::string& line, const char* part) { return line.find(part) != std::string::npos; }

// A call in, as opposed to actions and events of the host.
bool IsCall(const std::string& line) {
    const std::size_t first = line.find_first_not_of(' ');
    return first != std::string::npos && line[first] != '#' && line[first] != '!' && line[first] != '?';
}

// From the last line that holds `part` on.
Lines From(const Lines& lines, const char* part) {
    const auto found = std::find_if(lines.rbegin(), lines.rend(), [&](const auto& line) { return Holds(line, part); });
    return found == lines.rend() ? Lines() : Lines(found.base() - 1, lines.end());
}

struct MenuBuild {
    int walk = 0;         // over the controls that are there already
    int entryWrites = 0;  // to the properties of the nine entries
    int buttonWrites = 0;
    int rest = 0;
};

bool IsWalk(const std::string& line) {
    if (Holds(line, "Controls of ")) return Holds(line, ".Count ->") || Holds(line, ".Item(");
    const bool reads = Holds(line, ".Caption -> ") || Holds(line, ".BuiltIn -> ") || Holds(line, ".Tag -> ") ||
                       Holds(line, ".OnAction -> ") || Holds(line, ".Parameter -> ");
    return reads;
}

MenuBuild Count(const Lines& lines) {
    MenuBuild build;
    bool atEntries = true;
    for (const std::string& line : lines) {
        if (!IsCall(line)) continue;
        if (Holds(line, ".Item(\"Standard\")")) atEntries = false;
        const bool isWrite = Holds(line, "CommandBarButton ") && Holds(line, " = ");
        if (IsWalk(line))
            ++build.walk;
        else if (isWrite)
            ++(atEntries ? build.entryWrites : build.buttonWrites);
        else
            ++build.rest;
    }
    return build;
}

// The calls of one build of the menu: of the second window's first activation; in Outlook 2000 of the connection.
Lines CallsOfMenuBuild(e2e::Session& session) {
    session->Record(standin::Detail::Everything);
    session->ResetCalls();
    session->Start();
    if (session->Version() == 9) return From(session->Transcript(), "Explorer 1.Class");
    session->ClearTranscript();
    session->ResetCalls();
    session->OpenExplorer(standin::FolderKind::Calendar);
    return From(session->Transcript(), "! Explorer 2: Activate()");
}

int CallsOfSwitch(e2e::Session& session, standin::Window window, standin::FolderKind folder) {
    session->ResetCalls();
    session->SwitchFolder(window, folder);
    return session->Calls();
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

TEST_CASE("a menu costs at most 60 calls of the host beyond writing its controls and walking over those there are") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        e2e::Session session({.version = version});
        const Lines lines = CallsOfMenuBuild(session);
        const MenuBuild build = Count(lines);
        CHECK(session.Popups(session->Windows().back()).front().entries.size() == 9);
        CHECK(build.entryWrites > 9 * 6);
        CHECK(build.rest > 9 * 4);  // each entry is added, and its clicks connected in three calls
        CHECK(build.rest <= 60);
        MESSAGE("Outlook " << version << ": " << build.rest << " calls, and " << build.walk << " of the walk, "
                           << build.entryWrites << " and " << build.buttonWrites << " writes to entries and button");
        // No call is missing among the lines.
        const Lines all = session->Transcript();
        CHECK(std::count_if(all.begin(), all.end(), IsCall) == session->Calls());
    }
}

TEST_CASE("a folder switch that changes no button costs at most 3 calls of the host") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        e2e::Session session({.version = version});
        session->Start();
        const standin::Window second = session->OpenExplorer(standin::FolderKind::Inbox);  // sunk by every version
        const int calls = CallsOfSwitch(session, second, standin::FolderKind::Tasks);
        CHECK(calls > 0);
        CHECK(calls <= 3);
        CHECK(CallsOfSwitch(session, second, standin::FolderKind::OutlookToday) <= 3);
        CHECK(CallsOfSwitch(session, session.FirstWindow(), standin::FolderKind::Calendar) <= 3);
        CHECK(CallsOfSwitch(session, second, standin::FolderKind::Contacts) > 3);  // it gets its button
        CHECK(session.OwnControls(second, "107").size() == 1);
    }
}

TEST_CASE("a known id is the one by which the host has the member of that name, in every version") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        e2e::Session session({.version = version});
        session->AddItem(standin::FolderKind::Inbox);
        session->Start();
        session.OpenNew(standin::ItemClass::Task);
        using namespace Members;
        const Dispatch outlook = Dispatch::Attach(session->Application());
        CheckIds(outlook, {Application, Class, Outlook::Name, Outlook::Version, Outlook::ActiveExplorer,
                           Outlook::Explorers, Outlook::Inspectors});
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
}
