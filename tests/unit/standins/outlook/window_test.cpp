// The stand-in's Explorers and Inspectors and their events.
#include <doctest.h>

#include "unit/standins/outlook/client.h"

using namespace client;
using standin::FolderKind;
using standin::ItemClass;

namespace {

enum : DISPID {
    Activate = 0xF001,
    FolderSwitch = 0xF002,
    BeforeFolderSwitch = 0xF003,
    Deactivate = 0xF006,
    SelectionChange = 0xF007,
    Close = 0xF008
};

using Ids = std::vector<DISPID>;

Object ArgumentOf(const DISPPARAMS& parameters, UINT place = 0) {
    parameters.rgvarg[place].pdispVal->AddRef();
    return Object(parameters.rgvarg[place].pdispVal);
}

}  // namespace

TEST_CASE("a window goes on to another item, and stays where it is when that is open or refused") {
    standin::Outlook outlook({.version = 11, .prompted = standin::Prompted::Cancel});
    outlook.Start();
    const standin::Item ann = outlook.AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann"}});
    const standin::Item visit = outlook.NewItem(standin::ItemClass::Appointment, {{"Subject", "Visit"}});
    const standin::Item task = outlook.NewItem(standin::ItemClass::Task);
    const standin::Window window = outlook.OpenInspector(ann);
    CHECK(outlook.ShowOther(window, visit));
    CHECK(outlook.View(window).item == visit);
    CHECK(outlook.Windows().size() == 2);
    CHECK_FALSE(outlook.ShowOther(window, ann));  // the user does not want to leave a visit that is not saved
    outlook.SaveItem(visit);
    outlook.OpenInspector(task);
    CHECK_FALSE(outlook.ShowOther(window, task));
    CHECK(outlook.ShowOther(window, ann));
    CHECK(outlook.View(window).item == ann);
}

TEST_CASE("ActiveExplorer and ActiveInspector return S_OK and nothing when there is none") {
    const Host host({.startedBy = standin::StartedBy::Automation});
    for (const char* name : {"ActiveExplorer", "ActiveInspector", "ActiveWindow"}) {
        const Answer answer = Call(host.application, name);
        CHECK(answer.code == S_OK);
        CHECK(answer.value.vt == VT_DISPATCH);
        CHECK(answer.value.pdispVal == nullptr);
    }
    CHECK(Get(Get(host.application, "Explorers").AsObject(), "Count").AsNumber() == 0);
}

TEST_CASE("a new Explorer is announced before it shows, and activated afterwards") {
    Host host;
    const Object explorers = Get(host.application, "Explorers").AsObject();
    std::vector<std::string> order;
    std::unique_ptr<Sink> onWindow;
    Object opened;
    Sink onCollection(explorers, explorersEvents, [&](DISPID, DISPPARAMS& parameters) {
        opened = ArgumentOf(parameters);
        order.push_back(host.outlook.View(host.outlook.Windows().back()).shown ? "announced, shown"
                                                                               : "announced, hidden");
        onWindow = std::make_unique<Sink>(opened, explorerEvents, [&](DISPID id, DISPPARAMS&) {
            order.push_back(id == Activate ? "activated" : "other");
        });
    });
    host.outlook.OpenExplorer(FolderKind::Contacts);
    CHECK(order == std::vector<std::string>{"announced, hidden", "activated"});
    CHECK(Get(Get(opened, "CurrentFolder").AsObject(), "DefaultItemType").AsNumber() == 2);
    onWindow.reset();
}

TEST_CASE("the first Explorer is not announced but counted from the start") {
    AddIn addIn;
    int count = -1;
    bool active = false;
    addIn.onConnection = [&](IDispatch* app, IDispatch*) {
        app->AddRef();
        const Object application(app);
        count = Get(Get(application, "Explorers").AsObject(), "Count").AsNumber();
        active = static_cast<bool>(Call(application, "ActiveExplorer").AsObject());
        return S_OK;
    };
    standin::Outlook outlook;
    outlook.IgnoreRegistry();
    outlook.UseAddIn("Some.AddIn", &addIn);
    outlook.Start();
    CHECK(count == 1);
    CHECK(active);
}

TEST_CASE("a new Inspector is announced with its item before it shows, whatever the item's class") {
    for (const int number : {26, 40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 53, 69}) {
        CAPTURE(number);
        Host host;
        const Object inspectors = Get(host.application, "Inspectors").AsObject();
        int itemClass = 0;
        bool shown = true;
        Sink sink(inspectors, inspectorsEvents, [&](DISPID, DISPPARAMS& parameters) {
            itemClass = Get(Get(ArgumentOf(parameters), "CurrentItem").AsObject(), "Class").AsNumber();
            shown = host.outlook.View(host.outlook.Windows().back()).shown;
        });
        host.outlook.OpenInspector(host.outlook.NewItem(static_cast<ItemClass>(number)));
        CHECK(itemClass == number);
        CHECK_FALSE(shown);
    }
}

TEST_CASE("a sink of the item hung up in NewInspector sees the item open, and can refuse it") {
    Host host;
    const Object inspectors = Get(host.application, "Inspectors").AsObject();
    std::unique_ptr<Sink> onItem;
    Ids events;
    Sink sink(inspectors, inspectorsEvents, [&](DISPID, DISPPARAMS& parameters) {
        onItem = std::make_unique<Sink>(Get(ArgumentOf(parameters), "CurrentItem").AsObject(), itemEvents,
                                        [&](DISPID id, DISPPARAMS& given) {
                                            events.push_back(id);
                                            if (id == 0xF003) *given.rgvarg[0].pboolVal = VARIANT_TRUE;
                                        });
    });
    CHECK_FALSE(host.outlook.OpenInspector(host.outlook.NewItem(ItemClass::Contact)));
    CHECK(events == Ids{0xF001, 0xF003});
    CHECK(host.outlook.Windows().size() == 1);
    onItem.reset();
}

TEST_CASE("opening an item that is open activates its window") {
    Host host;
    const standin::Item item = host.outlook.NewItem(ItemClass::Task);
    const standin::Window window = host.outlook.OpenInspector(item);
    host.outlook.Activate(host.outlook.Windows().front());
    CHECK(host.outlook.OpenInspector(item) == window);
    CHECK(host.outlook.ActiveWindow() == window);
}

TEST_CASE("activation passes from window to window, once") {
    Host host;
    const standin::Window first = host.outlook.Windows().front();
    Sink sink(host.Explorer(), explorerEvents);
    const standin::Window second = host.outlook.OpenExplorer();
    host.outlook.Activate(first);
    host.outlook.Activate(first);
    host.outlook.Deactivate(first);
    CHECK(sink.events == Ids{Deactivate, Activate, Deactivate});
    host.outlook.Activate(first);
    host.outlook.CloseWindow(second);
    CHECK(sink.events.size() == 4);
}

TEST_CASE("closing the active window activates the one below it") {
    Host host;
    Sink sink(host.Explorer(), explorerEvents);
    const standin::Window second = host.outlook.OpenExplorer();
    host.outlook.CloseWindow(second);
    CHECK(sink.events == Ids{Deactivate, Activate});
}

TEST_CASE("a folder switch asks, tells, and tells that the selection changed") {
    Host host;
    host.outlook.AddItem(FolderKind::Contacts, {{"FullName", "Ann Smith"}});
    host.outlook.AddItem(FolderKind::Contacts, {{"FullName", "Bob Smith"}});
    const Object explorer = host.Explorer();
    std::string asked;
    Sink sink(explorer, explorerEvents, [&](DISPID id, DISPPARAMS& parameters) {
        if (id == BeforeFolderSwitch) asked = Get(ArgumentOf(parameters, 1), "Name").AsText();
        if (id == FolderSwitch)
            CHECK(Get(Get(explorer, "CurrentFolder").AsObject(), "DefaultItemType").AsNumber() == 2);
    });
    CHECK(host.outlook.SwitchFolder(host.outlook.Windows().front(), FolderKind::Contacts));
    CHECK(sink.events == Ids{BeforeFolderSwitch, FolderSwitch, SelectionChange});
    CHECK(asked == "Contacts");
    CHECK(Get(Get(explorer, "Selection").AsObject(), "Count").AsNumber() == 1);
}

TEST_CASE("a cancelled folder switch stays where it was") {
    Host host;
    Sink sink(host.Explorer(), explorerEvents,
              [](DISPID, DISPPARAMS& parameters) { *parameters.rgvarg[0].pboolVal = VARIANT_TRUE; });
    CHECK_FALSE(host.outlook.SwitchFolder(host.outlook.Windows().front(), FolderKind::Tasks));
    CHECK(sink.events == Ids{BeforeFolderSwitch});
    CHECK(host.outlook.View(host.outlook.Windows().front()).folder == FolderKind::Inbox);
}

TEST_CASE("a folder without items has an empty selection and tells of no change of it") {
    Host host;
    Sink sink(host.Explorer(), explorerEvents);
    host.outlook.SwitchFolder(host.outlook.Windows().front(), FolderKind::OutlookToday);
    CHECK(sink.events == Ids{BeforeFolderSwitch, FolderSwitch});
    CHECK(Get(Get(host.Explorer(), "Selection").AsObject(), "Count").AsNumber() == 0);
}

TEST_CASE("a client switches the folder by reference, not by value") {
    const Host host;
    const Object session = Call(host.application, "GetNamespace", {"MAPI"}).AsObject();
    const Object tasks = Call(session, "GetDefaultFolder", {13}).AsObject();
    CHECK(Put(host.Explorer(), "CurrentFolder", tasks).code == DISP_E_MEMBERNOTFOUND);
    CHECK(Put(host.Explorer(), "CurrentFolder", tasks, DISPATCH_PROPERTYPUTREF).code == S_OK);
    CHECK(Get(Get(host.Explorer(), "CurrentFolder").AsObject(), "Name").AsText() == "Tasks");
}

TEST_CASE("a selection is what was selected when it was asked for") {
    Host host;
    const standin::Window window = host.outlook.Windows().front();
    const standin::Item ann = host.outlook.AddItem(FolderKind::Contacts, {{"FullName", "Ann Smith"}});
    const standin::Item bob = host.outlook.AddItem(FolderKind::Contacts, {{"FullName", "Bob Smith"}});
    host.outlook.SwitchFolder(window, FolderKind::Contacts);
    Sink sink(host.Explorer(), explorerEvents);
    host.outlook.Select(window, {bob, ann});
    CHECK(sink.events == Ids{SelectionChange});
    const Object selection = Get(host.Explorer(), "Selection").AsObject();
    host.outlook.Select(window, {});
    CHECK(Get(selection, "Count").AsNumber() == 2);
    CHECK(Get(Call(selection, "Item", {1}).AsObject(), "FullName").AsText() == "Bob Smith");
    CHECK(Call(selection, "Item", {3}).Failed());
    CHECK(Get(Get(host.Explorer(), "Selection").AsObject(), "Count").AsNumber() == 0);
}

TEST_CASE("the closing window is counted in its own Close event, or not, as the host is told") {
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        Host host({.closingWindow = counted});
        const int more = counted == standin::ClosingWindow::StillCounted ? 1 : 0;
        const Object explorers = Get(host.application, "Explorers").AsObject(),
                     inspectors = Get(host.application, "Inspectors").AsObject();
        const standin::Window second = host.outlook.OpenExplorer();
        int explorersThen = -1, inspectorsThen = -1;
        Sink onExplorer(host.Explorer(2), explorerEvents, [&](DISPID id, DISPPARAMS&) {
            if (id == Close) explorersThen = Get(explorers, "Count").AsNumber();
        });
        host.outlook.CloseWindow(second);
        CHECK(explorersThen == 1 + more);
        CHECK(Get(explorers, "Count").AsNumber() == 1);
        const standin::Window inspector = host.outlook.OpenInspector(host.outlook.NewItem(ItemClass::Contact));
        Sink onInspector(Call(host.application, "ActiveInspector").AsObject(), inspectorEvents,
                         [&](DISPID id, DISPPARAMS&) {
                             if (id == Close) inspectorsThen = Get(inspectors, "Count").AsNumber();
                         });
        host.outlook.CloseWindow(inspector);
        CHECK(inspectorsThen == more);
        CHECK(Get(inspectors, "Count").AsNumber() == 0);
    }
}

TEST_CASE("the bars of a window can still be used in its Close event, and not afterwards") {
    Host host;
    const standin::Window second = host.outlook.OpenExplorer();
    const Object explorer = host.Explorer(2), controls = host.Controls("Standard", 2), button = host.Button("mark", 2);
    HRESULT during = E_FAIL;
    Sink sink(explorer, explorerEvents, [&](DISPID id, DISPPARAMS&) {
        if (id == Close) during = Get(controls, "Count").code;
    });
    host.outlook.CloseWindow(second);
    CHECK(during == S_OK);
    CHECK(Get(explorer, "Caption").code == RPC_E_DISCONNECTED);
    CHECK(Get(controls, "Count").code == RPC_E_DISCONNECTED);
    CHECK(Get(button, "Tag").code == RPC_E_DISCONNECTED);
    CHECK(Call(button, "Delete").Failed());
    Com<IConnectionPoint> point;
    REQUIRE(FindPoint(explorer, explorerEvents, point) == S_OK);
    DWORD cookie = 0;
    CHECK(point->Advise(&sink, &cookie) == RPC_E_DISCONNECTED);
}

TEST_CASE("a client closes an Explorer and an Inspector") {
    Host host;
    host.outlook.OpenExplorer();
    Sink onExplorer(host.Explorer(2), explorerEvents);
    CHECK(Call(host.Explorer(2), "Close").code == S_OK);
    CHECK(onExplorer.events == Ids{Close});
    host.outlook.OpenInspector(host.outlook.NewItem(ItemClass::Task));
    const Object inspector = Call(host.application, "ActiveInspector").AsObject();
    Sink onInspector(inspector, inspectorEvents);
    CHECK(Call(inspector, "Close", {5}).code == E_INVALIDARG);
    CHECK(Call(inspector, "Close", {1}).code == S_OK);
    CHECK(onInspector.events == Ids{Close});
    CHECK(host.outlook.Windows().size() == 1);
}

TEST_CASE("Explorers.Add makes a hidden window that is counted and shows with Display") {
    Host host;
    const Object explorers = Get(host.application, "Explorers").AsObject();
    const Object folder = Get(host.Explorer(), "CurrentFolder").AsObject();
    const Object hidden = Call(explorers, "Add", {folder, 0}).AsObject();
    CHECK(Get(explorers, "Count").AsNumber() == 2);
    CHECK_FALSE(host.outlook.View(host.outlook.Windows().back()).shown);
    Sink sink(hidden, explorerEvents);
    CHECK(Call(hidden, "Activate").Failed());
    Call(hidden, "Display");
    CHECK(host.outlook.View(host.outlook.Windows().back()).shown);
    CHECK(sink.events == Ids{Activate});
}

TEST_CASE("the parent of a window is the Application") {
    Host host;
    CHECK(Get(Get(host.Explorer(), "Parent").AsObject(), "Name").AsText() == "Outlook");
    CHECK(Get(Get(host.Explorer(), "Application").AsObject(), "Name").AsText() == "Outlook");
    const Object bars = Get(host.Explorer(), "CommandBars").AsObject();
    CHECK(Get(Get(bars, "Parent").AsObject(), "Class").AsNumber() == 34);
}

TEST_CASE("a window returns its frame, when it has one") {
    Host host;
    Com<IOleWindow> window;
    REQUIRE(host.Explorer()->QueryInterface(IID_IOleWindow, window.putVoid()) == S_OK);
    HWND frame = nullptr;
    CHECK(window->GetWindow(&frame) == E_FAIL);
    host.outlook.SetFrame(host.outlook.Windows().front(), GetDesktopWindow());
    CHECK(window->GetWindow(&frame) == S_OK);
    CHECK(frame == GetDesktopWindow());
    CHECK(host.application->QueryInterface(IID_IOleWindow, window.putVoid()) == E_NOINTERFACE);
}

TEST_CASE("a sink that closes the window that is announced to it does no harm") {
    Host host;
    const Object explorers = Get(host.application, "Explorers").AsObject();
    Sink sink(explorers, explorersEvents,
              [](DISPID, DISPPARAMS& parameters) { Call(ArgumentOf(parameters), "Close"); });
    const standin::Window window = host.outlook.OpenExplorer();
    CHECK_FALSE(host.outlook.Exists(window));
    CHECK(host.outlook.Windows().size() == 1);
    const Object inspectors = Get(host.application, "Inspectors").AsObject();
    Sink other(inspectors, inspectorsEvents,
               [](DISPID, DISPPARAMS& parameters) { Call(ArgumentOf(parameters), "Close", {1}); });
    CHECK_FALSE(host.outlook.OpenInspector(host.outlook.NewItem(ItemClass::Contact)));
}

TEST_CASE("a sink that closes its window when it is activated does no harm") {
    Host host;
    const standin::Window second = host.outlook.OpenExplorer();
    host.outlook.Activate(host.outlook.Windows().front());
    const Object explorer = host.Explorer(2);
    Sink sink(explorer, explorerEvents, [&](DISPID id, DISPPARAMS&) {
        if (id == Activate) Call(explorer, "Close");
    });
    host.outlook.Activate(second);
    CHECK_FALSE(host.outlook.Exists(second));
    CHECK(sink.events == Ids{Activate, Close});
}
