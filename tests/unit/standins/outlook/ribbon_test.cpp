// What the ribbon of an item window shows, and which windows have one.
#include "outlook/program/RibbonTabs.h"

#include <doctest.h>

#include <algorithm>

#include "outlook/Outlook.h"
#include "outlook/RibbonHost.h"
#include "outlook/program/Program.h"
#include "outlook/program/Stage.h"
#include "outlook/program/Versions.h"
#include "unit/standins/outlook/client.h"

using program::RibbonGroup;
using program::RibbonTab;
using program::RibbonTabsOf;
using standin::ItemClass;

namespace {

constexpr int versions[] = {9, 10, 11, 12};

// A host of 2007 with one item window.
struct ItemWindow {
    explicit ItemWindow(ItemClass itemClass) : kind(itemClass) {
        outlook.IgnoreRegistry();
        outlook.Start();
        window = outlook.OpenInspector(outlook.NewItem(itemClass));
    }
    [[nodiscard]] std::vector<RibbonTab> Tabs() const { return RibbonTabsOf(outlook.Bars(window), kind); }
    ItemClass kind;
    standin::Outlook outlook{{.version = 12}};
    standin::Window window;
};

template <class T>
const T* Named(const std::vector<T>& list, const std::string& caption) {
    const auto found = std::find_if(list.begin(), list.end(), [&](const T& one) { return one.caption == caption; });
    return found == list.end() ? nullptr : &*found;
}

std::vector<std::string> Captions(const std::vector<RibbonTab>& tabs) {
    std::vector<std::string> captions;
    for (const RibbonTab& tab : tabs) captions.push_back(tab.caption);
    return captions;
}

// The windowed stand-in with a contact's window that has a custom button.
struct Windowed {
    explicit Windowed(int version) : program({.version = version}, "") {
        outlook.IgnoreRegistry();
        program.Start();
        explorer = outlook.Windows().front();
        contact = outlook.OpenInspector(outlook.NewItem(ItemClass::Contact));
        button = outlook.AddCustomButton(contact, "Standard", "&Send it", "102", {}, true).instance;
        onExplorer = outlook.AddCustomButton(explorer, "Standard", "&Synchronise", "103", {}, true).instance;
        stage.Pump(50);
    }
    [[nodiscard]] bool Seen(standin::Window window, int instance) const {
        return program.FrameOf(window)->SpotOf(instance).window != nullptr;
    }
    [[nodiscard]] std::string Title(standin::Window window) const {
        char title[200] = {};
        GetWindowTextA(program.FrameOf(window)->Handle(), title, sizeof title);
        return title;
    }
    program::Program program;
    standin::Outlook& outlook = program.Host();
    const program::Stage stage{program};
    standin::Window explorer, contact;
    int button = 0, onExplorer = 0;
};

// What an add-in has on the ribbon: a button on the contacts' home tab and in their windows, and one in their context menu.
class RibbonPart : public standin::RibbonExtensibility {
  public:
    int clicks = 0;

    STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
        *out = iid == IID_IUnknown || iid == IID_IDispatch ? this : nullptr;
        return *out ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* id) override { return *id = 7, S_OK; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        clicks += id == 7 ? 1 : 0;
        return S_OK;
    }
    STDMETHODIMP GetCustomUI(BSTR ribbonId, BSTR* xml) override {
        const std::wstring id = ribbonId;
        const std::wstring begin =
            L"<customUI xmlns='http://schemas.microsoft.com/office/2009/07/customui'><ribbon><tabs>";
        const std::wstring group = L"<group id='g' label='G'><button id='own' label='Own' onAction='Do'/></group>";
        const std::wstring menu =
            L"<contextMenus><contextMenu idMso='ContextMenuContactItem'><button id='menu' label='M' onAction='Do'/>"
            L"</contextMenu></contextMenus>";
        std::wstring text;
        if (id == L"Microsoft.Outlook.Contact")
            text = begin + L"<tab idMso='TabContact'>" + group + L"</tab></tabs></ribbon></customUI>";
        if (id == L"Microsoft.Outlook.Explorer")
            text = begin + L"<tab idMso='TabContacts'>" + group + L"</tab></tabs></ribbon>" + menu + L"</customUI>";
        *xml = SysAllocString(text.c_str());
        return S_OK;
    }
};

class RibbonAddIn : public client::AddIn {
  public:
    RibbonPart ribbon;
    STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
        constexpr IID extensibilityId{0x000C0396, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
        if (iid != extensibilityId) return AddIn::QueryInterface(iid, out);
        *out = &ribbon;
        return S_OK;
    }
};

// The windowed stand-in with that add-in, a contacts folder with one contact selected, and a contact's window.
struct WithRibbon {
    explicit WithRibbon(int version, standin::RibbonAsked asked = standin::RibbonAsked::BeforeStartupComplete)
        : program({.version = version, .ribbon = {.asked = asked}}, "") {
        outlook.IgnoreRegistry();
        outlook.UseAddIn("Some.AddIn", &addIn);
        outlook.AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann"}});
        program.Start();
        explorer = outlook.Windows().front();
        stage.ChooseFolder(explorer, standin::FolderKind::Contacts);
        stage.SelectFirst(explorer, 1);
        contact = outlook.OpenInspector(outlook.NewItem(ItemClass::Contact));
        stage.Pump(50);
    }
    ~WithRibbon() { outlook.Quit(); }
    WithRibbon(const WithRibbon&) = delete;
    WithRibbon& operator=(const WithRibbon&) = delete;
    RibbonAddIn addIn;
    program::Program program;
    standin::Outlook& outlook = program.Host();
    program::Stage stage{program};
    standin::Window explorer, contact;
};

}  // namespace

TEST_CASE("a custom button of the bar \"Standard\" stands on the ribbon's tab \"Add-Ins\"") {
    ItemWindow contact(ItemClass::Contact);
    const int button = contact.outlook.AddCustomButton(contact.window, "Standard", "&Send", "102").instance;
    const std::vector<RibbonTab> tabs = contact.Tabs();
    CHECK(Captions(tabs) == std::vector<std::string>{"Contact", "Insert", "Format Text", "Add-Ins"});
    const RibbonTab* addIns = Named(tabs, program::addInsTab);
    REQUIRE(addIns);
    REQUIRE(addIns->groups.size() == 1);
    CHECK(addIns->groups.front().caption == "Toolbar Commands");
    REQUIRE(addIns->groups.front().controls.size() == 1);
    CHECK(addIns->groups.front().controls.front().instance == button);
}

TEST_CASE("a custom control of the menu bar stands in the group of menus, before those of toolbars") {
    ItemWindow contact(ItemClass::Contact);
    contact.outlook.AddCustomButton(contact.window, "Standard", "Tool", "1");
    contact.outlook.AddCustomButton(contact.window, "Menu Bar", "Menu", "2");
    const RibbonTab* addIns = nullptr;
    const std::vector<RibbonTab> tabs = contact.Tabs();
    REQUIRE((addIns = Named(tabs, program::addInsTab)));
    REQUIRE(addIns->groups.size() == 2);
    CHECK(addIns->groups[0].caption == "Menu Commands");
    CHECK(addIns->groups[1].caption == "Toolbar Commands");
}

TEST_CASE("without a custom control there is no tab \"Add-Ins\"") {
    CHECK_FALSE(Named(ItemWindow(ItemClass::Contact).Tabs(), program::addInsTab));
    CHECK_FALSE(Named(ItemWindow(ItemClass::Mail).Tabs(), program::addInsTab));
}

TEST_CASE("the first tab is named after the item and has the window's own commands") {
    const std::pair<ItemClass, const char*> kinds[] = {{ItemClass::Contact, "Contact"},
                                                       {ItemClass::Appointment, "Appointment"},
                                                       {ItemClass::Task, "Task"},
                                                       {ItemClass::Mail, "Message"}};
    for (const auto& row : kinds) {
        const char* const caption = row.second;
        CAPTURE(caption);
        const std::vector<RibbonTab> tabs = ItemWindow(row.first).Tabs();
        REQUIRE_FALSE(tabs.empty());
        CHECK(tabs.front().caption == caption);
        CHECK(tabs.front().groups.size() >= 2);
        for (const RibbonGroup& group : tabs.front().groups)
            for (const standin::ControlView& control : group.controls) CHECK(control.builtIn);
    }
}

TEST_CASE("a note has no ribbon") { CHECK(ItemWindow(ItemClass::Note).Tabs().empty()); }

TEST_CASE("a custom button of an item window is on its toolbar up to 2003 and on the tab \"Add-Ins\" in 2007") {
    for (const int version : versions) {
        CAPTURE(version);
        Windowed host(version);
        CHECK(host.program.FrameOf(host.contact)->HasRibbon() == (version >= 12));
        CHECK(host.Seen(host.contact, host.button) == (version < 12));
        CHECK(host.stage.OpenTab(host.contact, program::addInsTab) == (version >= 12));
        CHECK(host.Seen(host.contact, host.button));
    }
}

TEST_CASE("Explorers have menu and toolbar in every version") {
    for (const int version : versions) {
        CAPTURE(version);
        Windowed host(version);
        CHECK_FALSE(host.program.FrameOf(host.explorer)->HasRibbon());
        CHECK(host.Seen(host.explorer, host.onExplorer));
        CHECK(host.Seen(host.explorer, host.outlook.FindCaption(host.explorer, "Tools").instance));
    }
}

TEST_CASE("the mouse presses a button of the ribbon once its tab is open") {
    Windowed host(12);
    CHECK_FALSE(host.stage.Press(host.contact, host.button));
    host.stage.OpenTab(host.contact, program::addInsTab);
    host.outlook.Record();
    CHECK(host.stage.Press(host.contact, host.button));
    const std::vector<std::string> lines = host.outlook.Transcript();
    CHECK(std::count(lines.begin(), lines.end(), "# click \"Send it\"") == 1);
}

TEST_CASE("the open tab stays open while the bars change, until it is gone") {
    Windowed host(12);
    host.stage.OpenTab(host.contact, program::addInsTab);
    const int another = host.outlook.AddCustomButton(host.contact, "Standard", "Another", "9", {}, true).instance;
    host.stage.Pump(50);
    CHECK(host.Seen(host.contact, host.button));
    CHECK(host.Seen(host.contact, another));
}

TEST_CASE("the title of every window names the version") {
    for (const int version : versions) {
        const std::string name = program::VersionName(version);
        CAPTURE(name);
        const Windowed host(version);
        CHECK(host.Title(host.explorer) == "Inbox - Microsoft Outlook (" + name + ")");
        CHECK(host.Title(host.contact) == "Untitled - Contact (" + name + ")");
    }
}

TEST_CASE("in 2010 and later the mouse presses what an add-in has on the ribbon of Explorers and item windows") {
    for (const int version : {14, 15, 16}) {
        CAPTURE(version);
        WithRibbon host(version);
        CHECK(host.outlook.RibbonErrors().empty());
        CHECK(host.stage.PressRibbon(host.contact, "own"));
        CHECK(host.addIn.ribbon.clicks == 1);
        CHECK(host.stage.PressRibbon(host.explorer, "own"));
        CHECK(host.addIn.ribbon.clicks == 2);
        CHECK_FALSE(host.stage.PressRibbon(host.explorer, "another"));
    }
}

TEST_CASE("the right button of the mouse opens the menu of what is selected, and its entry can be pressed once") {
    WithRibbon host(16);
    CHECK_FALSE(host.stage.PressRibbon(host.explorer, "menu"));
    CHECK(host.stage.RightClickSelection(host.explorer));
    CHECK(host.stage.PressRibbon(host.explorer, "menu"));
    CHECK(host.addIn.ribbon.clicks == 1);
    CHECK_FALSE(host.stage.PressRibbon(host.explorer, "menu"));
    host.stage.SelectFirst(host.explorer, 0);
    CHECK_FALSE(host.stage.RightClickSelection(host.explorer));
}

TEST_CASE("a host of 2010 that asks for no ribbon draws its item windows as 2007 did") {
    WithRibbon host(14, standin::RibbonAsked::Never);
    CHECK(host.program.FrameOf(host.contact)->HasRibbon());
    CHECK_FALSE(host.stage.PressRibbon(host.contact, "own"));
    CHECK(host.addIn.ribbon.clicks == 0);
}
