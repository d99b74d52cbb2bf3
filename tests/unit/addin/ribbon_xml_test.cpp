// The ribbon's XML as text. That a host takes it is seen in the scenarios; that it is well formed whatever the
// language file says, by the fuzz target.
#include <doctest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "addin/RibbonXml.h"

using RibbonXml::Command;
using RibbonXml::Commands;
using RibbonXml::Kind;

namespace {

constexpr Kind allKinds[] = {Kind::Explorer, Kind::Contact, Kind::Task, Kind::Appointment};

Commands Usual() {
    return {.menu = {RibbonXml::MenuTag, "C&orvella", 104, false},
            .entries = {{"mEditor", "Corvella &Editor", 104, false},
                        {"mSync", "S&ynchronize", 103, true},
                        {"mSync0", "Synchronize &Contacts", 0, false}},
            .synchronise = {RibbonXml::SynchroniseTag, "Synchronize", 103, false},
            .sendToPhone = {RibbonXml::SendToPhoneTag, "Send to Phone", 107, false},
            .saveAndSend = {RibbonXml::SaveAndSendTag, "Save and Send to Phone", 102, false}};
}

Commands WithEntry(const std::string& text) {
    Commands commands = Usual();
    commands.entries = {{"mEditor", text, 0, false}};
    return commands;
}

std::size_t Count(const std::string& text, const std::string& sought) {
    std::size_t count = 0;
    for (auto at = text.find(sought); at != std::string::npos; at = text.find(sought, at + sought.size())) ++count;
    return count;
}

bool Has(const std::string& text, const std::string& sought) { return Count(text, sought) > 0; }

// The element of the control with that id, up to its end.
std::string ElementOf(const std::string& xml, const std::string& id) {
    const std::size_t at = xml.find(" id=\"" + id + "\"");
    if (at == std::string::npos) return {};
    const std::size_t begin = xml.rfind('<', at);
    return xml.substr(begin, xml.find('>', at) - begin + 1);
}

std::vector<std::string> Ids(const std::string& xml) {
    std::vector<std::string> ids;
    for (auto at = xml.find(" id=\""); at != std::string::npos; at = xml.find(" id=\"", at + 1)) {
        ids.push_back(xml.substr(at + 5, xml.find('"', at + 5) - at - 5));
    }
    return ids;
}

std::string LabelOf(const std::string& text) { return RibbonXml::Label({"tag", text, 0, false}); }

}  // namespace

TEST_CASE("the four ribbons with commands of ours are known by their ids, and no other one") {
    CHECK(RibbonXml::KindOf("Microsoft.Outlook.Explorer") == Kind::Explorer);
    CHECK(RibbonXml::KindOf("Microsoft.Outlook.Contact") == Kind::Contact);
    CHECK(RibbonXml::KindOf("Microsoft.Outlook.Task") == Kind::Task);
    CHECK(RibbonXml::KindOf("Microsoft.Outlook.Appointment") == Kind::Appointment);
    for (const char* other :
         {"", "Microsoft.Outlook.Mail.Read", "Microsoft.Outlook.Explorer ", "MICROSOFT.OUTLOOK.TASK",
          "Microsoft.Outlook.DistributionList", "Microsoft.Mso.IMLayerUI", "Contact"}) {
        CAPTURE(other);
        CHECK_FALSE(RibbonXml::KindOf(other));
    }
}

TEST_CASE("each ribbon tells by a callback of its own that the host has taken it") {
    std::set<std::string> names;
    for (const Kind kind : allKinds) {
        names.insert(RibbonXml::LoadCallback(kind));
        CHECK(Has(RibbonXml::Xml(kind, Usual()), std::string("onLoad=\"") + RibbonXml::LoadCallback(kind) + "\""));
    }
    CHECK(names.size() == 4);
}

TEST_CASE("the group is on the home tabs of mail, contacts, both calendars and tasks, once each") {
    const std::string xml = RibbonXml::Xml(Kind::Explorer, Usual());
    CHECK(Count(xml, "<group ") == 5);
    for (const char* tab : {"TabMail", "TabContacts", "TabCalendar", "TabCalendarTableView", "TabTasks"}) {
        CAPTURE(tab);
        CHECK(Count(xml, std::string("<tab idMso=\"") + tab + "\">") == 1);
        CHECK(Has(ElementOf(xml, std::string(tab) + "_Main"), "<menu "));
        CHECK(Has(ElementOf(xml, std::string(tab) + "_Main"), "size=\"large\""));
        CHECK(Has(ElementOf(xml, std::string(tab) + "_Buttonsync"), "tag=\"Buttonsync\""));
        for (const char* entry : {"_mEditor", "_mSync", "_mSync0"}) {
            CHECK(Has(ElementOf(xml, tab + std::string(entry)), "onAction=\"OnAction\""));
        }
    }
}

TEST_CASE("sending the selection is offered in the contacts' home tab and in the context menus, always on conditions") {
    const std::string xml = RibbonXml::Xml(Kind::Explorer, Usual());
    CHECK(Count(xml, "tag=\"ButtonSendToPhone\"") == 3);
    for (const char* place : {"TabContacts", "ContextMenuContactItem", "ContextMenuMultipleItems"}) {
        CAPTURE(place);
        const std::string element = ElementOf(xml, RibbonXml::ControlId(place, RibbonXml::SendToPhoneTag));
        CHECK(Has(element, "getVisible=\"GetVisible\""));
        CHECK(Has(element, "getEnabled=\"GetEnabled\""));
    }
    CHECK(Has(ElementOf(xml, RibbonXml::SendToPhoneId()), "<button "));
}

TEST_CASE("item windows have one large button in the first tab of their kind") {
    const std::pair<Kind, const char*> tabs[] = {
        {Kind::Contact, "TabContact"}, {Kind::Task, "TabTask"}, {Kind::Appointment, "TabAppointment"}};
    for (const auto& [kind, name] : tabs) {
        const std::string tab = name;
        CAPTURE(tab);
        const std::string xml = RibbonXml::Xml(kind, Usual());
        CHECK(Count(xml, "<button ") == 1);
        CHECK(Has(xml, "<tab idMso=\"" + tab + "\">"));
        CHECK(Has(ElementOf(xml, tab + "_ButtonUpdate"), "getImage=\"GetLargeImage\""));
        CHECK(Has(ElementOf(xml, tab + "_ButtonUpdate"), "size=\"large\""));
        CHECK_FALSE(Has(xml, "contextMenu"));
    }
}

TEST_CASE("no id stands twice in one ribbon") {
    for (const Kind kind : allKinds) {
        std::vector<std::string> ids = Ids(RibbonXml::Xml(kind, Usual()));
        REQUIRE(ids.size() >= 2);
        std::sort(ids.begin(), ids.end());
        CHECK(std::adjacent_find(ids.begin(), ids.end()) == ids.end());
    }
}

TEST_CASE("a command without a picture asks for none, and one that begins a group has a line above it") {
    const std::string xml = RibbonXml::Xml(Kind::Explorer, Usual());
    CHECK(Has(ElementOf(xml, "TabMail_mSync"), "getImage=\"GetSmallImage\""));
    CHECK_FALSE(Has(ElementOf(xml, "TabMail_mSync0"), "getImage"));
    CHECK(Has(xml, "<menuSeparator id=\"TabMail_mSync_line\"/>\n<button id=\"TabMail_mSync\""));
    CHECK(Count(xml, "<menuSeparator ") == 5);
}

TEST_CASE("a tenth command is in every menu without anything else being told") {
    Commands commands = Usual();
    commands.entries.push_back({"mTenth", "&Tenth", 0, false});
    CHECK(Count(RibbonXml::Xml(Kind::Explorer, commands), "tag=\"mTenth\" label=\"Tenth\" keytip=\"T\"") == 5);
}

TEST_CASE("a text with signs of XML is only text") {
    CHECK(LabelOf("<b>\"R\" 'n' >") == "&lt;b&gt;&quot;R&quot; &apos;n&apos; &gt;");
    CHECK(LabelOf("R&&D") == "R&amp;&amp;D");
    const std::string xml = RibbonXml::Xml(Kind::Explorer, WithEntry("\"/><tab idMso=\"TabMail\"><!--"));
    CHECK(Count(xml, "<tab idMso=\"TabMail\">") == 1);
    CHECK_FALSE(Has(xml, "<!--"));
}

TEST_CASE("the mark of the access key is not in the label, and the key is the key tip") {
    CHECK(LabelOf("Corvella &Editor") == "Corvella Editor");
    CHECK(RibbonXml::KeyTip("Corvella &Editor") == "E");
    CHECK(RibbonXml::KeyTip("S&ynchronize") == "Y");
    CHECK(RibbonXml::KeyTip("R&&D &lab") == "L");
    CHECK(RibbonXml::KeyTip("&&&x") == "X");
    CHECK(RibbonXml::KeyTip("Na&\xC5\x99\xC3\xAD") == "\xC5\x99");
    CHECK(RibbonXml::KeyTip("&First &second") == "F");
}

TEST_CASE("a key that cannot be typed gives no key tip") {
    for (const char* text : {"", "no mark", "last&", "&", "& blank", "&<", "&\"", "&&", "&.", "&\xC3\x97"}) {
        CAPTURE(text);
        CHECK(RibbonXml::KeyTip(text).empty());
    }
    CHECK_FALSE(Has(RibbonXml::Xml(Kind::Explorer, WithEntry("no mark")), "keytip=\"\""));
}

TEST_CASE("of two entries with the same access key the upper one has it") {
    Commands commands = Usual();
    commands.entries = {{"mEditor", "&Same", 0, false}, {"mSync", "&same", 0, false}};
    const std::string xml = RibbonXml::Xml(Kind::Explorer, commands);
    CHECK(Has(ElementOf(xml, "TabMail_mEditor"), "keytip=\"S\""));
    CHECK_FALSE(Has(ElementOf(xml, "TabMail_mSync"), "keytip"));
}

TEST_CASE("a text with nothing to read is the command's tag, because the host takes no empty label") {
    using std::string_literals::operator""s;
    for (const std::string& text : {""s, " "s, "&"s, "\x01\x02"s, "\0\0"s, "\xFF\xFE"s, " \t "s}) {
        CAPTURE(text.size());
        CHECK(LabelOf(text) == "tag");
    }
}

TEST_CASE("characters that no XML may hold are left out, line breaks and tabs become blanks") {
    using std::string_literals::operator""s;
    CHECK(LabelOf("a\0b\x01\x1F\x7F"
                  "c"s) == "abc");
    CHECK(LabelOf("a\r\nb\tc") == "a  b c");
    CHECK(LabelOf("a\xEF\xBF\xBE\xEF\xBF\xBF"
                  "b") == "ab");  // U+FFFE, U+FFFF
    CHECK(LabelOf("a\xED\xA0\x80"
                  "b") == "ab");  // half a surrogate pair
    CHECK(LabelOf("a\xC0\xAF\xE0\x80\xAF"
                  "b") == "ab");         // longer than need be
    CHECK(LabelOf("a\xE2\x82") == "a");  // cut off
    CHECK(LabelOf("\xF0\x9F\x93\xB1") == "\xF0\x9F\x93\xB1");
    CHECK(LabelOf("\xF4\x90\x80\x80x") == "x");  // beyond the last character
}

TEST_CASE("the first and the last character of each length stay as they are") {
    for (const char* text : {" !", "~", "\xC2\xA0", "\xC2\xA9", "\xDF\xBF", "\xE0\xA0\x80", "\xEF\xBF\xBD",
                             "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBD"}) {
        CAPTURE(std::string(text));
        const std::string label = std::string("a") + text + "b";
        CHECK(LabelOf(label) == label);
    }
}

TEST_CASE("a label is no longer than the host allows, and never ends in half a character") {
    CHECK(LabelOf(std::string(2000, 'x')) == std::string(1024, 'x'));
    std::string wide;
    for (int i = 0; i < 1000; ++i) wide += "\xF0\x9F\x93\xB1";
    CHECK(LabelOf("x" + wide).size() == 1 + 511 * 4);
    std::string ampersands;
    for (int i = 0; i < 1000; ++i) ampersands += "&&";
    CHECK(LabelOf(ampersands).size() == 512 * 2 * std::string("&amp;").size());
}
