// day/Ribbon.h: the add-in's controls on the ribbon of Outlook 2010 and later, as a user finds them: by the tab and the
// group in which they are to be seen.
//
// A control is known by its tag, which is the key of its text in the language files, but for that of the menu.
#pragma once
#include <string>

#include "day/Day.h"

namespace program::day {

inline constexpr const char* menuOnRibbon = "Main";
inline constexpr const char* synchroniseOnRibbon = "Buttonsync";
inline constexpr const char* sendOnRibbon = "ButtonSendToPhone";
inline constexpr const char* saveAndSendOnRibbon = "ButtonUpdate";

struct FoundOnRibbon {
    std::string tab, group;  // their labels
    standin::RibbonControlView control;
    explicit operator bool() const { return static_cast<bool>(control); }
};

// Whether the host asks add-ins for all of its ribbons in this session.
[[nodiscard]] bool HasRibbon(const Stage& stage);
// The visible control with that tag, on the tabs that the window has now; none where it is not to be seen. Entries of
// menus have the tab and the group of their menu.
[[nodiscard]] FoundOnRibbon OnRibbon(const Stage& stage, standin::Window window, const std::string& tag);
// A picture of that size, with pixels that show and others that let the ribbon through.
[[nodiscard]] bool HasPicture(const standin::RibbonControlView& control, int side);
// A text of the language without the mark of its access key.
[[nodiscard]] std::string Unmarked(const std::string& text);

}  // namespace program::day
