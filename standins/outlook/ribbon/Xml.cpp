#include "outlook/ribbon/Xml.h"

#include <windows.h>
// needs windows.h before it
#include <msxml2.h>

#include "outlook/ribbon/Narrow.h"

namespace standin::ribbon {
namespace {

// {88D96A05-F192-11D4-A65F-0040963251E5}, MSXML 6: no document types, nothing from outside.
constexpr CLSID documentClass{0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};
// {2933BF81-7B36-11D2-B20E-00C04F983E60}
constexpr IID documentId{0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

class Text {
  public:
    Text() = default;
    explicit Text(const std::wstring& text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(text_); }
    [[nodiscard]] BSTR Get() const { return text_; }
    [[nodiscard]] BSTR* Put() { return &text_; }
    [[nodiscard]] std::wstring Words() const {
        return text_ ? std::wstring(text_, SysStringLen(text_)) : std::wstring();
    }

  private:
    BSTR text_ = nullptr;
};

template <class T>
class Pointer {
  public:
    Pointer() = default;
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;
    Pointer(Pointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Pointer& operator=(Pointer&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Pointer() {
        if (object_) object_->Release();
    }
    [[nodiscard]] T* Get() const { return object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    [[nodiscard]] T** Put() {
        *this = Pointer();
        return &object_;
    }

  private:
    T* object_ = nullptr;
};

bool Declares(const std::wstring& name) { return name == L"xmlns" || name.starts_with(L"xmlns:"); }

void ReadAttributes(IXMLDOMNode* node, XmlElement& element) {
    Pointer<IXMLDOMNamedNodeMap> map;
    if (FAILED(node->get_attributes(map.Put())) || !map) return;
    Pointer<IXMLDOMNode> attribute;
    while (map->nextNode(attribute.Put()) == S_OK && attribute) {
        Text name, value;
        attribute->get_nodeName(name.Put());
        attribute->get_text(value.Put());
        if (!Declares(name.Words())) element.attributes.push_back({name.Words(), value.Words()});
    }
}

std::shared_ptr<XmlElement> ReadElement(IXMLDOMNode* node) {
    auto element = std::make_shared<XmlElement>();
    Text name, space;
    node->get_baseName(name.Put());
    node->get_namespaceURI(space.Put());
    element->name = name.Words();
    element->space = space.Words();
    ReadAttributes(node, *element);
    Pointer<IXMLDOMNode> child;
    node->get_firstChild(child.Put());
    while (child) {
        DOMNodeType type = NODE_INVALID;
        child->get_nodeType(&type);
        if (type == NODE_ELEMENT) element->children.push_back(ReadElement(child.Get()));
        if (type == NODE_TEXT || type == NODE_CDATA_SECTION) element->hasText = true;
        Pointer<IXMLDOMNode> next;
        child->get_nextSibling(next.Put());
        child = std::move(next);
    }
    return element;
}

std::string ErrorOf(IXMLDOMDocument* document) {
    Pointer<IXMLDOMParseError> error;
    long line = 0, column = 0;
    Text reason;
    if (SUCCEEDED(document->get_parseError(error.Put())) && error) {
        error->get_line(&line);
        error->get_linepos(&column);
        error->get_reason(reason.Put());
    }
    return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + Narrow(reason.Words());
}

}  // namespace

const std::wstring* XmlElement::Find(const wchar_t* attribute) const {
    for (const XmlAttribute& known : attributes)
        if (known.name == attribute) return &known.value;
    return nullptr;
}

std::wstring XmlElement::Get(const wchar_t* attribute) const {
    const std::wstring* value = Find(attribute);
    return value ? *value : std::wstring();
}

XmlDocument ReadXml(const std::wstring& text) {
    Pointer<IXMLDOMDocument> document;
    if (FAILED(CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, documentId,
                                reinterpret_cast<void**>(document.Put()))))
        return {nullptr, "Windows has no parser for XML"};
    document->put_async(VARIANT_FALSE);
    document->put_validateOnParse(VARIANT_FALSE);
    document->put_resolveExternals(VARIANT_FALSE);
    VARIANT_BOOL read = VARIANT_FALSE;
    document->loadXML(Text(text).Get(), &read);
    Pointer<IXMLDOMElement> root;
    if (!read || FAILED(document->get_documentElement(root.Put())) || !root) return {nullptr, ErrorOf(document.Get())};
    return {ReadElement(root.Get()), {}};
}

}  // namespace standin::ribbon
