// Scenarios for OutlookStandIn.exe /play <name>: what a person would do, with pictures on the way.
#include "outlook/Scenarios.h"
#include "outlook/program/Stage.h"

namespace program {

namespace {

using standin::FolderKind;
using standin::ItemClass;

// A contact is opened and edited, and the add-in's save-and-send button clicked.
void SendContact(const Stage& stage) {
    standin::Outlook& outlook = stage.Outlook();
    const standin::Window explorer = outlook.Windows().front();
    outlook.SwitchFolder(explorer, FolderKind::Contacts);
    stage.OpenMenu(explorer, "Corvella");
    stage.Picture("menu");
    stage.CloseMenu(explorer);

    const standin::Item ann = outlook.ItemsIn(FolderKind::Contacts).front();
    const standin::Window window = outlook.OpenInspector(ann);
    stage.Type(window, "JobTitle", "Head of sales");
    stage.Check("the contact has unsaved changes", !outlook.IsSaved(ann));
    stage.Picture("contact");
    const standin::ControlView button = stage.TagBeginning(window, "10");
    if (!stage.Check("the window has the add-in's button", static_cast<bool>(button))) return;
    stage.Click(window, button);
    stage.Check("the window is closed", !outlook.Exists(window));
    stage.Check("the contact is saved", outlook.IsSaved(ann));
    stage.Pump(2000);  // the add-in's timer
    stage.Picture("sent");
}

// Every kind of window, for looking at the stand-in itself.
void Tour(const Stage& stage) {
    standin::Outlook& outlook = stage.Outlook();
    const standin::Window explorer = outlook.Windows().front();
    stage.Picture("explorer");
    stage.OpenMenu(explorer, "File");
    stage.Picture("menu");
    stage.CloseMenu(explorer);
    outlook.SwitchFolder(explorer, FolderKind::Contacts);
    stage.Pump(100);
    const std::vector<standin::Item> contacts = outlook.ItemsIn(FolderKind::Contacts);
    outlook.Select(explorer, {contacts[1], contacts[2]});
    stage.Picture("contacts");
    outlook.OpenInspector(outlook.NewItem(ItemClass::Mail));
    outlook.OpenInspector(outlook.ItemsIn(FolderKind::Tasks).front());
    outlook.OpenInspector(outlook.ItemsIn(FolderKind::Calendar).front());
    stage.Picture("inspectors");
    stage.ShowAddIns();
    stage.Picture("add-ins");
}

constexpr Scenario scenarios[] = {
    {"contact", SendContact},
    {"demo", PlayDemo},
    {"tour", Tour},
};

}  // namespace

const Scenario* FindScenario(const std::string& name) {
    for (const Scenario& scenario : scenarios)
        if (name == scenario.name) return &scenario;
    return nullptr;
}

}  // namespace program
