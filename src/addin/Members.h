// addin/Members.h: what this add-in calls of Outlook and Office, by name and by the id that all versions from 2000 on
// have. The same name may have another id in another kind of object, so there is a list a kind.
#pragma once
#include "platform/com/Dispatch.h"

namespace Members {

using platform::Member;

// Every object of Outlook's own library, items included.
inline constexpr Member Application{"Application", 0xF000};
inline constexpr Member Parent{"Parent", 0xF001};
inline constexpr Member Class{"Class", 0xF00A};

// What Class says of an Explorer.
inline constexpr std::int32_t explorerClass = 34;

// How a button of a command bar is shown.
inline constexpr std::int32_t iconOnly = 1, iconAndCaption = 3;

namespace Outlook {  // Application
inline constexpr Member Name{"Name", 0x3001};
inline constexpr Member Version{"Version", 0x116};
inline constexpr Member ActiveExplorer{"ActiveExplorer", 0x111};
inline constexpr Member Explorers{"Explorers", 0x119};
inline constexpr Member Inspectors{"Inspectors", 0x11A};
}  // namespace Outlook

namespace Collection {  // Explorers, Inspectors, Selection
inline constexpr Member Count{"Count", 0x50};
inline constexpr Member Item{"Item", 0x51};
}  // namespace Collection

namespace Window {  // Explorer, Inspector
inline constexpr Member CommandBars{"CommandBars", 0x2100};
inline constexpr Member CurrentFolder{"CurrentFolder", 0x2101};
inline constexpr Member CurrentItem{"CurrentItem", 0x2102};
inline constexpr Member Selection{"Selection", 0x2202};
}  // namespace Window

namespace Folder {
inline constexpr Member DefaultItemType{"DefaultItemType", 0x3106};
}  // namespace Folder

namespace Item {
inline constexpr Member EntryID{"EntryID", 0xF01E};
inline constexpr Member Close{"Close", 0xF023};
}  // namespace Item

namespace AddIn {  // COMAddIn
inline constexpr Member ProgId{"ProgId", 3};
}  // namespace AddIn

namespace Bars {  // CommandBars
inline constexpr Member Item{"Item", 0};
}  // namespace Bars

namespace Bar {  // CommandBar
inline constexpr Member Controls{"Controls", 0x60040003};
inline constexpr Member Name{"Name", 0x6004000E};
}  // namespace Bar

namespace Controls {  // CommandBarControls
inline constexpr Member Add{"Add", 0x60030000};
inline constexpr Member Count{"Count", 0x60030001};
inline constexpr Member Item{"Item", 0};
}  // namespace Controls

namespace Control {  // every control of a bar
inline constexpr Member BeginGroup{"BeginGroup", 0x60040000};
inline constexpr Member BuiltIn{"BuiltIn", 0x60040002};
inline constexpr Member Caption{"Caption", 0x60040003};
inline constexpr Member Delete{"Delete", 0x60040007};
inline constexpr Member Enabled{"Enabled", 0x6004000A};
inline constexpr Member InstanceId{"InstanceId", 0x60040015};
inline constexpr Member OLEUsage{"OLEUsage", 0x60040018};
inline constexpr Member OnAction{"OnAction", 0x6004001A};
inline constexpr Member Parameter{"Parameter", 0x6004001D};
inline constexpr Member Tag{"Tag", 0x60040023};
inline constexpr Member Visible{"Visible", 0x60040029};
}  // namespace Control

namespace Button {
inline constexpr Member FaceId{"FaceId", 0x60050003};
inline constexpr Member PasteFace{"PasteFace", 0x60050005};
inline constexpr Member Style{"Style", 0x6005000A};
inline constexpr Member Picture{"Picture", 0x6005000E};  // not in Outlook 2000 (host quirk 8)
inline constexpr Member Mask{"Mask", 0x60050010};        // likewise
}  // namespace Button

namespace Popup {
inline constexpr Member CommandBar{"CommandBar", 0x60050000};
inline constexpr Member Controls{"Controls", 0x60050001};
}  // namespace Popup

namespace RibbonControl {  // IRibbonControl, what the host gives a callback
inline constexpr Member Context{"Context", 2};
inline constexpr Member Tag{"Tag", 3};
}  // namespace RibbonControl

namespace RibbonUi {  // IRibbonUI
inline constexpr Member InvalidateControl{"InvalidateControl", 2};
}  // namespace RibbonUi

}  // namespace Members
