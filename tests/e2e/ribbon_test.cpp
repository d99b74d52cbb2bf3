// What a user sees and does on the ribbon of Outlook 2010 and later.
#include <doctest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "e2e/OwnLanguage.h"
#include "e2e/RecordedCorvella.h"
#include "e2e/Session.h"
#include "e2e/User.h"
#include "testing/ImportPatch.h"
#include "testing/MenuTable.h"

using e2e::RecordedCorvella;
using e2e::RibbonIs;
using e2e::Session;
using standin::FolderKind;
using standin::Item;
using standin::ItemClass;
using standin::Options;
using standin::RibbonAsked;
using standin::RibbonControlView;
using standin::RibbonGroupView;
using standin::RibbonTabView;
using standin::Window;

namespace {

constexpr int ribbonVersions[] = {14, 15, 16};
constexpr const char* sendToPhone = "TabContacts_ButtonSendToPhone";
const std::vector<std::string> nothing;

using Texts = std::vector<std::string>;

// Calls `play` with a session in each of the versions, which is started.
template <class Play>
void InEachVersion(const Play& play, const standin::RibbonOptions& ribbon = {}) {
    for (const int version : ribbonVersions) {
        CAPTURE(version);
        Session session({.version = version, .ribbon = ribbon}, RibbonIs::Asked);
        session.host.Start();
        play(session);
        CHECK(session.host.Complaints() == nothing);
    }
}

const RibbonTabView* Tab(const std::vector<RibbonTabView>& tabs, const std::string& name) {
    for (const RibbonTabView& tab : tabs)
        if (tab.name == name) return &tab;
    return nullptr;
}

// The one group of ours in that tab.
RibbonGroupView OwnGroup(Session& session, Window window, const std::string& tab) {
    const std::vector<RibbonTabView> tabs = session.host.Ribbon(window);
    const RibbonTabView* found = Tab(tabs, tab);
    REQUIRE(found);
    REQUIRE(found->groups.size() == 1);
    return found->groups.front();
}

Texts Labels(const std::vector<RibbonControlView>& controls) {
    Texts labels;
    for (const RibbonControlView& control : controls) {
        if (control.visible) labels.push_back(control.kind == "menuSeparator" ? "-" : control.label);
    }
    return labels;
}

bool HasBarControls(Session& session, Window window) {
    return !session.OwnControls(window).empty() || !session.Popups(window).empty();
}

std::string Changed(const char* letter) {
    return e2e::ReadValue(e2e::outlookKey, std::string("Changed") + letter).value_or("");
}

std::vector<Item> AddContacts(Session& session, int count) {
    std::vector<Item> contacts;
    for (int number = 0; number < count; ++number) {
        contacts.push_back(
            session.host.AddItem(FolderKind::Contacts, {{"FullName", "Person " + std::to_string(number)}}));
    }
    return contacts;
}

Window ShowContacts(Session& session, const std::vector<Item>& selected) {
    const Window window = session.FirstWindow();
    session.host.SwitchFolder(window, FolderKind::Contacts);
    session.host.Select(window, selected);
    return window;
}

// The resolution that the library finds.
int dots = 96;
int WINAPI DotsOf(HDC device, int index) {
    return index == LOGPIXELSX || index == LOGPIXELSY ? dots : GetDeviceCaps(device, index);
}

// What the menu's captions are on a ribbon: without "&", a "-" before each group; and the letter behind the "&".
Texts MenuLabels() {
    Texts labels;
    for (const MenuRow& row : menuTable) {
        if (row.beginsGroup) labels.push_back("-");
        std::string label = row.caption;
        label.erase(label.find('&'), 1);
        labels.push_back(label);
    }
    return labels;
}
Texts MenuKeyTips() {
    Texts tips;
    for (const MenuRow& row : menuTable) {
        const std::string_view caption = row.caption;
        const char letter = caption[caption.find('&') + 1];
        tips.push_back(std::string(1, static_cast<char>(std::toupper(static_cast<unsigned char>(letter)))));
    }
    return tips;
}

constexpr std::pair<ItemClass, const char*> itemButtons[] = {
    {ItemClass::Contact, "TabContact_ButtonUpdate"},
    {ItemClass::Task, "TabTask_ButtonUpdate"},
    {ItemClass::Appointment, "TabAppointment_ButtonUpdate"},
};
constexpr const char* itemLetters[] = {"C", "T", "A"};

// The group on the mail tab where an inch has so many dots.
RibbonGroupView GroupAt(int resolution) {
    Session session({.version = 16}, RibbonIs::Asked);
    session.host.Start();
    ImportPatch patch;
    const ImportPatch::Import import[] = {{"GDI32.dll", "GetDeviceCaps", reinterpret_cast<void*>(&DotsOf)}};
    REQUIRE(patch.Replace(GetModuleHandleA("CVOutlookAddIn.dll"), import) == 1);
    dots = resolution;
    return OwnGroup(session, session.FirstWindow(), "TabMail");
}

}  // namespace

TEST_CASE("the home tab of each module has the Corvella group, and no command bar has anything of ours") {
    InEachVersion([](Session& session) {
        const Window window = session.FirstWindow();
        const std::pair<FolderKind, const char*> modules[] = {{FolderKind::Inbox, "TabMail"},
                                                              {FolderKind::Contacts, "TabContacts"},
                                                              {FolderKind::Calendar, "TabCalendar"},
                                                              {FolderKind::Tasks, "TabTasks"}};
        for (const auto& [folder, tab] : modules) {
            session.host.SwitchFolder(window, folder);
            const RibbonGroupView group = OwnGroup(session, window, tab);
            CHECK(group.label == "Corvella");
            REQUIRE(group.controls.size() >= 2);
            CHECK(group.controls[0].kind == "menu");
            CHECK(group.controls[0].large);
            CHECK(group.controls[0].label == "Corvella");
            CHECK(Labels(group.controls[0].controls) == MenuLabels());
            CHECK(group.controls[1].label == "Synchronize");
        }
        CHECK_FALSE(HasBarControls(session, window));
        CHECK(session.host.RibbonErrors() == nothing);
        CHECK(session.host.RibbonsAsked() == Texts{"Microsoft.Outlook.Explorer"});
    });
}

TEST_CASE("the access keys of the menu are its key tips, its labels carry none") {
    InEachVersion([](Session& session) {
        Texts keyTips;
        for (const RibbonControlView& entry :
             OwnGroup(session, session.FirstWindow(), "TabMail").controls[0].controls) {
            if (entry.kind == "button") keyTips.push_back(entry.keytip);
        }
        CHECK(keyTips == MenuKeyTips());
    });
}

TEST_CASE("pictures have transparency and a light edge, in the size of their control") {
    InEachVersion([](Session& session) {
        const RibbonGroupView group = OwnGroup(session, session.FirstWindow(), "TabMail");
        CHECK(group.controls[0].image.width == 32);
        CHECK(group.controls[1].image.width == 16);
        for (const RibbonControlView& control : group.controls) {
            const auto& colours = control.image.colours;
            CHECK(std::count(colours.begin(), colours.end(), 0u) > 0);
            CHECK(
                std::any_of(colours.begin(), colours.end(), [](std::uint32_t colour) { return colour >> 24 == 255; }));
            CHECK(std::any_of(colours.begin(), colours.end(), [](std::uint32_t colour) {
                const std::uint32_t alpha = colour >> 24;
                return alpha > 50 && alpha < 255 && (colour & 0xFF) == alpha && (colour >> 16 & 0xFF) == alpha;
            }));
        }
        CHECK(group.controls[0].controls[0].image.width == 16);  // the editor
        CHECK(group.controls[0].controls[3].image.width == 0);   // synchronise contacts
    });
}

TEST_CASE("the menu has the editor's picture, and no other command has it") {
    const RibbonGroupView usual = GroupAt(96), fine = GroupAt(192);  // where a small one is as large as the menu's
    const auto& menu = usual.controls[0].image.colours;
    CHECK(menu == fine.controls[0].controls[0].image.colours);
    CHECK(menu != fine.controls[1].image.colours);
    int others = 0;
    for (std::size_t i = 1; i < fine.controls[0].controls.size(); ++i) {
        const auto& picture = fine.controls[0].controls[i].image;
        if (picture.width == 0) continue;
        CHECK(picture.colours != menu);
        ++others;
    }
    CHECK(others == 3);
}

TEST_CASE("pictures are as large as the resolution asks for") {
    constexpr std::pair<int, int> sides[] = {{96, 16}, {120, 20}, {144, 24}, {192, 32}};
    for (const auto& row : sides) {
        const int resolution = row.first, side = row.second;
        CAPTURE(resolution);
        const RibbonGroupView group = GroupAt(resolution);
        CHECK(group.controls[0].image.width == 2 * side);
        CHECK(group.controls[1].image.width == side);
        CHECK(group.controls[1].image.height == side);
    }
}

TEST_CASE("sending is offered in contacts folders alone, and can be clicked while something is selected") {
    InEachVersion([](Session& session) {
        const Window window = session.FirstWindow();
        CHECK_FALSE(session.host.FindRibbon(window, sendToPhone));
        session.host.SwitchFolder(window, FolderKind::Contacts);
        CHECK(session.host.FindRibbon(window, sendToPhone).visible);
        CHECK_FALSE(session.host.FindRibbon(window, sendToPhone).enabled);
        CHECK_FALSE(session.host.ClickRibbon(window, sendToPhone));
        session.host.Select(window, AddContacts(session, 1));
        CHECK(session.host.FindRibbon(window, sendToPhone).enabled);
        session.host.Select(window, {});
        CHECK_FALSE(session.host.FindRibbon(window, sendToPhone).enabled);
        session.host.SwitchFolder(window, FolderKind::Inbox);
        CHECK_FALSE(session.host.ClickRibbon(window, sendToPhone));
        CHECK(Changed("C").empty());
    });
}

TEST_CASE("a click sends each selected contact once, in the order of the selection") {
    InEachVersion([](Session& session) {
        const std::vector<Item> contacts = AddContacts(session, 3);
        const Window window = ShowContacts(session, {contacts[2], contacts[0]});
        CHECK(session.host.ClickRibbon(window, sendToPhone));
        CHECK(Changed("C") == ";" + session.host.EntryId(contacts[2]) + ";" + session.host.EntryId(contacts[0]));
    });
}

TEST_CASE("the context menu of one and of several contacts sends them, that of mails offers nothing") {
    InEachVersion([](Session& session) {
        const std::vector<Item> contacts = AddContacts(session, 2);
        const Window window = ShowContacts(session, {contacts[0]});
        CHECK(Labels(session.host.ContextMenu(window)) == Texts{"Send to Phone"});
        CHECK(session.host.ClickContextMenu(window, "ContextMenuContactItem_ButtonSendToPhone"));
        CHECK(Changed("C") == ";" + session.host.EntryId(contacts[0]));
        session.host.Select(window, {contacts[1], contacts[0]});
        CHECK(Labels(session.host.ContextMenu(window)) == Texts{"Send to Phone"});
        CHECK(session.host.ClickContextMenu(window, "ContextMenuMultipleItems_ButtonSendToPhone"));
        CHECK(Changed("C") == ";" + session.host.EntryId(contacts[0]) + ";" + session.host.EntryId(contacts[1]));

        const std::vector<Item> mails = {session.host.AddItem(FolderKind::Inbox),
                                         session.host.AddItem(FolderKind::Inbox)};
        session.host.SwitchFolder(window, FolderKind::Inbox);
        session.host.Select(window, mails);
        CHECK(Labels(session.host.ContextMenu(window)) == Texts{});
        CHECK_FALSE(session.host.ClickContextMenu(window, "ContextMenuMultipleItems_ButtonSendToPhone"));
    });
}

TEST_CASE("a contact, a task and an appointment are saved and sent from the first tab of their windows") {
    InEachVersion([](Session& session) {
        for (std::size_t i = 0; i < 3; ++i) {
            const auto& [kind, id] = itemButtons[i];
            const Item item = session.host.NewItem(kind, {{"Subject", "Something"}});
            const Window window = session.host.OpenInspector(item);
            const RibbonControlView button = session.host.FindRibbon(window, id);
            CHECK(button.visible);
            CHECK(button.large);
            CHECK(button.label == "Save and Send to Phone");
            CHECK(button.screentip == "Save and Send to Phone");
            CHECK(button.image.width == 32);
            CHECK_FALSE(HasBarControls(session, window));
            CHECK(session.host.ClickRibbon(window, id));
            CHECK_FALSE(session.host.Exists(window));
            CHECK(session.host.EntryId(item).size() == 140);
            CHECK(Changed(itemLetters[i]) == ";" + session.host.EntryId(item));
        }
        CHECK(session.host.RibbonErrors() == nothing);
    });
}

TEST_CASE("a task request, which is not sent to the phone, shows the task's ribbon without the button") {
    InEachVersion([](Session& session) {
        const Window window = session.OpenNew(ItemClass::TaskRequest);
        CHECK_FALSE(session.host.FindRibbon(window, "TabTask_ButtonUpdate").visible);
        CHECK_FALSE(session.host.ClickRibbon(window, "TabTask_ButtonUpdate"));
    });
}

TEST_CASE("each command of the menu starts Corvella as the command bars' entry does") {
    const std::pair<const char*, const char*> commands[] = {
        {"mEditor", ""},       {"mSync", "syncdlg ol"},   {"mSync0", "sync 0 ol"},     {"mSync1", "sync 1 ol"},
        {"mNewSMS", "smsnew"}, {"mSettings", "settings"}, {"Buttonsync", "syncdlg ol"}};
    InEachVersion([&](Session& session) {
        RecordedCorvella corvella;
        corvella.Install();
        for (const auto& [tag, argument] : commands) {
            const std::string command = tag;
            CAPTURE(command);
            CHECK(session.host.ClickRibbon(session.FirstWindow(), "TabMail_" + command));
            CHECK(corvella.Starts(1) == Texts{corvella.Line(argument)});
        }
        CHECK(corvella.StartsLater() == nothing);
    });
}

TEST_CASE("the options and the info box are shown from the ribbon") {
    InEachVersion([](Session& session) {
        e2e::User cancel("Cancel");
        CHECK(session.host.ClickRibbon(session.FirstWindow(), "TabMail_mOptions"));
        CHECK(cancel.boxes.size() == 1);
    });
    InEachVersion([](Session& session) {
        e2e::User ok("OK");
        CHECK(session.host.ClickRibbon(session.FirstWindow(), "TabMail_mAbout"));
        CHECK(ok.boxes.size() == 1);
    });
}

TEST_CASE("a click in another window while the options are open acts once, in that window") {
    InEachVersion([](Session& session) {
        const Window contact = session.OpenNew(ItemClass::Contact, {{"FullName", "Ann"}});
        const Window other = session.OpenNew(ItemClass::Contact, {{"FullName", "Ben"}});
        const Item item = session.host.View(contact).item;
        e2e::User cancel("Cancel");
        bool clicked = false;
        cancel.beforeAnswer = [&](const e2e::User::Box&) {
            clicked = session.host.ClickRibbon(contact, "TabContact_ButtonUpdate");
            CHECK(session.host.ClickRibbon(session.FirstWindow(), "TabMail_mOptions"));  // the same dialog
        };
        CHECK(session.host.ClickRibbon(session.FirstWindow(), "TabMail_mOptions"));
        CHECK(cancel.boxes.size() == 1);
        CHECK(clicked);
        CHECK_FALSE(session.host.Exists(contact));
        CHECK(session.host.Exists(other));
        CHECK(Changed("C") == ";" + session.host.EntryId(item));
    });
}

TEST_CASE("with two Explorers and three contacts open, a click acts once and in its own window") {
    InEachVersion([](Session& session) {
        const std::vector<Item> contacts = AddContacts(session, 2);
        const Window first = ShowContacts(session, {contacts[0]});
        const Window second = session.host.OpenExplorer(FolderKind::Contacts);
        session.host.Select(second, {contacts[1]});
        CHECK(session.host.ClickRibbon(first, sendToPhone));
        CHECK(Changed("C") == ";" + session.host.EntryId(contacts[0]));
        CHECK(session.host.ClickRibbon(second, sendToPhone));
        CHECK(Changed("C") == ";" + session.host.EntryId(contacts[0]) + ";" + session.host.EntryId(contacts[1]));

        std::vector<Window> windows;
        for (int i = 0; i < 3; ++i) windows.push_back(session.OpenNew(ItemClass::Contact, {{"FullName", "New"}}));
        const Item clicked = session.host.View(windows[1]).item;
        CHECK(session.host.ClickRibbon(windows[1], "TabContact_ButtonUpdate"));
        CHECK_FALSE(session.host.Exists(windows[1]));
        CHECK(session.host.Exists(windows[0]));
        CHECK(session.host.Exists(windows[2]));
        CHECK(Changed("C").ends_with(";" + session.host.EntryId(clicked)));
    });
}

TEST_CASE("each Explorer shows its own state of the button, which all of them share") {
    InEachVersion([](Session& session) {
        const std::vector<Item> contacts = AddContacts(session, 1);
        const Window first = ShowContacts(session, contacts);
        const Window second = session.host.OpenExplorer(FolderKind::Contacts);
        session.host.Select(second, {});
        CHECK(session.host.FindRibbon(first, sendToPhone).enabled);
        CHECK_FALSE(session.host.FindRibbon(second, sendToPhone).enabled);
        session.host.Select(first, {});
        session.host.Select(second, contacts);
        CHECK_FALSE(session.host.FindRibbon(first, sendToPhone).enabled);
        CHECK(session.host.FindRibbon(second, sendToPhone).enabled);
    });
}

TEST_CASE("the same contact opened, sent, opened and sent again is listed once and served each time") {
    InEachVersion([](Session& session) {
        const Item contact = AddContacts(session, 1).front();
        for (int time = 0; time < 2; ++time) {
            const Window window = session.host.OpenInspector(contact);
            CHECK(session.host.OpenInspector(contact) == window);
            CHECK(session.host.ClickRibbon(window, "TabContact_ButtonUpdate"));
            CHECK_FALSE(session.host.Exists(window));
        }
        CHECK(Changed("C") == ";" + session.host.EntryId(contact));
    });
}

TEST_CASE("two hundred windows are opened, each with its button, and closed again with nothing held") {
    Session session({.version = 16}, RibbonIs::Asked);
    session.host.Start();
    const int held = session.host.References();
    std::vector<Window> windows;
    for (int i = 0; i < 200; ++i) windows.push_back(session.OpenNew(itemButtons[i % 3].first));
    for (int i = 0; i < 200; ++i)
        CHECK(session.host.FindRibbon(windows[static_cast<std::size_t>(i)], itemButtons[i % 3].second).visible);
    CHECK(session.host.RibbonsAsked().size() == 4);
    for (const Window window : windows) session.host.CloseWindow(window, standin::SaveMode::Discard);
    CHECK(session.host.References() <= held + 3);  // one for each kind of item window
    session.host.Quit();
    CHECK(session.host.References() == 0);
    CHECK(session.host.Advises() == 0);
}

TEST_CASE("whatever the language file says, the host takes every ribbon and each control can be read") {
    const std::string hostile[] = {"",
                                   " ",
                                   "&",
                                   "&&&&",
                                   "<button id=\"x\"/>",
                                   "\" onLoad=\"Another",
                                   "]]></customUI>",
                                   "&amp;&#0;&#x1F;",
                                   "<!-- <![CDATA[ <?xml",
                                   "\x01\x02\x7F\x81\x8D",
                                   "%s%n%x",
                                   std::string(5000, '&'),
                                   std::string(5000, '\"')};
    int number = 0;
    for (const std::string& text : hostile) {
        CAPTURE(text.substr(0, 40));
        std::string file = "[OutlookAddIn]\r\n";
        for (const MenuRow& row : menuTable) file += std::string(row.key) + "=" + text + "\r\n";
        for (const char* key : {"Buttonsync", "ButtonSendToPhone", "ButtonUpdate"}) {
            file += key;
            file += "=" + text + "\r\n";
        }
        const e2e::OwnLanguage language(file);
        Session session({.version = ribbonVersions[number++ % 3]}, RibbonIs::Asked);
        language.Start(session);
        const Window window = session.FirstWindow();
        session.host.SwitchFolder(window, FolderKind::Contacts);
        const RibbonGroupView group = OwnGroup(session, window, "TabContacts");
        REQUIRE(group.controls.size() == 3);
        CHECK(Labels(group.controls[0].controls).size() == std::size(menuTable) + 5);  // with the lines between them
        for (const std::string& label : Labels(group.controls[0].controls)) CHECK_FALSE(label.empty());
        CHECK_FALSE(group.controls[1].label.empty());
        CHECK_FALSE(group.controls[2].label.empty());
        const Window contact = session.OpenNew(ItemClass::Contact);
        CHECK_FALSE(session.host.FindRibbon(contact, "TabContact_ButtonUpdate").label.empty());
        CHECK(session.host.RibbonErrors() == nothing);
        CHECK(session.host.Complaints() == nothing);
        CHECK_FALSE(HasBarControls(session, window));
    }
}

TEST_CASE("whenever the host asks for the ribbon, the user has it and no command bars") {
    for (const RibbonAsked asked :
         {RibbonAsked::BeforeStartupComplete, RibbonAsked::AfterStartupComplete, RibbonAsked::AfterActivate}) {
        CAPTURE(static_cast<int>(asked));
        InEachVersion(
            [](Session& session) {
                const Window window = session.FirstWindow();
                CHECK(OwnGroup(session, window, "TabMail").controls.size() == 2);
                CHECK_FALSE(HasBarControls(session, window));
                const Window contact = session.OpenNew(ItemClass::Contact);
                CHECK(session.host.FindRibbon(contact, "TabContact_ButtonUpdate").visible);
                CHECK_FALSE(HasBarControls(session, contact));
            },
            {.asked = asked});
    }
}

TEST_CASE("a host that never asks for the ribbon gets the command bars") {
    InEachVersion(
        [](Session& session) {
            const Window window = session.FirstWindow();
            CHECK(session.Entries(window).size() == std::size(menuTable));
            CHECK(session.OwnControls(window, "103").size() == 1);
            session.host.SwitchFolder(window, FolderKind::Contacts);
            CHECK(session.OwnControls(window, "107").size() == 1);
            CHECK(session.SendButton(session.OpenNew(ItemClass::Contact)));
            CHECK(Tab(session.host.Ribbon(window), "TabAddIns"));
        },
        {.asked = RibbonAsked::Never});
}

TEST_CASE("a host that refuses the ribbon gets the command bars, and never both") {
    const standin::RibbonOptions refusing[] = {{.refuseAll = true}, {.missingIds = {"TabCalendarTableView"}}};
    for (const standin::RibbonOptions& options : refusing) {
        InEachVersion(
            [](Session& session) {
                const Window window = session.FirstWindow();
                CHECK(session.host.RibbonErrors().size() == 1);
                CHECK(session.Entries(window).size() == std::size(menuTable));
                const std::vector<RibbonTabView> tabs = session.host.Ribbon(window);
                REQUIRE(Tab(tabs, "TabMail"));
                CHECK(Tab(tabs, "TabMail")->groups.empty());
                const Window second = session.host.OpenExplorer(FolderKind::Contacts);
                CHECK(session.Entries(second).size() == std::size(menuTable));
            },
            options);
    }
}

TEST_CASE("where only the contact's ribbon is refused, only contact windows have the button on their command bars") {
    InEachVersion(
        [](Session& session) {
            CHECK_FALSE(HasBarControls(session, session.FirstWindow()));
            const Window contact = session.OpenNew(ItemClass::Contact);
            CHECK(session.SendButton(contact));
            CHECK_FALSE(session.host.FindRibbon(contact, "TabContact_ButtonUpdate"));
            const Window task = session.OpenNew(ItemClass::Task);
            CHECK_FALSE(session.SendButton(task));
            CHECK(session.host.FindRibbon(task, "TabTask_ButtonUpdate").visible);
        },
        {.missingIds = {"TabContact"}});
}

TEST_CASE("an add-in that the user ticks later has its ribbon at once, and none once it is unticked") {
    InEachVersion([](Session& session) {
        const Window window = session.FirstWindow();
        const Window contact = session.OpenNew(ItemClass::Contact);
        REQUIRE(session.host.UnloadAddIn(e2e::progId));
        CHECK(Tab(session.host.Ribbon(window), "TabMail")->groups.empty());
        CHECK(session.host.References() == 0);
        REQUIRE(session.host.LoadAddIn(e2e::progId));
        CHECK(OwnGroup(session, window, "TabMail").controls.size() == 2);
        CHECK(session.host.FindRibbon(contact, "TabContact_ButtonUpdate").visible);
        CHECK_FALSE(HasBarControls(session, window));
        CHECK_FALSE(HasBarControls(session, contact));
    });
}

TEST_CASE("Outlook 2007 asks for item windows and gets nothing: its command bars stay") {
    Session session({.version = 12}, RibbonIs::Asked);
    session.host.Start();
    CHECK(session.Entries(session.FirstWindow()).size() == std::size(menuTable));
    const Window contact = session.OpenNew(ItemClass::Contact);
    CHECK(session.SendButton(contact));
    CHECK(session.host.RibbonsAsked() == Texts{"Microsoft.Outlook.Contact"});
    CHECK_FALSE(session.host.FindRibbon(contact, "TabContact_ButtonUpdate"));
    CHECK(session.host.RibbonErrors() == nothing);
}

TEST_CASE("a session that is started by automation has no ribbon of ours, as it has no menus") {
    Session session({.version = 16, .startedBy = standin::StartedBy::Automation}, RibbonIs::Asked);
    session.host.Start();
    const Window window = session.host.OpenExplorer();
    CHECK(Tab(session.host.Ribbon(window), "TabMail")->groups.empty());
    CHECK_FALSE(HasBarControls(session, window));
}

TEST_CASE("at the end of the session nothing of the ribbon is held, and the mark of a running add-in is gone") {
    InEachVersion([](Session& session) {
        session.OpenNew(ItemClass::Contact);
        CHECK_FALSE(session.host.Ribbon(session.FirstWindow()).empty());
        session.host.Quit();
        CHECK(session.host.References() == 0);
        CHECK(session.host.Advises() == 0);
        CHECK_FALSE(e2e::ReadValue(e2e::addInKey, "Active"));
    });
}
