#include "outlook/program/RibbonTabs.h"

#include <algorithm>
#include <iterator>

#include "outlook/BuiltInBars.h"

namespace program {

namespace {

using standin::BarView;
using standin::ControlView;
using standin::ItemClass;

constexpr const char* ownTab = "";  // the one that is named after the item

struct CommandPlace {
    const char* tab;
    const char* group;
    int id;
};
constexpr CommandPlace commandPlaces[] = {
    {ownTab, "Send", standin::IdSend},
    {ownTab, "Actions", standin::IdSaveAndClose},
    {ownTab, "Actions", standin::IdSave},
    {ownTab, "Actions", standin::IdDelete},
    {ownTab, "Actions", standin::IdForward},
    {ownTab, "Show", 1017},  // the previous item
    {ownTab, "Show", 1018},  // the next one
    {ownTab, "Names", standin::IdAddressBook},
    {ownTab, "Options", standin::IdFlag},
    {ownTab, "Proofing", 2566},
    {"Insert", "Include", standin::IdInsertFile},
    {"Format Text", "Clipboard", standin::IdPaste},
    {"Format Text", "Clipboard", standin::IdCut},
    {"Format Text", "Clipboard", standin::IdCopy},
    {"Format Text", "Font", 113},
    {"Format Text", "Font", 114},
    {"Format Text", "Font", 115},
};

std::string OwnTabOf(ItemClass itemClass) {
    switch (itemClass) {
        case ItemClass::Contact: return "Contact";
        case ItemClass::Appointment: return "Appointment";
        case ItemClass::Task: return "Task";
        case ItemClass::DistList: return "Distribution List";
        case ItemClass::Journal: return "Journal Entry";
        default: return "Message";
    }
}

const ControlView* BuiltIn(const std::vector<ControlView>& controls, int id) {
    for (const ControlView& control : controls) {
        if (control.builtIn && control.visible && control.id == id) return &control;
        if (const ControlView* inner = BuiltIn(control.entries, id)) return inner;
    }
    return nullptr;
}

const ControlView* BuiltIn(const std::vector<BarView>& bars, int id) {
    for (const BarView& bar : bars)
        if (const ControlView* found = BuiltIn(bar.controls, id)) return found;
    return nullptr;
}

// The last tab, or group, of that caption; a new one where it is not there.
template <class T>
T& Named(std::vector<T>& list, const std::string& caption) {
    const auto found = std::find_if(list.begin(), list.end(), [&](const T& one) { return one.caption == caption; });
    if (found != list.end()) return *found;
    list.push_back({caption, {}});
    return list.back();
}

const char* GroupOf(const BarView& bar) {
    constexpr int menuBar = 1;
    if (bar.type == menuBar) return "Menu Commands";
    return bar.builtIn ? "Toolbar Commands" : "Custom Toolbars";
}

bool IsOfAddIn(const BarView& bar, const ControlView& control) {
    return control.visible && (!control.builtIn || !bar.builtIn);
}

// A bar that came with the window counts also when it is hidden: in this window no bar is to be seen.
void AddCustom(const BarView& bar, std::vector<RibbonTab>& tabs) {
    if (!bar.enabled || (!bar.builtIn && !bar.visible)) return;
    for (const ControlView& control : bar.controls)
        if (IsOfAddIn(bar, control)) Named(Named(tabs, addInsTab).groups, GroupOf(bar)).controls.push_back(control);
}

}  // namespace

std::vector<RibbonTab> RibbonTabsOf(const std::vector<BarView>& bars, ItemClass itemClass) {
    if (bars.empty()) return {};  // a note
    const std::string own = OwnTabOf(itemClass);
    std::vector<RibbonTab> tabs = {{own, {}}};
    for (const CommandPlace& place : commandPlaces) {
        const ControlView* control = BuiltIn(bars, place.id);
        if (!control) continue;
        const std::string tab = place.tab == std::string(ownTab) ? own : place.tab;
        Named(Named(tabs, tab).groups, place.group).controls.push_back(*control);
    }
    for (const BarView& bar : bars) AddCustom(bar, tabs);
    return tabs;
}

}  // namespace program
