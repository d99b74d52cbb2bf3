// program/RibbonTabs.h: what the ribbon of an item window shows, made of the window's command bars: since 2007 item
// windows have no bars to be seen. Pure work on what the host told.
//
// Shapes  The window's own commands are dealt out to tabs by their ids; what has no place there is not on the ribbon.
//         What is not built in stands on the tab "Add-Ins", which is there only when there is such a control: that of
//         menu bars in the group "Menu Commands", that of the other bars that a window brings with it in "Toolbar
//         Commands", that of bars that were added in "Custom Toolbars".
#pragma once
#include <string>
#include <vector>

#include "outlook/Terms.h"

namespace program {

struct RibbonGroup {
    std::string caption;
    std::vector<standin::ControlView> controls;
};

struct RibbonTab {
    std::string caption;
    std::vector<RibbonGroup> groups;
};

inline constexpr const char* addInsTab = "Add-Ins";

// The first tab is named after the item's class. A hidden control, or one of a bar that is not enabled, is left out.
[[nodiscard]] std::vector<RibbonTab> RibbonTabsOf(const std::vector<standin::BarView>& bars,
                                                  standin::ItemClass itemClass);

}  // namespace program
