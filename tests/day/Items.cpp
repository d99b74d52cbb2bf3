// The stations in item windows: saved and sent with the add-in's button.
#include "day/Ribbon.h"
#include "outlook/program/RibbonTabs.h"

namespace program::day {
namespace {

// Presses the button; false where it cannot be seen.
using PressButton = std::function<bool()>;

PressButton CheckOnRibbon(const Stage& stage, standin::Window window) {
    const FoundOnRibbon button = OnRibbon(stage, window, saveAndSendOnRibbon);
    if (!stage.Check("its ribbon has the save-and-send button", static_cast<bool>(button))) return {};
    stage.Say("         \"" + button.control.label + "\", on the tab \"" + button.tab + "\", in the group \"" +
              button.group + "\"");
    stage.Check("large, on the first tab, with its picture and the caption of the language",
                button.control.large && button.tab == stage.Outlook().Ribbon(window).front().label &&
                    HasPicture(button.control, 32) &&
                    button.control.label == Unmarked(LanguageText("OutlookAddIn", saveAndSendOnRibbon)));
    stage.Check("its command bars have nothing of the add-in", OwnControls(stage, window).empty());
    return [&stage, window, id = button.control.id] { return stage.PressRibbon(window, id); };
}

// The add-in's button in an item window, where it stands and looks as it should in this version; to be seen.
PressButton CheckOnBar(const Stage& stage, standin::Window window) {
    const char* tag = stage.Outlook().Version() >= outlook2003 ? "102" : "101";
    const standin::ControlView button = OwnButton(stage, window, tag);
    if (!stage.Check("its toolbar has the save-and-send button", static_cast<bool>(button))) return {};
    stage.Say("         \"" + button.caption + "\", tag " + button.tag + ", position " + std::to_string(button.index) +
              ", OnAction " + button.onAction);
    stage.Check("second, with the caption of the language",
                button.index == 2 && button.caption == LanguageText("OutlookAddIn", "ButtonUpdate"));
    if (stage.Outlook().Version() >= outlook2007)
        stage.Check("the ribbon has the tab \"Add-Ins\", which opens", stage.OpenTab(window, addInsTab));
    return [&stage, window, instance = button.instance] { return stage.Press(window, instance); };
}

struct Kind {
    const char* list;                   // in the registry
    std::string CorvellaStart::*found;  // what Corvella found in it
};
constexpr Kind contactKind{"ChangedC", &CorvellaStart::contacts};
constexpr Kind taskKind{"ChangedT", &CorvellaStart::tasks};
constexpr Kind appointmentKind{"ChangedA", &CorvellaStart::appointments};

void SaveAndSend(const Stage& stage, standin::Item item, standin::Window window, const Kind& kind,
                 const char* picture) {
    const standin::Outlook& outlook = stage.Outlook();
    stage.Check("it has unsaved changes", !outlook.IsSaved(item));
    const PressButton press = HasRibbon(stage) ? CheckOnRibbon(stage, window) : CheckOnBar(stage, window);
    if (!press) return;
    stage.Picture(picture);
    std::optional<std::string> list;
    bool saved = false, closed = false;
    const CorvellaStart start = ExpectStart(stage, "the change-watch timer", "update", [&] {
        stage.Check("the mouse presses it", press());
        list = Value(outlookKey, kind.list);
        saved = outlook.IsSaved(item);
        closed = !outlook.Exists(window);
    });
    stage.Check("the click saved the item and closed its window", saved && closed);
    stage.Say(std::string("         \"") + kind.list + "\" after the click: " + Shown(list));
    const std::string expected = ";" + outlook.EntryId(item);
    stage.Check("that was the item's entry id", expected.size() > 1 && list == expected);
    stage.Check("Corvella found it there", start.*kind.found == expected);
    stage.Check("and has cleared the list", Value(outlookKey, kind.list).value_or("").empty());
}

}  // namespace

void OneContact(const Stage& stage) {
    stage.Section("A contact is opened, edited, saved and sent");
    const standin::Item contact = stage.Outlook().ItemsIn(FolderKind::Contacts).front();
    const standin::Window window = stage.Outlook().OpenInspector(contact);
    stage.Type(window, "JobTitle", "Head of sales");
    SaveAndSend(stage, contact, window, contactKind, "contact");
    stage.Check("the contact reads \"Head of sales\"", stage.Outlook().Field(contact, "JobTitle") == "Head of sales");
    stage.Picture("sent");
}

void TaskAndAppointment(const Stage& stage) {
    standin::Outlook& outlook = stage.Outlook();
    stage.Section("A task is edited, saved and sent");
    const standin::Item task = outlook.ItemsIn(FolderKind::Tasks).front();
    const standin::Window taskWindow = outlook.OpenInspector(task);
    stage.Type(taskWindow, "PercentComplete", "75");
    SaveAndSend(stage, task, taskWindow, taskKind, "task");

    stage.Section("A new appointment is saved for the first time and sent");
    const standin::Item appointment = outlook.NewItem(ItemClass::Appointment);
    const standin::Window appointmentWindow = outlook.OpenInspector(appointment);
    stage.Type(appointmentWindow, "Subject", "Visit at Baker & Sons");
    stage.Type(appointmentWindow, "Location", "Harbour Street 5");
    stage.Check("it has no entry id yet", outlook.EntryId(appointment).empty());
    SaveAndSend(stage, appointment, appointmentWindow, appointmentKind, "appointment");
}

}  // namespace program::day
