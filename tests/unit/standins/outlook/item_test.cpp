// The stand-in's items and the windows that show them.
#include <doctest.h>

#include <algorithm>

#include "testing/Versions.h"
#include "unit/standins/outlook/client.h"

using namespace client;
using standin::FolderKind;
using standin::ItemClass;

namespace {

using Ids = std::vector<DISPID>;
enum : DISPID {
    Read = 0xF001,
    Write = 0xF002,
    Open = 0xF003,
    CloseItem = 0xF004,
    Send = 0xF005,
    PropertyChange = 0xF009
};

Object Item(const Host& host, standin::Window) {
    return Get(Call(host.application, "ActiveInspector").AsObject(), "CurrentItem").AsObject();
}

}  // namespace

TEST_CASE("the entry id is empty until the first save and long afterwards") {
    Host host;
    const Object contact = Call(host.application, "CreateItem", {2}).AsObject();
    CHECK(Get(contact, "EntryID").AsText().empty());
    Put(contact, "FullName", "Ann Smith");
    CHECK(Get(contact, "Saved").AsNumber() == VARIANT_FALSE);
    CHECK(Call(contact, "Save").code == S_OK);
    const std::string id = Get(contact, "EntryID").AsText();
    CHECK(id.size() == 140);
    CHECK(std::all_of(id.begin(), id.end(), [](unsigned char c) { return std::isxdigit(c) != 0; }));
    CHECK(Get(contact, "Saved").AsNumber() == VARIANT_TRUE);
    const Object second = Call(host.application, "CreateItem", {2}).AsObject();
    Call(second, "Save");
    CHECK(Get(second, "EntryID").AsText() != id);
}

TEST_CASE("an item is found again by its entry id, and not by another") {
    Host host;
    const standin::Item ann = host.outlook.AddItem(FolderKind::Contacts, {{"FullName", "Ann Smith"}});
    const Object session = Get(host.application, "Session").AsObject();
    CHECK(Get(Call(session, "GetItemFromID", {host.outlook.EntryId(ann)}).AsObject(), "FullName").AsText() ==
          "Ann Smith");
    CHECK(Call(session, "GetItemFromID", {"00"}).Failed());
}

TEST_CASE("closing a new item with saving saves it, and its entry id can be read afterwards") {
    Host host;
    const standin::Item contact = host.outlook.NewItem(ItemClass::Contact);
    const standin::Window window = host.outlook.OpenInspector(contact);
    const Object item = Item(host, window);
    CHECK(Call(item, "Close", {0}).code == S_OK);
    CHECK_FALSE(host.outlook.Exists(window));
    CHECK(Get(item, "EntryID").AsText() == host.outlook.EntryId(contact));
    CHECK(Get(item, "EntryID").AsText().size() == 140);
    CHECK(host.outlook.ItemsIn(FolderKind::Contacts) == std::vector<standin::Item>{contact});
}

TEST_CASE("closing with discarding takes the changes back") {
    Host host;
    const standin::Item contact = host.outlook.AddItem(FolderKind::Contacts, {{"FullName", "Ann Smith"}});
    const standin::Window window = host.outlook.OpenInspector(contact);
    host.outlook.SetField(contact, "FullName", "Changed");
    CHECK_FALSE(host.outlook.IsSaved(contact));
    CHECK(host.outlook.CloseWindow(window, standin::SaveMode::Discard));
    CHECK(host.outlook.Field(contact, "FullName") == "Ann Smith");
}

TEST_CASE("the user who is asked saves, discards, or keeps the window open") {
    for (const auto answer : {standin::Prompted::Yes, standin::Prompted::No, standin::Prompted::Cancel}) {
        Host host({.prompted = answer});
        const standin::Item contact = host.outlook.AddItem(FolderKind::Contacts, {{"FullName", "Ann Smith"}});
        const standin::Window window = host.outlook.OpenInspector(contact);
        host.outlook.SetField(contact, "FullName", "Bob Smith");
        CHECK(host.outlook.CloseWindow(window) == (answer != standin::Prompted::Cancel));
        CHECK(host.outlook.Exists(window) == (answer == standin::Prompted::Cancel));
        CHECK(host.outlook.Field(contact, "FullName") == (answer == standin::Prompted::No ? "Ann Smith" : "Bob Smith"));
        CHECK(host.outlook.IsSaved(contact) == (answer != standin::Prompted::Cancel));
    }
}

TEST_CASE("the events of an item come in the order of its life") {
    Host host;
    const standin::Item task = host.outlook.AddItem(FolderKind::Tasks, {{"Subject", "Buy milk"}});
    const Object session = Get(host.application, "Session").AsObject();
    const Object item = Call(session, "GetItemFromID", {host.outlook.EntryId(task)}).AsObject();
    Sink sink(item, itemEvents);
    const standin::Window window = host.outlook.OpenInspector(task);
    host.outlook.SetField(task, "Subject", "Buy bread");
    host.outlook.CloseWindow(window, standin::SaveMode::Save);
    host.outlook.OpenInspector(task);
    CHECK(sink.events == Ids{Read, Open, PropertyChange, Write, CloseItem, Open});
}

TEST_CASE("a sink that cancels Write or Close keeps the window open") {
    for (const DISPID which : {Write, CloseItem}) {
        Host host;
        const standin::Window window = host.outlook.OpenInspector(host.outlook.NewItem(ItemClass::Task));
        Sink sink(Item(host, window), itemEvents, [&](DISPID id, DISPPARAMS& parameters) {
            if (id == which) *parameters.rgvarg[0].pboolVal = VARIANT_TRUE;
        });
        CHECK_FALSE(host.outlook.CloseWindow(window, standin::SaveMode::Save));
        CHECK(host.outlook.Exists(window));
    }
}

TEST_CASE("PropertyChange names the property") {
    Host host;
    const standin::Item contact = host.outlook.NewItem(ItemClass::Contact);
    const standin::Window window = host.outlook.OpenInspector(contact);
    std::string name;
    Sink sink(Item(host, window), itemEvents, [&](DISPID id, DISPPARAMS& parameters) {
        Answer argument;
        VariantCopy(&argument.value, &parameters.rgvarg[0]);
        if (id == PropertyChange) name = argument.AsText();
    });
    host.outlook.SetField(contact, "FileAs", "Smith, Ann");
    CHECK(name == "FileAs");
}

TEST_CASE("the full name of a contact fills in its subject and how it is filed") {
    Host host;
    const standin::Item contact = host.outlook.NewItem(ItemClass::Contact, {{"FullName", "Ann Mary Smith"}});
    CHECK(host.outlook.Field(contact, "Subject") == "Ann Mary Smith");
    CHECK(host.outlook.Field(contact, "FileAs") == "Smith, Ann Mary");
    CHECK_THROWS_AS(host.outlook.SetField(contact, "DueDate", "1"), std::out_of_range);
}

TEST_CASE("dates and numbers of items keep their type") {
    Host host;
    const standin::Item task =
        host.outlook.NewItem(ItemClass::Task, {{"DueDate", "2006-05-01"}, {"PercentComplete", "50"}});
    host.outlook.OpenInspector(task);
    const Object item = Item(host, {});
    CHECK(Get(item, "DueDate").value.vt == VT_DATE);
    CHECK(Get(item, "DueDate").value.date == 38838);
    CHECK(Get(item, "PercentComplete").AsNumber() == 50);
    CHECK(Put(item, "PercentComplete", "many").code == DISP_E_TYPEMISMATCH);
}

TEST_CASE("a deleted item leaves its folder, its window and the selection, and its object fails") {
    Host host;
    const standin::Window explorer = host.outlook.Windows().front();
    const standin::Item contact = host.outlook.AddItem(FolderKind::Contacts, {{"FullName", "Ann Smith"}});
    host.outlook.SwitchFolder(explorer, FolderKind::Contacts);
    const Object item = Call(Get(host.Explorer(), "Selection").AsObject(), "Item", {1}).AsObject();
    const standin::Window inspector = host.outlook.OpenInspector(contact);
    CHECK(Call(item, "Delete").code == S_OK);
    CHECK_FALSE(host.outlook.Exists(inspector));
    CHECK(host.outlook.ItemsIn(FolderKind::Contacts).empty());
    CHECK(host.outlook.View(explorer).selection.empty());
    CHECK(host.outlook.IsDeleted(contact));
    CHECK(Get(item, "EntryID").Failed());
    CHECK(Call(item, "Close", {0}).Failed());
}

IN_VERSIONS("inside the Close events an item can be closed and deleted until 2003, and not in 2007", 11, 12) {
    Host host({.version = version});
    const standin::Window window = host.outlook.OpenInspector(host.outlook.NewItem(ItemClass::Contact));
    const Object item = Item(host, window), inspector = Call(host.application, "ActiveInspector").AsObject();
    HRESULT inItem = S_FALSE, inWindow = S_FALSE;
    Sink onItem(item, itemEvents, [&](DISPID id, DISPPARAMS&) {
        if (id == CloseItem) inItem = Call(item, "Close", {1}).code;
    });
    Sink onWindow(inspector, inspectorEvents, [&](DISPID, DISPPARAMS&) { inWindow = Call(item, "Close", {1}).code; });
    host.outlook.CloseWindow(window, standin::SaveMode::Discard);
    CHECK(inItem == (version == 12 ? DISP_E_EXCEPTION : S_OK));
    CHECK(inWindow == (version == 12 ? DISP_E_EXCEPTION : S_OK));
}

IN_VERSIONS("a sent mail leaves its Inspector without a Close event in 2000, with one later", 9, 10) {
    Host host({.version = version});
    const standin::Item mail = host.outlook.NewItem(ItemClass::Mail, {{"Subject", "Hello"}});
    const standin::Window window = host.outlook.OpenInspector(mail);
    Sink onItem(Item(host, window), itemEvents),
        onWindow(Call(host.application, "ActiveInspector").AsObject(), inspectorEvents);
    CHECK(host.outlook.SendMail(window));
    CHECK(onItem.events == Ids{Send, CloseItem});
    CHECK(onWindow.events.size() == (version == 9 ? 0 : 1));
    CHECK(host.outlook.ItemsIn(FolderKind::SentMail).size() == 1);
}

TEST_CASE("GetInspector is a property that makes a hidden window once") {
    Host host;
    const Object item = Call(host.application, "CreateItem", {3}).AsObject();
    const Object inspector = Get(item, "GetInspector").AsObject();
    REQUIRE(inspector);
    CHECK(Get(item, "GetInspector").AsObject().get() == inspector.get());
    CHECK_FALSE(host.outlook.View(host.outlook.Windows().back()).shown);
    CHECK(Call(item, "Display").code == S_OK);
    CHECK(host.outlook.View(host.outlook.Windows().back()).shown);
}

TEST_CASE("CreateItem makes the eight kinds and refuses others") {
    const Host host;
    const int classes[] = {43, 26, 40, 48, 42, 44, 45, 69};
    for (int type = 0; type < 8; ++type)
        CHECK(Get(Call(host.application, "CreateItem", {type}).AsObject(), "Class").AsNumber() == classes[type]);
    CHECK(Call(host.application, "CreateItem", {8}).Failed());
    CHECK(Call(host.application, "CreateItem", {-1}).Failed());
}

TEST_CASE("a note has no event source and its subject cannot be put") {
    const Host host;
    const Object note = Call(host.application, "CreateItem", {5}).AsObject();
    Com<IConnectionPoint> point;
    CHECK(FAILED(FindPoint(note, itemEvents, point)));
    Put(note, "Body", "first line\r\nsecond");
    CHECK(IdOf(note, "Subject") == 0xF7A0);
    CHECK(Get(note, "Subject").AsText() == "first line");
    CHECK(Put(note, "Subject", "x").code == DISP_E_MEMBERNOTFOUND);
}

TEST_CASE("folders tell their kind and hold their items") {
    Host host;
    host.outlook.AddItem(FolderKind::Tasks, {{"Subject", "Buy milk"}});
    const Object session = Get(host.application, "Session").AsObject();
    const Object tasks = Call(session, "GetDefaultFolder", {13}).AsObject();
    CHECK(Get(tasks, "DefaultItemType").AsNumber() == 3);
    CHECK(Get(tasks, "DefaultMessageClass").AsText() == "IPM.Task");
    const Object items = Get(tasks, "Items").AsObject();
    CHECK(Get(items, "Count").AsNumber() == 1);
    CHECK(Get(Call(items, "Item", {1}).AsObject(), "Subject").AsText() == "Buy milk");
    CHECK(Call(session, "GetDefaultFolder", {99}).Failed());
    const Object root = Get(tasks, "Parent").AsObject();
    CHECK(Get(Get(root, "Folders").AsObject(), "Count").AsNumber() == 10);
}
