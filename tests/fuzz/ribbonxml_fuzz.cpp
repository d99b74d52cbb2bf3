// Whatever the language file says, the ribbon's XML is well formed, has the controls that it should have and no other,
// and breaks none of the host's rules for labels and key tips. An XML parser that knows nothing of us reads it.
#include <expat.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "addin/RibbonXml.h"

using fuzz::Expect;
using RibbonXml::Kind;

namespace {

using Attributes = std::map<std::string, std::string>;

struct Element {
    std::string name;
    Attributes attributes;
};

struct Document {
    std::vector<Element> elements;
    bool wellFormed = false;
};

void XMLCALL Begin(void* user, const XML_Char* name, const XML_Char** attributes) {
    Element element{name, {}};
    for (; *attributes; attributes += 2) element.attributes[attributes[0]] = attributes[1];
    static_cast<Document*>(user)->elements.push_back(element);
}

Document Parsed(const std::string& xml) {
    Document document;
    XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetUserData(parser, &document);
    XML_SetStartElementHandler(parser, Begin);
    document.wellFormed = XML_Parse(parser, xml.data(), static_cast<int>(xml.size()), 1) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return document;
}

// In UTF-16, as the host counts; the parser has seen to it that the text is UTF-8.
std::size_t UnitsOf(const std::string& utf8) {
    std::size_t units = 0;
    for (const char byte : utf8) {
        const auto value = static_cast<unsigned char>(byte);
        if ((value & 0xC0) != 0x80) units += value >= 0xF0 ? 2 : 1;
    }
    return units;
}

void CheckElement(const Element& element, std::set<std::string>& ids) {
    for (const auto& [name, value] : element.attributes) {
        Expect(!value.empty(), "no attribute is empty");
        Expect(UnitsOf(value) <= 1024, "no attribute is longer than the host allows");
    }
    const auto keyTip = element.attributes.find("keytip");
    if (keyTip != element.attributes.end()) Expect(UnitsOf(keyTip->second) <= 3, "a key tip is short");
    const auto id = element.attributes.find("id");
    if (id != element.attributes.end()) Expect(ids.insert(id->second).second, "no id stands twice");
}

std::map<std::string, int> Names(const Document& document) {
    std::map<std::string, int> names;
    for (const Element& element : document.elements) ++names[element.name];
    return names;
}

RibbonXml::Command Taken(fuzz::Input& input, const char* tag, int picture, bool beginsGroup) {
    return {tag, input.Text(input.Byte() * (input.Byte() % 16 == 0 ? 10u : 1u)), picture, beginsGroup};
}

RibbonXml::Commands TakenCommands(fuzz::Input& input) {
    RibbonXml::Commands commands;
    commands.menu = Taken(input, RibbonXml::MenuTag, 104, false);
    commands.synchronise = Taken(input, RibbonXml::SynchroniseTag, 103, false);
    commands.sendToPhone = Taken(input, RibbonXml::SendToPhoneTag, 107, false);
    commands.saveAndSend = Taken(input, RibbonXml::SaveAndSendTag, 102, false);
    commands.entries.push_back(Taken(input, "mEditor", 104, false));
    commands.entries.push_back(Taken(input, "mSync", 0, true));
    commands.entries.push_back(Taken(input, "mAbout", 0, true));
    return commands;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const RibbonXml::Commands hostile = TakenCommands(input);
    fuzz::Input nothing(nullptr, 0);
    const RibbonXml::Commands plain = TakenCommands(nothing);
    for (const Kind kind : {Kind::Explorer, Kind::Contact, Kind::Task, Kind::Appointment}) {
        const Document document = Parsed(RibbonXml::Xml(kind, hostile));
        Expect(document.wellFormed, "the XML is well formed");
        Expect(Names(document) == Names(Parsed(RibbonXml::Xml(kind, plain))), "texts make no elements");
        std::set<std::string> ids;
        for (const Element& element : document.elements) CheckElement(element, ids);
    }
    return 0;
}
