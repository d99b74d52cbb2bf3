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

std::string_view Escaped(std::string_view bytes) {
    switch (bytes.front()) {
        case '&': return "&amp;";
        case '<': return "&lt;";
        case '>': return "&gt;";
        case '"': return "&quot;";
        case '\'': return "&apos;";
        default: return bytes;
    }
}

bool CanBeTyped(std::uint32_t code) {
    const bool ascii = (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
    return ascii || (code >= 0xC0 && code < 0x10000 && code != 0xD7 && code != 0xF7);
}

// --- elements

// Writes elements into one text, in which values stand as they are given.
class Writer {
  public:
    void Begin(std::string_view element) {
        text_ += '<';
        text_ += element;
    }
    void Attribute(std::string_view name, std::string_view value) {
        text_ += ' ';
        text_ += name;
        text_ += "=\"";
        text_ += value;
        text_ += '"';
    }
    void End() { text_ += "/>\n"; }     // of an element without content
    void Content() { text_ += ">\n"; }  // follows
    void Close(std::string_view element) {
        text_ += "</";
        text_ += element;
        Content();
    }
    [[nodiscard]] const std::string& Text() const { return text_; }

  private:
    std::string text_;
};

enum class Size { Small, Large };

// Those that are there for contacts alone, or for the items that the phone takes.
bool DependsOnWindow(const Command& command) { return command.tag == SendToPhoneTag || command.tag == SaveAndSendTag; }

// The attributes of a button or menu, as far as both have them.
void WriteFace(Writer& xml, std::string_view place, const Command& command, Size size, const std::string& keyTip) {
    xml.Attribute("id", ControlId(place, command.tag));
    xml.Attribute("tag", command.tag);
    xml.Attribute("label", Label(command));
    if (!keyTip.empty()) xml.Attribute("keytip", keyTip);
    if (command.picture != 0) xml.Attribute("getImage", size == Size::Large ? LargeImage : SmallImage);
    if (DependsOnWindow(command)) xml.Attribute("getVisible", Visible);
    if (command.tag == SendToPhoneTag) xml.Attribute("getEnabled", Enabled);
}

// Of a control of a group: with its size, and its label as screen tip.
void WriteGroupFace(Writer& xml, std::string_view place, const Command& command, Size size) {
    WriteFace(xml, place, command, size, KeyTip(command.text));
    xml.Attribute("size", size == Size::Large ? "large" : "normal");
    xml.Attribute("screentip", Label(command));
}

void EndButton(Writer& xml) {
    xml.Attribute("onAction", Action);
    xml.End();
}

void WriteGroupButton(Writer& xml, std::string_view place, const Command& command, Size size) {
    xml.Begin("button");
    WriteGroupFace(xml, place, command, size);
    EndButton(xml);
}

void WriteMenuButton(Writer& xml, std::string_view place, const Command& command, const std::string& keyTip) {
    xml.Begin("button");
    WriteFace(xml, place, command, Size::Small, keyTip);
    EndButton(xml);
}

void WriteSeparator(Writer& xml, std::string_view place, const Command& command) {
    xml.Begin("menuSeparator");
    xml.Attribute("id", ControlId(place, command.tag) + "_line");
    xml.End();
}

// The menu with its entries. Of two entries with the same access key the upper one has it.
void WriteMenu(Writer& xml, std::string_view place, const Commands& commands) {
    xml.Begin("menu");
    WriteGroupFace(xml, place, commands.menu, Size::Large);
    xml.Attribute("itemSize", "normal");
    xml.Content();
    std::string taken = "|";
    for (const Command& entry : commands.entries) {
        std::string keyTip = KeyTip(entry.text);
        if (taken.find("|" + keyTip + "|") != std::string::npos) keyTip.clear();
        if (!keyTip.empty()) taken += keyTip + "|";
        if (entry.beginsGroup) WriteSeparator(xml, place, entry);
        WriteMenuButton(xml, place, entry, keyTip);
    }
    xml.Close("menu");
}

void BeginTab(Writer& xml, std::string_view place) {
    xml.Begin("tab");
    xml.Attribute("idMso", place);
    xml.Content();
    xml.Begin("group");
    xml.Attribute("id", ControlId(place, groupTag));
    xml.Attribute("label", Product::Name);
    xml.Content();
}

void CloseTab(Writer& xml) {
    xml.Close("group");
    xml.Close("tab");
}

void WriteHomeTab(Writer& xml, std::string_view place, const Commands& commands) {
    BeginTab(xml, place);
    WriteMenu(xml, place, commands);
    WriteGroupButton(xml, place, commands.synchronise, Size::Small);
    if (place == contactsTab) WriteGroupButton(xml, place, commands.sendToPhone, Size::Small);
    CloseTab(xml);
}

void WriteItemTab(Writer& xml, std::string_view place, const Commands& commands) {
    BeginTab(xml, place);
    WriteGroupButton(xml, place, commands.saveAndSend, Size::Large);
    CloseTab(xml);
}

void WriteContextMenu(Writer& xml, std::string_view place, const Commands& commands) {
    xml.Begin("contextMenu");
    xml.Attribute("idMso", place);
    xml.Content();
    WriteMenuButton(xml, place, commands.sendToPhone, {});
    xml.Close("contextMenu");
}

void WriteTabs(Writer& xml, Kind kind, const Commands& commands) {
    if (kind != Kind::Explorer) return WriteItemTab(xml, NameOf(kind).tab, commands);
    for (const char* tab : homeTabs) WriteHomeTab(xml, tab, commands);
}

void WriteContextMenus(Writer& xml, const Commands& commands) {
    xml.Begin("contextMenus");
    xml.Content();
    for (const char* menu : contextMenus) WriteContextMenu(xml, menu, commands);
    xml.Close("contextMenus");
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
    Writer xml;
    xml.Begin("customUI");
    xml.Attribute("xmlns", "http://schemas.microsoft.com/office/2009/07/customui");
    xml.Attribute("onLoad", LoadCallback(kind));
    xml.Content();
    for (const char* element : {"ribbon", "tabs"}) {
        xml.Begin(element);
        xml.Content();
    }
    WriteTabs(xml, kind, commands);
    for (const char* element : {"tabs", "ribbon"}) xml.Close(element);
    if (kind == Kind::Explorer) WriteContextMenus(xml, commands);
    xml.Close("customUI");
    return xml.Text();
}

std::string ControlId(std::string_view place, std::string_view tag) {
    std::string id(place);
    id += '_';
    id += tag;
    return id;
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
