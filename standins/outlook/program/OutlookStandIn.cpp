// OutlookStandIn.exe: the windowed stand-in, with a tour through its own windows.
#include <windows.h>

#include "outlook/program/Main.h"
#include "outlook/program/RibbonTabs.h"

namespace program {
namespace {

using standin::FolderKind;
using standin::ItemClass;

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
    for (const standin::Window window : outlook.Windows()) {
        if (!stage.OpenTab(window, addInsTab)) continue;
        stage.Picture("ribbon");
        break;
    }
    stage.ShowAddIns();
    stage.Picture("add-ins");
}

}  // namespace
}  // namespace program

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    constexpr program::Scenario scenarios[] = {{"tour", program::Tour}};
    return program::Main(scenarios);
}
