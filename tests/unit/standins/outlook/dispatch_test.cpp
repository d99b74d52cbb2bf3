// Calls by name and by id on the stand-in's objects.
#include <doctest.h>

#include <map>
#include <string>

#include "testing/Versions.h"
#include "unit/standins/outlook/client.h"

using namespace client;

namespace {

HRESULT InvokeNamed(const Object& object, DISPID id, std::vector<Variant> arguments, std::vector<DISPID> names,
                    Variant& result) {
    DISPPARAMS parameters{arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                          static_cast<UINT>(names.size())};
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, nullptr, nullptr);
}

std::string InterfaceNameOf(const Object& object) {
    Com<ITypeInfo> info;
    if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put()))) return "<none>";
    BSTR name = nullptr;
    info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
    std::string text;
    for (const wchar_t* c = name; c && *c; ++c) text.push_back(static_cast<char>(*c));
    SysFreeString(name);
    return text;
}

}  // namespace

TEST_CASE("names are found in any case and have the documented dispids") {
    const Host host;
    CHECK(IdOf(host.application, "ActiveExplorer") == 0x111);
    CHECK(IdOf(host.application, "aCTIVEeXPLORER") == 0x111);
    CHECK(IdOf(host.application, "Version") == 0x116);
    CHECK(IdOf(host.Explorer(), "CommandBars") == 0x2100);
    CHECK(IdOf(host.Explorer(), "Selection") == 0x2202);
    CHECK(IdOf(host.Bar("Standard"), "Controls") == 0x60040003);
    CHECK(IdOf(host.Controls("Standard"), "Add") == 0x60030000);
    CHECK(IdOf(host.Controls("Standard"), "Item") == 0);
    CHECK(IdOf(host.Button("x"), "Caption") == 0x60040003);
    CHECK(IdOf(host.Button("x"), "PasteFace") == 0x60050005);
    CHECK(IdOf(host.application, "NoSuchName") == DISPID_UNKNOWN);
}

TEST_CASE("what an object of the host is, its type information and its Class tell") {
    Host host;
    CHECK(InterfaceNameOf(host.application) == "_Application");
    CHECK(InterfaceNameOf(host.Explorer()) == "_Explorer");
    CHECK(InterfaceNameOf(Get(host.Explorer(), "Selection").AsObject()) == "Selection");
    CHECK(InterfaceNameOf(Get(host.Explorer(), "CurrentFolder").AsObject()) == "MAPIFolder");
    CHECK(Get(host.Explorer(), "Class").AsNumber() == 34);
    CHECK(Get(Get(host.application, "Explorers").AsObject(), "Class").AsNumber() == 60);
    host.outlook.OpenInspector(host.outlook.NewItem(standin::ItemClass::Task));
    const Object inspector = Call(host.application, "ActiveInspector").AsObject();
    CHECK(Get(inspector, "Class").AsNumber() == 35);
    CHECK(InterfaceNameOf(Get(inspector, "CurrentItem").AsObject()) == "_TaskItem");
}

IN_EVERY_VERSION("Name is Outlook and Version begins with the major number") {
    const std::map<int, std::string> texts = {{9, "9.0.0.2711"},   {10, "10.0.0.2627"}, {11, "11.0.0.5608"},
                                              {12, "12.0.0.4518"}, {14, "14.0.0.4760"}, {15, "15.0.0.4420"},
                                              {16, "16.0.0.4266"}};
    const Host host({.version = version});
    CHECK(Get(host.application, "Name").AsText() == "Outlook");
    CHECK(Get(host.application, "Version").AsText() == texts.at(version));
}

TEST_CASE("numbers are VT_I4 in Outlook's library and VT_INT in Office's") {
    const Host host;
    CHECK(Get(Get(host.application, "Explorers").AsObject(), "Count").value.vt == VT_I4);
    CHECK(Get(host.Controls("Standard"), "Count").value.vt == VT_INT);
    CHECK(Get(host.Button("x"), "Type").value.vt == VT_INT);
    CHECK(Get(host.Button("x"), "Visible").value.vt == VT_BOOL);
}

TEST_CASE("a method is no property, a property no method, and both flags together are either") {
    const Host host;
    const Object explorers = Get(host.application, "Explorers").AsObject();
    CHECK(Invoke(host.application, 0x111, DISPATCH_PROPERTYGET).code == DISP_E_MEMBERNOTFOUND);
    CHECK(Invoke(host.application, 0x111, DISPATCH_METHOD | DISPATCH_PROPERTYGET).code == S_OK);
    CHECK(Invoke(explorers, 0x51, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {1}).code == S_OK);
    CHECK(Invoke(host.application, 0x116, DISPATCH_METHOD).code == DISP_E_MEMBERNOTFOUND);
    CHECK(Invoke(host.application, 0x116, DISPATCH_METHOD | DISPATCH_PROPERTYGET).code == S_OK);
    CHECK(Invoke(host.application, 0x4711, DISPATCH_METHOD).code == DISP_E_MEMBERNOTFOUND);
}

TEST_CASE("too many arguments and missing ones are told apart") {
    const Host host;
    const Object explorers = Get(host.application, "Explorers").AsObject();
    CHECK(Call(explorers, "Item").code == DISP_E_PARAMNOTOPTIONAL);
    CHECK(Call(explorers, "Item", {1, 2}).code == DISP_E_BADPARAMCOUNT);
    CHECK(Call(explorers, "Item", {Variant::Omitted()}).code == DISP_E_PARAMNOTOPTIONAL);
    CHECK(Call(explorers, "Item", {"not a number"}).code == DISP_E_TYPEMISMATCH);
}

TEST_CASE("arguments for a property that has none are meant for the collection in it, as scripts write it") {
    const Host host;
    const Answer bar = Get(host.Explorer(), "CommandBars", {"Standard"});
    REQUIRE(bar.code == S_OK);
    CHECK(Get(bar.AsObject(), "Name").AsText() == "Standard");
    CHECK(Get(Get(bar.AsObject(), "Controls", {1}).AsObject(), "Index").AsNumber() == 1);
    CHECK(Get(host.Explorer(), "CommandBars", {"No such bar"}).code == E_INVALIDARG);
    CHECK(Get(host.application, "Version", {1}).code == DISP_E_BADPARAMCOUNT);
}

TEST_CASE("arguments can be given by name, in any order") {
    const Host host;
    const Object controls = host.Controls("Menu Bar");
    std::wstring words[] = {L"Add", L"before", L"TEMPORARY", L"Type"};
    LPOLESTR names[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data()};
    DISPID ids[4];
    REQUIRE(controls->GetIDsOfNames(IID_NULL, names, 4, LOCALE_USER_DEFAULT, ids) == S_OK);
    CHECK(ids[1] == 3);
    CHECK(ids[2] == 4);
    Variant result;
    CHECK(InvokeNamed(controls, ids[0], {2, true, 10}, {ids[1], ids[2], ids[3]}, result) == S_OK);
    Answer answer;
    REQUIRE(result.vt == VT_DISPATCH);
    result.pdispVal->AddRef();
    const Object popup(result.pdispVal);
    CHECK(Get(popup, "Index").AsNumber() == 2);
    CHECK(Get(popup, "Type").AsNumber() == 10);
    Variant unused;
    CHECK(InvokeNamed(controls, ids[0], {1}, {17}, unused) == DISP_E_PARAMNOTFOUND);
}

TEST_CASE("a property is put only with the name of the value") {
    const Host host;
    const Object button = host.Button("x");
    std::vector<Variant> value = {"new"};
    DISPPARAMS unnamed{value.data(), nullptr, 1, 0};
    CHECK(FAILED(button->Invoke(0x60040003, IID_NULL, 0, DISPATCH_PROPERTYPUT, &unnamed, nullptr, nullptr, nullptr)));
    CHECK(Get(button, "Caption").AsText() == "x");
}

TEST_CASE("a wrong argument type is pointed at by its place in the array") {
    const Host host;
    std::vector<Variant> reversed = {"no number", Variant::Omitted(), Variant::Omitted(), 1};
    DISPPARAMS parameters{reversed.data(), nullptr, 4, 0};
    UINT bad = 99;
    CHECK(host.Controls("Standard")
              ->Invoke(0x60030000, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, &bad) ==
          DISP_E_TYPEMISMATCH);
    CHECK(bad == 0);
}

TEST_CASE("an interface other than IID_NULL is refused by Invoke and GetIDsOfNames") {
    const Host host;
    DISPPARAMS parameters{};
    DISPID id = 0;
    std::wstring name = L"Name";
    LPOLESTR names[] = {name.data()};
    CHECK(host.application->Invoke(0x3001, IID_IUnknown, 0, DISPATCH_PROPERTYGET, &parameters, nullptr, nullptr,
                                   nullptr) == DISP_E_UNKNOWNINTERFACE);
    CHECK(host.application->GetIDsOfNames(IID_IUnknown, names, 1, 0, &id) == DISP_E_UNKNOWNINTERFACE);
}

TEST_CASE("Outlook's own failures come as exceptions with a description") {
    const Host host;
    const Answer answer = Call(Get(host.application, "Explorers").AsObject(), "Item", {9});
    CHECK(answer.code == DISP_E_EXCEPTION);
    CHECK(answer.scode == E_INVALIDARG);
    CHECK(answer.description == "Array index out of bounds.");
}

TEST_CASE("every failure can be had as an exception with its code inside") {
    const Host host({.failures = standin::Failures::AsExceptions});
    const Answer answer = Get(Get(host.Explorer(), "CommandBars").AsObject(), "Item", {"No such bar"});
    CHECK(answer.code == DISP_E_EXCEPTION);
    CHECK(answer.scode == E_INVALIDARG);
}

TEST_CASE("a result that nobody wants is not held") {
    Host host;
    DISPPARAMS parameters{};
    CHECK(host.application->Invoke(0x119, IID_NULL, 0, DISPATCH_PROPERTYGET, &parameters, nullptr, nullptr, nullptr) ==
          S_OK);
    CHECK(host.outlook.References() == 1);
}

TEST_CASE("For Each goes over bars and controls") {
    Host host;
    const Answer found = Get(host.Controls("Menu Bar"), "_NewEnum");
    REQUIRE(found.value.vt == VT_UNKNOWN);
    Com<IEnumVARIANT> enumerator;
    REQUIRE(found.value.punkVal->QueryInterface(IID_IEnumVARIANT, enumerator.putVoid()) == S_OK);
    int count = 0;
    for (;;) {
        Variant value;
        if (enumerator->Next(1, &value, nullptr) != S_OK) break;
        CHECK(value.vt == VT_DISPATCH);
        ++count;
    }
    CHECK(count == 7);
}

TEST_CASE("connection points exist for the sets of the version only") {
    struct Case {
        int version;
        HRESULT application10, application11, explorer10;
    };
    const HRESULT no = static_cast<HRESULT>(0x80040200);  // CONNECT_E_NOCONNECTION
    for (const Case& expected :
         {Case{9, no, no, no}, Case{10, S_OK, no, S_OK}, Case{11, S_OK, S_OK, S_OK}, Case{12, S_OK, S_OK, S_OK}}) {
        CAPTURE(expected.version);
        const Host host({.version = expected.version});
        Com<IConnectionPoint> point;
        CHECK(FindPoint(host.application, applicationEvents, point) == S_OK);
        CHECK(FindPoint(host.application, applicationEvents10, point) == expected.application10);
        CHECK(FindPoint(host.application, applicationEvents11, point) == expected.application11);
        CHECK(FindPoint(host.Explorer(), explorerEvents10, point) == expected.explorer10);
        CHECK(FindPoint(host.Explorer(), explorerEvents, point) == S_OK);
        CHECK(FindPoint(Get(host.application, "Explorers").AsObject(), explorersEvents, point) == S_OK);
        CHECK(FindPoint(Get(host.application, "Inspectors").AsObject(), inspectorsEvents, point) == S_OK);
        CHECK(FindPoint(host.Button("x"), buttonEvents, point) == S_OK);
    }
}

TEST_CASE("a client of any version hears the application's end through the first event set") {
    for (const int version : {9, 10, 11, 12}) {
        CAPTURE(version);
        Host host({.version = version});
        int told = 0;
        Sink sink(host.application, applicationEvents, [&](DISPID id, DISPPARAMS&) { told += id == 0xF007 ? 1 : 0; });
        host.outlook.Quit();
        CHECK(told == 1);
    }
}

TEST_CASE("an object without events is no connection point container") {
    const Host host;
    Com<IConnectionPointContainer> container;
    CHECK(host.Controls("Standard")->QueryInterface(IID_IConnectionPointContainer, container.putVoid()) ==
          E_NOINTERFACE);
    const Object selection = Get(host.Explorer(), "Selection").AsObject();
    CHECK(selection->QueryInterface(IID_IConnectionPointContainer, container.putVoid()) == E_NOINTERFACE);
}

TEST_CASE("a sink that does not implement the event set cannot be connected") {
    const Host host;
    Com<IConnectionPoint> point;
    REQUIRE(FindPoint(host.Explorer(), explorerEvents, point) == S_OK);
    DWORD cookie = 17;
    CHECK(point->Advise(host.application.get(), &cookie) ==
          static_cast<HRESULT>(0x80040202));  // CONNECT_E_CANNOTCONNECT
    CHECK(cookie == 0);
    CHECK(point->Unadvise(4711) == static_cast<HRESULT>(0x80040200));
}

TEST_CASE("early binding is refused rather than met with a wrong vtable") {
    Host host;
    Com<IUnknown> early;
    CHECK(host.application->QueryInterface(Id(0x63001), early.putVoid()) == E_NOINTERFACE);
    CHECK(host.outlook.Complaints().size() == 1);
}
