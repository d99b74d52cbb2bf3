// outlook/ribbon/Xml.h: an XML text as a tree, read by Windows' own parser (MSXML, which is strict and resolves nothing
// from outside).
//
// Shapes  Texts are Unicode. Attributes stand in their order in the text, without those that declare namespaces.
//         Lines and columns count from 1.
#pragma once
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace standin::ribbon {

struct XmlAttribute {
    std::wstring name;  // with its prefix, where it has one
    std::wstring value;
};

struct XmlElement {
    std::wstring name;   // without prefix
    std::wstring space;  // its namespace
    std::vector<XmlAttribute> attributes;
    std::vector<std::shared_ptr<XmlElement>> children;
    bool hasText = false;  // something else than blanks stands in it

    // Null where it has none of that name.
    [[nodiscard]] const std::wstring* Find(const wchar_t* attribute) const;
    [[nodiscard]] std::wstring Get(const wchar_t* attribute) const;  // "" where it has none
};

struct XmlDocument {
    std::shared_ptr<XmlElement> root;  // null where the text is not well formed
    std::string error;                 // then: what is wrong, and where
};

[[nodiscard]] XmlDocument ReadXml(const std::wstring& text);

}  // namespace standin::ribbon
