// bridge/OptionsControls.h: the options dialog as one table: every control, in the order in which it is read, which is
// the tab order too. Pure: knows no windows.
//
// Shapes  A caption is what stands there where the language file has nothing; the texts of the language files stand in
//         section "FormOlAddInOptions" under the control's name. `value` names what the registry keeps of a text box.
#pragma once
#include <algorithm>
#include <array>
#include <iterator>

#include "bridge/OptionsLayout.h"
#include "platform/forms/Control.h"

namespace OptionsControls {

using OptionsLayout::Place;
using platform::ControlKind;
namespace Style = platform::ControlStyle;

struct Row {
    platform::ControlSpec control;
    Place place = Place::Nowhere;
    const char* value = nullptr;
};

// scripts/tables.py reads these rows as text: literals and names only.
inline constexpr Row rows[] = {
    {{"Picture1", ControlKind::PictureBox}, Place::Picture},
    {{"Label6", ControlKind::Label, 0, "These settings apply whenever Outlook passes data to Corvella."},
     Place::Introduction},
    {{"Frame1", ControlKind::Frame, 0, "Transfer to the phone"}, Place::Group},
    {{"Label1", ControlKind::Label, 0, "&Start Corvella after:"}, Place::Label},
    {{"TextDelay", ControlKind::TextBox}, Place::Number, "Delay"},
    {{"Label2", ControlKind::Label, 0, "seconds"}, Place::Unit},
    {{"Label3", ControlKind::Label, 0, "&Keep Corvella open for:"}, Place::Label},
    {{"TextRemain", ControlKind::TextBox}, Place::Number, "Remain"},
    {{"Label4", ControlKind::Label, 0, "seconds"}, Place::Unit},
    {{"CheckT", ControlKind::CheckBox, Style::Hidden}, Place::Nowhere},
    {{"CheckA", ControlKind::CheckBox, Style::Hidden}, Place::Nowhere},
    {{"CheckC", ControlKind::CheckBox, Style::Hidden}, Place::Nowhere},
    {{"Frame2", ControlKind::Frame, 0, "Synchronize command"}, Place::Group},
    {{"OptionSync", ControlKind::OptionButton, Style::GroupStart, "Synchronize &immediately"}, Place::Option},
    {{"OptionDlg", ControlKind::OptionButton, 0, "Show the synchronization &dialog first"}, Place::Option},
    {{"Frame3", ControlKind::Frame, 0, "Profile"}, Place::Group},
    {{"Label5", ControlKind::Label, 0, "&Profile for Outlook:"}, Place::Label},
    {{"ComboProfiles", ControlKind::ComboBox}, Place::Field},
    {{"ButtonOK", ControlKind::Button, Style::Default, "OK"}, Place::Button},
    {{"ButtonCancel", ControlKind::Button, Style::Cancel, "Cancel"}, Place::Button},
    {{"ButtonHelp", ControlKind::Button, 0, "&Help"}, Place::Button},
};

// The columns that forms and layout take, in the same order.
inline constexpr auto specs = [] {
    std::array<platform::ControlSpec, std::size(rows)> column;
    std::transform(std::begin(rows), std::end(rows), column.begin(), [](const Row& row) { return row.control; });
    return column;
}();
inline constexpr auto places = [] {
    std::array<Place, std::size(rows)> column{};
    std::transform(std::begin(rows), std::end(rows), column.begin(), [](const Row& row) { return row.place; });
    return column;
}();

}  // namespace OptionsControls
