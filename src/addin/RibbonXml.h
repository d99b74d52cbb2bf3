// addin/RibbonXml.h: the commands as the host's ribbon reads them. Pure text: no Windows header, no globals.
//
// Shapes  Texts and the XML are UTF-8. In a text '&' marks the access key and "&&" stands for one '&', as in menus.
//         A command's tag is the word by which it is called back: the key of its text in the language file. A
//         control's id is the place's name and the tag, parted by '_': "TabContacts_ButtonSendToPhone".
// Errors  Every text has a reading: what no XML may hold is left out (control characters, broken UTF-8), and a label
//         is cut at the length that the host allows. A text with nothing left to read is the command's tag, because
//         one empty label makes the host refuse the whole XML (host quirk 18).
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace RibbonXml {

// The host's ribbons that carry commands of ours, in the order of RibbonIds.
enum class Kind : std::int32_t { Explorer, Contact, Task, Appointment };
inline constexpr std::size_t kindCount = 4;

// The ribbon that the host calls by that id; none for those without commands of ours. Upper and lower case count.
[[nodiscard]] std::optional<Kind> KindOf(std::string_view ribbonId);

// Tags of the controls that are no entries of the menu.
inline constexpr const char* MenuTag = "Main";
inline constexpr const char* SynchroniseTag = "Buttonsync";
inline constexpr const char* SendToPhoneTag = "ButtonSendToPhone";
inline constexpr const char* SaveAndSendTag = "ButtonUpdate";

// What the host calls by name; `onLoad` is one of the four that LoadCallback returns.
inline constexpr const char* Action = "OnAction";
inline constexpr const char* Enabled = "GetEnabled";
inline constexpr const char* Visible = "GetVisible";
inline constexpr const char* SmallImage = "GetSmallImage";
inline constexpr const char* LargeImage = "GetLargeImage";
[[nodiscard]] const char* LoadCallback(Kind kind);

struct Command {
    std::string tag;
    std::string text;
    std::int32_t picture = 0;  // 0 for none
    bool beginsGroup = false;  // a line above it, in a menu
};

struct Commands {
    Command menu;                  // the button that opens the menu
    std::vector<Command> entries;  // of the menu, top to bottom
    Command synchronise;
    Command sendToPhone;
    Command saveAndSend;
};

// What the host is told of that ribbon.
[[nodiscard]] std::string Xml(Kind kind, const Commands& commands);

// The id of a command's control in the tab or context menu of that name.
[[nodiscard]] std::string ControlId(std::string_view place, std::string_view tag);

// The id of the button that sends the selection to the phone, in the Explorer's ribbon.
[[nodiscard]] std::string SendToPhoneId();

// A text as it stands between the quotes of an attribute: without its access key, a readable '&' doubled.
[[nodiscard]] std::string Label(const Command& command);

// The access key of a text as a key tip; empty where it marks none that can be typed.
[[nodiscard]] std::string KeyTip(std::string_view text);

}  // namespace RibbonXml
