// The stations of the Explorers' ribbon: what the add-in brings along, and how it follows folders, selections and windows.
#include "day/Ribbon.h"

#include <algorithm>
#include <set>
#include <utility>

#include "testing/MenuTable.h"

namespace program::day {
namespace {

constexpr const char* texts = "OutlookAddIn";
constexpr const char* homeTab = "Home";
constexpr const char* separator = "menuSeparator";
constexpr int small = 16, large = 32;  // with 96 dots an inch

using standin::RibbonControlView;

const RibbonControlView* WithTag(const std::vector<RibbonControlView>& controls, const std::string& tag) {
    for (const RibbonControlView& control : controls) {
        if (!control.visible) continue;
        if (control.tag == tag) return &control;
        if (const RibbonControlView* found = WithTag(control.controls, tag)) return found;
    }
    return nullptr;
}

// The access key of a text as it stands on a key tip; empty where it marks none.
std::string AccessKey(const std::string& text) {
    const std::size_t mark = text.find('&');
    if (mark == std::string::npos || mark + 1 == text.size()) return {};
    const char key = text[mark + 1];
    return {key >= 'a' && key <= 'z' ? static_cast<char>(key - 'a' + 'A') : key};
}

void CheckEntries(const Stage& stage, const RibbonControlView& menu) {
    bool captions = true, separators = true, pictures = true, keyTips = true, line = false;
    std::size_t place = 0;
    std::set<std::string> taken;
    for (const RibbonControlView& entry : menu.controls) {
        if (entry.kind == separator) {
            line = true;
            continue;
        }
        if (place == std::size(menuTable)) break;
        const MenuRow& expected = menuTable[place++];
        const std::string text = LanguageText(texts, expected.key), key = AccessKey(text);
        stage.Say(std::string("         ") + (line ? "---- " : "     ") + (HasPicture(entry, small) ? "[#] " : "    ") +
                  entry.label + (entry.keytip.empty() ? "" : "  (" + entry.keytip + ")"));
        captions = captions && !entry.label.empty() && entry.label == Unmarked(text);
        separators = separators && std::exchange(line, false) == expected.beginsGroup;
        pictures = pictures && HasPicture(entry, small) == (expected.picture != 0);
        keyTips = keyTips && entry.keytip == (taken.insert(key).second ? key : std::string());
    }
    stage.Check("the captions are those of " + Language() + ".lng", captions && place == std::size(menuTable));
    stage.Check("separators and pictures are where they belong", separators && pictures);
    stage.Check("their key tips are the access keys of the language", keyTips);
}

bool HasOwnBars(const Stage& stage, standin::Window window) {
    return !OwnControls(stage, window).empty() || Menu(stage, window);
}

void CheckAsked(const Stage& stage) {
    const standin::Outlook& outlook = stage.Outlook();
    for (const std::string& id : outlook.RibbonsAsked()) stage.Say("         the host asked for " + id);
    for (const std::string& error : outlook.RibbonErrors()) stage.Say("         refused: " + error);
    stage.Check("it asked for the Explorer's ribbon, once, and took what it was given",
                outlook.RibbonsAsked() == std::vector<std::string>{"Microsoft.Outlook.Explorer"} &&
                    outlook.RibbonErrors().empty());
}

void CheckSendButton(const Stage& stage, standin::Window window) {
    const auto button = [&] { return OnRibbon(stage, window, sendOnRibbon); };
    if (!stage.Check("contacts: the send-to-phone button is there", static_cast<bool>(button()))) return;
    stage.Say("         \"" + button().control.label + "\", on the tab \"" + button().tab + "\", in the group \"" +
              button().group + "\"");
    stage.Check(
        "with its picture and the caption of the language",
        HasPicture(button().control, small) && button().control.label == Unmarked(LanguageText(texts, sendOnRibbon)));
    stage.SelectFirst(window, 0);
    stage.Check("with nothing selected it is grey", !button().control.enabled);
    stage.SelectFirst(window, 1);
    stage.Check("with a contact selected it is not", button().control.enabled);
}

void CheckModules(const Stage& stage, standin::Window window) {
    constexpr std::pair<FolderKind, const char*> modules[] = {
        {FolderKind::Calendar, "calendar"}, {FolderKind::Tasks, "tasks"}, {FolderKind::Inbox, "inbox"}};
    for (const auto& [folder, name] : modules) {
        stage.ChooseFolder(window, folder);
        stage.Check(std::string(name) + ": its home tab has the menu and the synchronise button",
                    OnRibbon(stage, window, menuOnRibbon).tab == homeTab &&
                        OnRibbon(stage, window, synchroniseOnRibbon).tab == homeTab);
    }
}

void CheckSecond(const Stage& stage, standin::Window first, standin::Window second) {
    const auto sends = [&](standin::Window window) { return OnRibbon(stage, window, sendOnRibbon); };
    stage.Check("it has the menu, with all entries",
                WithTag(OnRibbon(stage, second, menuOnRibbon).control.controls, "mAbout") != nullptr);
    stage.Check("and the synchronise button", static_cast<bool>(OnRibbon(stage, second, synchroniseOnRibbon)));
    stage.ChooseFolder(first, FolderKind::Inbox);
    stage.ChooseFolder(second, FolderKind::Contacts);
    stage.SelectFirst(second, 2);
    stage.Check("in its contacts folder it has the send-to-phone button, which can be clicked",
                sends(second).control.enabled);
    stage.Check("the first one, in the inbox, has not", !sends(first));
    stage.Picture("two-explorers");
    ExpectStart(stage, "its synchronise button", "syncdlg ol",
                [&] { stage.PressRibbon(second, OnRibbon(stage, second, synchroniseOnRibbon).control.id); });
}

}  // namespace

// Outlook 2007 asks for the ribbons of item windows alone, and is given none.
bool HasRibbon(const Stage& stage) {
    return stage.Outlook().Version() >= outlook2010 && !stage.Outlook().RibbonsAsked().empty();
}

FoundOnRibbon OnRibbon(const Stage& stage, standin::Window window, const std::string& tag) {
    for (const standin::RibbonTabView& tab : stage.Outlook().Ribbon(window))
        for (const standin::RibbonGroupView& group : tab.groups)
            if (const RibbonControlView* control = WithTag(group.controls, tag))
                return {tab.label, group.label, *control};
    return {};
}

bool HasPicture(const RibbonControlView& control, int side) {
    const auto& colours = control.image.colours;
    const auto alpha = [](std::uint32_t wanted) {
        return [wanted](std::uint32_t colour) { return colour >> 24 == wanted; };
    };
    return control.image.width == side && control.image.height == side &&
           std::any_of(colours.begin(), colours.end(), alpha(255)) &&
           std::any_of(colours.begin(), colours.end(), alpha(0));
}

std::string Unmarked(const std::string& text) {
    std::string unmarked;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && ++i == text.size()) break;
        unmarked += text[i];
    }
    return unmarked;
}

void ExplorerRibbon(const Stage& stage) {
    stage.Section("The ribbon of the Explorer");
    const standin::Window window = FirstWindow(stage);
    CheckAsked(stage);
    const FoundOnRibbon menu = OnRibbon(stage, window, menuOnRibbon);
    if (!stage.Check("a large menu button is on it", menu && menu.control.kind == "menu" && menu.control.large)) return;
    stage.Say("         \"" + menu.control.label + "\", on the tab \"" + menu.tab + "\", in the group \"" + menu.group +
              "\"");
    stage.Check("on the home tab, in the group \"Corvella\", with its picture of 32 x 32",
                menu.tab == homeTab && menu.group == "Corvella" && HasPicture(menu.control, large));
    CheckEntries(stage, menu.control);
    const RibbonControlView button = OnRibbon(stage, window, synchroniseOnRibbon).control;
    stage.Check("beside it is the synchronise button, with its picture and the caption of the language",
                HasPicture(button, small) && button.label == Unmarked(LanguageText(texts, synchroniseOnRibbon)));
    stage.Check("no command bar has anything of the add-in", !HasOwnBars(stage, window));
    CheckModules(stage, window);
    stage.Check("the mouse opens the menu", stage.PressRibbon(window, menu.control.id) &&
                                                stage.HoverRibbon(window, menu.control.controls.front().id));
    stage.Picture("menu");
    stage.CloseMenu(window);
}

void ContactsRibbon(const Stage& stage) {
    stage.Section("The contacts folder");
    const standin::Window window = FirstWindow(stage);
    const auto isThere = [&] { return static_cast<bool>(OnRibbon(stage, window, sendOnRibbon)); };
    stage.Check("inbox: no send-to-phone button", !isThere());
    stage.ChooseFolder(window, FolderKind::Contacts);
    CheckSendButton(stage, window);
    stage.ChooseFolder(window, FolderKind::Inbox);
    stage.Check("inbox again: the button is gone", !isThere());
    stage.ChooseFolder(window, FolderKind::Contacts);
    stage.Check("contacts again: it is back", isThere());
}

void ContactsMenu(const Stage& stage) {
    stage.Section("A contact is sent from the menu of a right click");
    const standin::Window window = FirstWindow(stage);
    stage.SelectFirst(window, 1);
    const std::string expected = ";" + stage.Outlook().EntryId(stage.Outlook().View(window).selection.at(0));
    const std::vector<RibbonControlView> entries = stage.Outlook().ContextMenu(window);
    if (!stage.Check("the menu has one entry of the add-in", entries.size() == 1)) return;
    stage.Check("with its picture and the caption of the language",
                HasPicture(entries[0], small) && entries[0].label == Unmarked(LanguageText(texts, sendOnRibbon)));
    stage.Check("the right button of the mouse opens it",
                stage.RightClickSelection(window) && stage.HoverRibbon(window, entries[0].id));
    stage.Picture("context-menu");
    const CorvellaStart start =
        ExpectStart(stage, "the change-watch timer", "update", [&] { stage.PressRibbon(window, entries[0].id); });
    stage.Check("Corvella found the contact's entry id", start.contacts == expected);
    stage.Check("and has cleared the list", Value(outlookKey, "ChangedC").value_or("").empty());
}

void SecondExplorerRibbon(const Stage& stage) {
    stage.Section("A second Explorer");
    standin::Outlook& outlook = stage.Outlook();
    const standin::Window first = FirstWindow(stage);
    const Held before = HeldNow(stage);
    const std::size_t asked = outlook.RibbonsAsked().size();
    const standin::Window second = outlook.OpenExplorer(FolderKind::Inbox);
    stage.Pump(200);
    CheckSecond(stage, first, second);
    const standin::Window third = outlook.OpenExplorer(FolderKind::Contacts);
    stage.Pump(200);
    stage.Check("a window that opens with the contacts folder has that button at once",
                static_cast<bool>(OnRibbon(stage, third, sendOnRibbon)));
    stage.Check("the host asked for no further ribbon", outlook.RibbonsAsked().size() == asked);
    outlook.CloseWindow(third);
    CheckCloses(stage, second, before);
    stage.Check("the first one's menu is as before", static_cast<bool>(OnRibbon(stage, first, menuOnRibbon)));
}

}  // namespace program::day
