// The stations in Explorers: what the add-in brings along, and how it follows folders, selections and windows.
#include <algorithm>

#include "day/Ribbon.h"
#include "testing/MenuTable.h"

namespace program::day {
namespace {

constexpr const char* texts = "OutlookAddIn";
constexpr const char* synchronise = "103";
constexpr const char* sendToPhone = "107";
constexpr int sendToPhonePlace = 8;

// A picture of 16 x 16 that is more than one colour.
bool HasPicture(const Stage& stage, const standin::ControlView& control) {
    const standin::Pixels face = stage.Outlook().FaceOf(control.instance);
    return face.width == 16 && face.height == 16 &&
           std::any_of(face.colours.begin(), face.colours.end(),
                       [&](std::uint32_t colour) { return colour != face.colours.front(); });
}

void CheckEntries(const Stage& stage, const standin::ControlView& menu) {
    bool captions = true, separators = true, pictures = true;
    for (std::size_t i = 0; i < std::size(menuTable) && i < menu.entries.size(); ++i) {
        const standin::ControlView& entry = menu.entries[i];
        const MenuRow& expected = menuTable[i];
        stage.Say(std::string("         ") + (entry.beginGroup ? "---- " : "     ") +
                  (HasPicture(stage, entry) ? "[#] " : "    ") + entry.caption);
        captions = captions && !entry.caption.empty() && entry.caption == LanguageText(texts, expected.key);
        separators = separators && entry.beginGroup == expected.beginsGroup;
        pictures = pictures && HasPicture(stage, entry) == (expected.picture != 0);
    }
    stage.Check("the captions are those of " + Language() + ".lng",
                captions && menu.entries.size() == std::size(menuTable));
    stage.Check("separators and pictures are where they belong", separators && pictures);
}

// The window of which the host tells its folder's changes: Outlook 2000 tells none of its first one.
standin::Window ContactsWindow(const Stage& stage) {
    for (const standin::Window window : stage.Outlook().Windows())
        if (OwnButton(stage, window, sendToPhone) || OnRibbon(stage, window, sendOnRibbon)) return window;
    return {};
}

void CheckSendButton(const Stage& stage, standin::Window window) {
    const standin::ControlView button = OwnButton(stage, window, sendToPhone);
    if (!stage.Check("contacts: the send-to-phone button is there", static_cast<bool>(button))) return;
    stage.Say("         \"" + button.caption + "\", tag " + button.tag + ", position " + std::to_string(button.index));
    stage.Check("at position 8, with its picture and the caption of the language",
                button.index == sendToPhonePlace && HasPicture(stage, button) &&
                    button.caption == LanguageText(texts, "ButtonSendToPhone"));
    const auto enabled = [&] { return OwnButton(stage, window, sendToPhone).enabled; };
    stage.SelectFirst(window, 0);
    stage.Check("with nothing selected it is grey", !enabled());
    stage.SelectFirst(window, 1);
    stage.Check("with a contact selected it is not", enabled());
}

}  // namespace

void Connection(const Stage& stage) {
    const standin::Outlook& outlook = stage.Outlook();
    stage.Section("The add-in");
    for (const standin::AddInView& addIn : outlook.AddIns())
        stage.Say("         " + addIn.progId + ", \"" + addIn.friendlyName + "\", LoadBehavior " +
                  std::to_string(addIn.loadBehavior));
    stage.Check("it was found in the registry, created through COM and is connected",
                outlook.AddIns().size() == 1 && outlook.AddIns().front().connected);
    stage.Say("         OnConnection made " + std::to_string(outlook.Calls()) +
              " calls of the host, of which it now holds " + std::to_string(outlook.References()) + " references and " +
              std::to_string(outlook.Advises()) + " event sinks");
    stage.Check("the registry value \"Active\" is \"1\"", Value(addInKey, "Active") == "1");
    const UINT needed = LanguageText("Info", "CharSet") == "238" ? 1250 : 1252;
    stage.Check("Windows' code page is that of the language, " + std::to_string(needed), GetACP() == needed);
}

void Bars(const Stage& stage) {
    stage.Section("Menu and toolbar of the Explorer");
    const standin::Window window = FirstWindow(stage);
    const standin::ControlView menu = Menu(stage, window);
    if (!stage.Check("the menu bar has the popup \"C&orvella\"", menu.caption == "C&orvella")) return;
    const auto menuBar = stage.Outlook().Controls(window, "Menu Bar");
    stage.Check("before its last menu", menu.index == static_cast<int>(menuBar.size()) - 1);
    stage.Check("with " + std::to_string(std::size(menuTable)) + " entries",
                menu.entries.size() == std::size(menuTable));
    CheckEntries(stage, menu);
    const standin::ControlView button = OwnButton(stage, window, synchronise);
    stage.Check("the toolbar has the synchronise button", static_cast<bool>(button));
    stage.Say("         \"" + button.caption + "\", tag " + button.tag + ", position " + std::to_string(button.index));
    stage.Check("last, behind a separator, with its picture and the caption of the language",
                button.index == static_cast<int>(stage.Outlook().Controls(window, "Standard").size()) &&
                    button.beginGroup && HasPicture(stage, button) &&
                    button.caption == LanguageText(texts, "Buttonsync"));
    stage.Check("the mouse opens the menu",
                stage.Press(window, menu.instance) && stage.Hover(window, menu.entries.front().instance));
    stage.Picture("menu");
    stage.CloseMenu(window);
}

void ContactsFolder(const Stage& stage) {
    stage.Section("The contacts folder");
    const standin::Window first = FirstWindow(stage);
    stage.Check("inbox: no send-to-phone button", !OwnButton(stage, first, sendToPhone));
    stage.ChooseFolder(first, FolderKind::Contacts);
    standin::Window window = first;
    if (stage.Outlook().Version() == outlook2000) {
        stage.Check("Outlook 2000: its first window has no such button", !OwnButton(stage, first, sendToPhone));
        window = stage.Outlook().OpenExplorer(FolderKind::Inbox);
        stage.ChooseFolder(window, FolderKind::Contacts);
    }
    CheckSendButton(stage, window);
    stage.ChooseFolder(window, FolderKind::Inbox);
    stage.Check("inbox again: the button is gone", !OwnButton(stage, window, sendToPhone));
    stage.ChooseFolder(window, FolderKind::Contacts);
    stage.Check("contacts again: it is back at its place",
                OwnButton(stage, window, sendToPhone).index == sendToPhonePlace);
}

void SeveralContacts(const Stage& stage) {
    stage.Section("Three contacts are selected and sent");
    const standin::Window window = ContactsWindow(stage);
    if (!stage.Check("a window has the button", static_cast<bool>(window))) return;
    stage.SelectFirst(window, 3);
    std::string expected;
    for (const standin::Item item : stage.Outlook().View(window).selection)
        expected += ";" + stage.Outlook().EntryId(item);
    stage.Check("three are selected", stage.Outlook().View(window).selection.size() == 3);
    stage.Picture("contacts");
    std::optional<std::string> list;
    const CorvellaStart start = ExpectStart(stage, "the change-watch timer", "update", [&] {
        Press(stage, window, Button::ToSend);
        list = Value(outlookKey, "ChangedC");
    });
    stage.Say("         \"ChangedC\" after the click: " + Shown(list));
    stage.Check("\"ChangedC\" had the three entry ids, in the order of the selection", list == expected);
    stage.Check("Corvella found them there", start.contacts == expected);
    stage.Check("and has cleared the list", Value(outlookKey, "ChangedC").value_or("").empty());
    if (window == FirstWindow(stage)) return;
    stage.Outlook().CloseWindow(window);
    stage.Pump(100);
}

void SecondExplorer(const Stage& stage) {
    stage.Section("A second Explorer");
    standin::Outlook& outlook = stage.Outlook();
    const standin::Window first = FirstWindow(stage);
    const Held before = HeldNow(stage);
    const std::vector<int> controls = OwnControls(stage, first);
    const auto untouched = [&] { return OwnControls(stage, first) == controls; };
    const standin::Window second = outlook.OpenExplorer(FolderKind::Inbox);
    stage.Pump(200);
    const bool serves = outlook.Version() >= outlook2002;
    if (serves) {
        stage.Check("it has a popup of its own, with all entries",
                    Menu(stage, second).entries.size() == std::size(menuTable) &&
                        Menu(stage, second).instance != Menu(stage, first).instance);
        stage.Check("and a synchronise button of its own", static_cast<bool>(OwnButton(stage, second, synchronise)));
    } else {
        stage.Check("Outlook 2000: no popup and no synchronise button in it", OwnControls(stage, second).empty());
    }
    stage.ChooseFolder(second, FolderKind::Contacts);
    stage.Check("in its contacts folder it has the send-to-phone button",
                static_cast<bool>(OwnButton(stage, second, sendToPhone)));
    stage.Check("the first one's " + std::to_string(controls.size()) + " controls are the same as before", untouched());
    stage.Picture("two-explorers");
    if (serves) {
        ExpectStart(stage, "its synchronise button", "syncdlg ol",
                    [&] { Press(stage, second, Button::ToSynchronise); });
    }
    const standin::Window third = outlook.OpenExplorer(FolderKind::Contacts);
    stage.Pump(200);
    const bool hasButton = static_cast<bool>(OwnButton(stage, third, sendToPhone));
    stage.Check(serves
                    ? "a window that opens with the contacts folder has that button at once"
                    : "Outlook 2000: a window that opens with the contacts folder has it only after a change of folder",
                hasButton == serves);
    outlook.CloseWindow(third);
    CheckCloses(stage, second, before);
    stage.Check("the first one's controls are still the same", untouched());
}

void Quit(const Stage& stage) {
    standin::Outlook& outlook = stage.Outlook();
    stage.Section("Outlook quits");
    const standin::Ending ending = outlook.Quit();
    if (outlook.Version() < 14) {
        stage.Check("the host ended and told the add-in", ending == standin::Ending::AddInsTold);
    } else {
        stage.Check("the host ended and told no add-in, as it does", ending == standin::Ending::AddInsNotTold);
    }
    for (const std::string& line : outlook.ReferenceList()) stage.Say("         held: " + line);
    stage.Check("references still held: " + std::to_string(outlook.References()), outlook.References() == 0);
    stage.Check("event sinks left: " + std::to_string(outlook.Advises()), outlook.Advises() == 0);
    stage.Check("\"Active\" is gone", !Value(addInKey, "Active"));
    for (const std::string& line : outlook.Complaints()) stage.Say("         remark of the host: " + line);
}

}  // namespace program::day
