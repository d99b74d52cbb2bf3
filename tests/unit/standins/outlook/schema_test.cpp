// What the stand-in takes as a ribbon's XML, and what it refuses as a whole, as Office does.
#include "outlook/ribbon/Schema.h"

#include <doctest.h>

#include <string>
#include <vector>

using standin::ribbon::Check;
using standin::ribbon::ReadXml;
using standin::ribbon::Rules;
using standin::ribbon::XmlDocument;

namespace {

constexpr const wchar_t* later = L"http://schemas.microsoft.com/office/2009/07/customui";
constexpr const wchar_t* earlier = L"http://schemas.microsoft.com/office/2006/01/customui";

std::wstring Ui(const std::wstring& inside, const wchar_t* space = later) {
    return std::wstring(L"<customUI xmlns=\"") + space + L"\" onLoad=\"Load\">" + inside + L"</customUI>";
}

// A group on a tab.
std::wstring Tab(const std::wstring& controls, const std::wstring& tab = L"TabMail") {
    return L"<ribbon><tabs><tab idMso=\"" + tab + L"\"><group id=\"g\" label=\"G\">" + controls +
           L"</group></tab></tabs></ribbon>";
}

std::wstring Button(const std::wstring& attributes) { return Ui(Tab(L"<button " + attributes + L"/>")); }

// What is wrong with it; one line for what is not well formed.
std::vector<std::string> Wrong(const std::wstring& xml, const Rules& rules = {}) {
    const XmlDocument document = ReadXml(xml);
    if (!document.root) return {document.error};
    return Check(*document.root, rules);
}

bool IsTaken(const std::wstring& xml, const Rules& rules = {}) { return Wrong(xml, rules).empty(); }

}  // namespace

TEST_CASE("a menu with buttons and lines, and an entry of a context menu are taken") {
    CHECK(IsTaken(Ui(Tab(L"<menu id=\"m\" label=\"M\" size=\"large\"><button id=\"a\" tag=\"t\" label=\"A\"/>"
                         L"<menuSeparator id=\"s\"/><button id=\"b\" getLabel=\"GetLabel\"/></menu>") +
                     L"<contextMenus><contextMenu idMso=\"ContextMenuContactItem\"><button id=\"c\" label=\"C\"/>"
                     L"</contextMenu></contextMenus>")));
}

TEST_CASE("what is not well formed is refused, with its place") {
    for (const wchar_t* xml :
         {L"", L"<", L"<customUI>", L"<customUI a=\"1\" a=\"2\"/>", L"<customUI>&nbsp;</customUI>"}) {
        const std::vector<std::string> wrong = Wrong(xml);
        REQUIRE(wrong.size() == 1);
        CHECK_FALSE(wrong.front().empty());
    }
}

TEST_CASE("the later namespace is known from 2010 on, the earlier one has no context menus") {
    const std::wstring item = Tab(L"<button id=\"a\" label=\"A\"/>", L"TabContact");
    CHECK(IsTaken(Ui(item), {.version = 14}));
    CHECK_FALSE(IsTaken(Ui(item), {.version = 12}));
    CHECK(IsTaken(Ui(item, earlier), {.version = 12}));
    CHECK(IsTaken(Ui(item, earlier), {.version = 16}));
    CHECK_FALSE(IsTaken(Ui(item, L"urn:another")));
    CHECK_FALSE(
        IsTaken(Ui(L"<contextMenus><contextMenu idMso=\"ContextMenuContactItem\"><button id=\"c\"/>"
                   L"</contextMenu></contextMenus>",
                   earlier)));
}

TEST_CASE("unknown elements, attributes, names of the host and misplaced parts are refused") {
    CHECK(IsTaken(Button(L"id=\"a\" label=\"A\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" colour=\"red\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" imageMso=\"NoSuchPicture\"")));
    CHECK_FALSE(IsTaken(Ui(Tab(L"<slider id=\"a\"/>"))));
    CHECK_FALSE(IsTaken(Ui(Tab(L"<button id=\"a\"/>", L"TabNowhere"))));
    CHECK_FALSE(IsTaken(Ui(Tab(L"<button id=\"a\"/>")), {.missingIds = {"TabMail"}}));
    CHECK_FALSE(IsTaken(Ui(L"<tabs/>")));
    CHECK_FALSE(IsTaken(Ui(L"<contextMenus/>" + Tab(L"<button id=\"a\"/>"))));  // in the wrong order
    CHECK_FALSE(IsTaken(Ui(Tab(L"<button id=\"a\" label=\"A\">text</button>"))));
}

TEST_CASE("ids are names and stand once; a control has one and no other identity beside it") {
    CHECK_FALSE(IsTaken(Button(L"label=\"A\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"1a\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a b\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" idMso=\"Copy\"")));
    CHECK_FALSE(IsTaken(Ui(Tab(L"<button id=\"a\"/><button id=\"a\"/>"))));
    CHECK_FALSE(IsTaken(Ui(Tab(L"<button id=\"g\"/>"))));  // the group's
}

TEST_CASE("texts are neither empty nor longer than the host allows") {
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" label=\"\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" tag=\"\"")));
    CHECK(IsTaken(Button(L"id=\"a\" label=\"" + std::wstring(1024, L'x') + L"\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" label=\"" + std::wstring(1025, L'x') + L"\"")));
    CHECK(IsTaken(Button(L"id=\"a\" keytip=\"ABC\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" keytip=\"ABCD\"")));
}

TEST_CASE("a value and the callback for it exclude each other, and flags and sizes are what they should be") {
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" label=\"A\" getLabel=\"L\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" visible=\"true\" getVisible=\"V\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" enabled=\"yes\"")));
    CHECK_FALSE(IsTaken(Button(L"id=\"a\" size=\"huge\"")));
    CHECK(IsTaken(Button(L"id=\"a\" size=\"large\" enabled=\"false\"")));
}
