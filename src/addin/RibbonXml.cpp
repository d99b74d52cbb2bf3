#include "addin/RibbonXml.h"

#include <algorithm>
#include <array>

#include "support/Product.h"

namespace RibbonXml {
namespace {

struct RibbonName {
    const char* id;
    const char* load;
    const char* tab;  // the first tab of an item window
};
constexpr std::array<RibbonName, kindCount> ribbons{{
    {"Microsoft.Outlook.Explorer", "OnExplorerRibbonLoad", ""},
    {"Microsoft.Outlook.Contact", "OnContactRibbonLoad", "TabContact"},
    {"Microsoft.Outlook.Task", "OnTaskRibbonLoad", "TabTask"},
    {"Microsoft.Outlook.Appointment", "OnAppointmentRibbonLoad", "TabAppointment"},
}};

// The home tabs of mail, contacts, calendar (two, by its view) and tasks; the host shows one at a time.
constexpr const char* homeTabs[] = {"TabMail", "TabContacts", "TabCalendar", "TabCalendarTableView", "TabTasks"};
constexpr const char* contactsTab = "TabContacts";
// Of one selected contact, and of several items.
constexpr const char* contextMenus[] = {"ContextMenuContactItem", "ContextMenuMultipleItems"};

constexpr const char* groupTag = "Group";
constexpr std::size_t longestText = 1024;  // of an attribute, in UTF-16 units
constexpr char accessMark = '&';

const RibbonName& NameOf(Kind kind) { return ribbons[static_cast<std::size_t>(kind)]; }

// --- characters

struct Character {
    std::uint32_t code = 0;  // 0 for one that no XML may hold
    std::size_t bytes = 1;
};

std::size_t BytesOf(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

bool IsAllowed(std::uint32_t code, std::size_t bytes) {
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};  // written in so many bytes
    if (code < smallest[bytes] || code > 0x10FFFF) return false;
    if (code < 0x20 || (code >= 0x7F && code <= 0x9F)) return false;
    return !(code >= 0xD800 && code <= 0xDFFF) && (code & 0xFFFE) != 0xFFFE;
}

Character First(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t bytes = BytesOf(lead);
    if (bytes == 0 || bytes > text.size()) return {};
    std::uint32_t code = bytes == 1 ? lead : lead & (0xFFu >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) return {};
        code = code << 6 | (next & 0x3Fu);
    }
    return {IsAllowed(code, bytes) ? code : 0, bytes};
}

// Calls `visit` with each character that XML may hold, a tab or line break being a blank.
template <class Visit>
void ForEachCharacter(std::string_view text, Visit visit) {
    while (!text.empty()) {
        const Character character = First(text);
        const bool blank = text.front() == '\t' || text.front() == '\r' || text.front() == '\n';
        if (blank) visit(std::string_view(" "), std::uint32_t{' '});
        if (!blank && character.code != 0) visit(text.substr(0, character.bytes), character.code);
        text.remove_prefix(character.bytes);
    }
}

std::string Escaped(std::string_view bytes) {
    switch (bytes.front()) {
        case '&': return "&amp;";
        case '<': return "&lt;";
        case '>': return "&gt;";
        case '"': return "&quot;";
        case '\'': return "&apos;";
        default: return std::string(bytes);
    }
}

bool CanBeTyped(std::uint32_t code) {
    const bool ascii = (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
    return ascii || (code >= 0xC0 && code < 0x10000 && code != 0xD7 && code != 0xF7);
}

// --- elements

std::string Attribute(std::string_view name, std::string_view value) {
    return " " + std::string(name) + "=\"" + std::string(value) + "\"";
}

enum class Size { Small, Large };
enum class Place { Group, Menu, ContextMenu };

// Those that are there for contacts alone, or for the items that the phone takes.
bool DependsOnWindow(const Command& command) { return command.tag == SendToPhoneTag || command.tag == SaveAndSendTag; }

// The attributes of a button or menu, as far as both have them.
std::string Face(std::string_view place, const Command& command, Size size, const std::string& keyTip) {
    const std::string label = Label(command);
    std::string text =
        Attribute("id", ControlId(place, command.tag)) + Attribute("tag", command.tag) + Attribute("label", label);
    if (!keyTip.empty()) text += Attribute("keytip", keyTip);
    if (command.picture != 0) text += Attribute("getImage", size == Size::Large ? LargeImage : SmallImage);
    if (DependsOnWindow(command)) text += Attribute("getVisible", Visible);
    if (command.tag == SendToPhoneTag) text += Attribute("getEnabled", Enabled);
    return text;
}

// A control of a group: with its size, and its label as screen tip.
std::string GroupFace(std::string_view place, const Command& command, Size size) {
    return Face(place, command, size, KeyTip(command.text)) +
           Attribute("size", size == Size::Large ? "large" : "normal") + Attribute("screentip", Label(command));
}

std::string Button(const std::string& face) { return "<button" + face + Attribute("onAction", Action) + "/>\n"; }

std::string Separator(std::string_view place, const Command& command) {
    return "<menuSeparator" + Attribute("id", ControlId(place, command.tag) + "_line") + "/>\n";
}

// The menu with its entries. Of two entries with the same access key the upper one has it.
std::string Menu(std::string_view place, const Commands& commands) {
    std::string text = "<menu" + GroupFace(place, commands.menu, Size::Large) + Attribute("itemSize", "normal") + ">\n";
    std::vector<std::string> taken;
    for (const Command& entry : commands.entries) {
        std::string keyTip = KeyTip(entry.text);
        if (std::find(taken.begin(), taken.end(), keyTip) != taken.end()) keyTip.clear();
        taken.push_back(keyTip);
        if (entry.beginsGroup) text += Separator(place, entry);
        text += Button(Face(place, entry, Size::Small, keyTip));
    }
    return text + "</menu>\n";
}

std::string Tab(std::string_view place, const std::string& controls) {
    return "<tab" + Attribute("idMso", place) + "><group" + Attribute("id", ControlId(place, groupTag)) +
           Attribute("label", Product::Name) + ">\n" + controls + "</group></tab>\n";
}

std::string HomeTab(std::string_view place, const Commands& commands) {
    std::string controls = Menu(place, commands) + Button(GroupFace(place, commands.synchronise, Size::Small));
    if (place == contactsTab) controls += Button(GroupFace(place, commands.sendToPhone, Size::Small));
    return Tab(place, controls);
}

std::string ContextMenu(std::string_view place, const Commands& commands) {
    return "<contextMenu" + Attribute("idMso", place) + ">\n" +
           Button(Face(place, commands.sendToPhone, Size::Small, {})) + "</contextMenu>\n";
}

std::string ExplorerBody(const Commands& commands) {
    std::string text = "<ribbon><tabs>\n";
    for (const char* tab : homeTabs) text += HomeTab(tab, commands);
    text += "</tabs></ribbon>\n<contextMenus>\n";
    for (const char* menu : contextMenus) text += ContextMenu(menu, commands);
    return text + "</contextMenus>\n";
}

std::string ItemBody(std::string_view tab, const Commands& commands) {
    return "<ribbon><tabs>\n" + Tab(tab, Button(GroupFace(tab, commands.saveAndSend, Size::Large))) +
           "</tabs></ribbon>\n";
}

}  // namespace

std::optional<Kind> KindOf(std::string_view ribbonId) {
    const auto found =
        std::find_if(ribbons.begin(), ribbons.end(), [&](const RibbonName& name) { return name.id == ribbonId; });
    if (found == ribbons.end()) return std::nullopt;
    return static_cast<Kind>(found - ribbons.begin());
}

const char* LoadCallback(Kind kind) { return NameOf(kind).load; }

std::string Xml(Kind kind, const Commands& commands) {
    const std::string body = kind == Kind::Explorer ? ExplorerBody(commands) : ItemBody(NameOf(kind).tab, commands);
    return "<customUI" + Attribute("xmlns", "http://schemas.microsoft.com/office/2009/07/customui") +
           Attribute("onLoad", LoadCallback(kind)) + ">\n" + body + "</customUI>\n";
}

std::string ControlId(std::string_view place, std::string_view tag) {
    return std::string(place) + "_" + std::string(tag);
}

std::string SendToPhoneId() { return ControlId(contactsTab, SendToPhoneTag); }

std::string Label(const Command& command) {
    std::string label;
    std::size_t units = 0;
    bool marked = false, readable = false;
    ForEachCharacter(command.text, [&](std::string_view bytes, std::uint32_t code) {
        const bool mark = code == accessMark && !marked;
        marked = mark;
        if (mark) return;
        const std::size_t needed = code == accessMark || code >= 0x10000 ? 2 : 1;
        if (units + needed > longestText) return;
        units += needed;
        readable = readable || code != ' ';
        label += Escaped(bytes);
        if (code == accessMark) label += Escaped(bytes);
    });
    return readable ? label : command.tag;
}

std::string KeyTip(std::string_view text) {
    std::string keyTip;
    bool marked = false;
    ForEachCharacter(text, [&](std::string_view bytes, std::uint32_t code) {
        const bool key = marked && code != accessMark;
        marked = code == accessMark && !marked;
        if (!key || !keyTip.empty() || !CanBeTyped(code)) return;
        keyTip = bytes;
        if (code >= 'a' && code <= 'z') keyTip.front() = static_cast<char>(code - 'a' + 'A');
    });
    return keyTip;
}

}  // namespace RibbonXml
