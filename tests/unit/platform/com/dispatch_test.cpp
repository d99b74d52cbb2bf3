// Late-bound calls: conversions, failures, the pending error, references.
#include <doctest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/Err.h"
#include "platform/SystemError.h"
#include "platform/com/Com.h"
#include "platform/com/Dispatch.h"
#include "platform/com/Sink.h"

using namespace platform;

namespace {

// An object of a host that returns what a test told it to and notes how it was asked.
class FakeObject final : public IDispatch, public IConnectionPointContainer, public IConnectionPoint {
  public:
    struct Asked {
        std::string member;
        WORD kind = 0;
        std::vector<VARTYPE> types;  // in the order in which they arrived
        std::vector<std::string> texts;
        UINT named = 0;
        DISPID newValue = 0;
        DISPID id = DISPID_UNKNOWN;
    };
    HRESULT answer = S_OK;
    std::function<void(VARIANT&)> result = [](VARIANT&) {};
    std::function<void(EXCEPINFO&)> explain = [](EXCEPINFO&) {};
    bool knowsNames = true;
    std::vector<DISPID> unknownIds = {};
    bool takesSinks = true;
    std::vector<Asked> asked;
    ULONG references = 1;
    ComPtr<IUnknown> sink;
    const IID events = IID_IPersistFile;  // any id serves

    [[nodiscard]] Dispatch AsDispatch() { return Dispatch::Copy(this); }

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        *object = nullptr;
        if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch)) *object = static_cast<IDispatch*>(this);
        if (IsEqualIID(id, IID_IConnectionPointContainer)) *object = static_cast<IConnectionPointContainer*>(this);
        if (IsEqualIID(id, IID_IConnectionPoint)) *object = static_cast<IConnectionPoint*>(this);
        if (*object) AddRef();
        return *object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* id) override {
        asked.push_back({.member = Narrow(*names), .types = {}, .texts = {}});
        *id = knowsNames ? 77 : DISPID_UNKNOWN;
        return knowsNames ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* given, VARIANT* into, EXCEPINFO* thrown,
                        UINT*) override {
        if (asked.empty() || asked.back().kind != 0) asked.push_back({.member = {}, .types = {}, .texts = {}});
        Asked& call = asked.back();
        call.kind = kind;
        call.id = id;
        call.named = given->cNamedArgs;
        if (given->cNamedArgs) call.newValue = given->rgdispidNamedArgs[0];
        for (UINT i = 0; i < given->cArgs; ++i) {
            call.types.push_back(given->rgvarg[i].vt);
            call.texts.push_back(given->rgvarg[i].vt == VT_BSTR ? TextOf(given->rgvarg[i].bstrVal) : std::string());
        }
        if (std::find(unknownIds.begin(), unknownIds.end(), id) != unknownIds.end()) return DISP_E_MEMBERNOTFOUND;
        if (SUCCEEDED(answer) && into) result(*into);
        if (FAILED(answer) && thrown) explain(*thrown);
        return answer;
    }
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        *point = nullptr;
        if (!IsEqualIID(id, events)) return CONNECT_E_NOCONNECTION;
        AddRef();
        *point = this;
        return S_OK;
    }
    STDMETHODIMP GetConnectionInterface(IID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer**) override { return E_NOTIMPL; }
    STDMETHODIMP Advise(IUnknown* given, DWORD* cookie) override {
        if (!takesSinks) return CONNECT_E_ADVISELIMIT;
        sink = ComPtr<IUnknown>::Copy(given).As<IUnknown>(events);
        *cookie = 5;
        return S_OK;
    }
    STDMETHODIMP Unadvise(DWORD cookie) override {
        unadvised.push_back(cookie);
        sink.Reset();
        return answer;
    }
    STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

    std::vector<DWORD> unadvised;

    HRESULT Fire(const ComPtr<IUnknown>& to, DISPID event, std::vector<VARIANTARG> arguments = {}) {
        const auto target = to.As<IDispatch>(IID_IDispatch);
        DISPPARAMS given{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
        return target->Invoke(event, IID_NULL, 0, DISPATCH_METHOD, &given, nullptr, nullptr, nullptr);
    }
};

InterfaceId FakeEvents() {
    InterfaceId id{};
    static_assert(sizeof id == sizeof(IID));
    memcpy(&id, &IID_IPersistFile, sizeof id);
    return id;
}

void Text(VARIANT& into, const char* text) {
    into.vt = VT_BSTR;
    into.bstrVal = Bstr(text).Detach();
}

struct Fixture {
    Fixture() { Err().Clear(); }
    ~Fixture() {
        CHECK(object.references == 1);  // no test leaves a reference behind
        Err().Clear();
    }
    FakeObject object;
};

HRESULT STDMETHODCALLTYPE FillInLate(EXCEPINFO* late) {
    late->scode = E_ACCESSDENIED;
    late->bstrDescription = Bstr("The item was moved.").Detach();
    return S_OK;
}

class Listener {
  public:
    void OnFirst(const EventArguments& arguments) {
        ++first;
        count = arguments.Count();
        if (during) during();
    }
    void OnSecond(const EventArguments&) { throw 5; }
    int first = 0;
    std::size_t count = 0;
    std::function<void()> during;
};

constexpr EventHandler<Listener> handlers[] = {{1, &Listener::OnFirst}, {2, &Listener::OnSecond}};

}  // namespace

TEST_CASE("a member whose id is known is called without its name being asked for") {
    Fixture fixture;
    fixture.object.result = [](VARIANT& into) { Text(into, "11.0"); };
    CHECK(fixture.object.AsDispatch().Text(Member{"Version", 0x116}) == "11.0");
    REQUIRE(fixture.object.asked.size() == 1);
    CHECK(fixture.object.asked[0].id == 0x116);
    CHECK(fixture.object.asked[0].member.empty());
    fixture.object.AsDispatch().Put(Member{"Caption", 0x60040003}, "new");
    CHECK(fixture.object.asked.back().newValue == DISPID_PROPERTYPUT);
    CHECK(Err().Number() == 0);
}

TEST_CASE("an object that has a member by another id than the known one is asked by name") {
    Fixture fixture;
    fixture.object.unknownIds = {0x116};
    fixture.object.result = [](VARIANT& into) { Text(into, "11.0"); };
    CHECK(fixture.object.AsDispatch().Text(Member{"Version", 0x116}) == "11.0");
    REQUIRE(fixture.object.asked.size() == 2);
    CHECK(fixture.object.asked[1].member == "Version");
    CHECK(fixture.object.asked[1].id == 77);
    CHECK(Err().Number() == 0);

    fixture.object.knowsNames = false;
    CHECK(fixture.object.AsDispatch().Text(Member{"Version", 0x116}).empty());
    CHECK(Err().Number() == DISP_E_UNKNOWNNAME);
}

TEST_CASE("a refused call of a known id is not made again") {
    Fixture fixture;
    fixture.object.answer = E_ACCESSDENIED;
    CHECK_FALSE(fixture.object.AsDispatch().Call(Member{"Delete", 0x60040007}));
    CHECK(fixture.object.asked.size() == 1);
    CHECK(Err().Number() == E_ACCESSDENIED);
    CHECK(Err().Description().starts_with("Delete: "));
}

TEST_CASE("a call on an empty object does nothing and sets nothing") {
    Err().Set(9, "earlier");
    const Dispatch nothing;
    CHECK_FALSE(nothing.Object("Parent"));
    CHECK(nothing.Text("Name").empty());
    CHECK(nothing.Long("Count") == 0);
    CHECK_FALSE(nothing.Flag("Visible"));
    CHECK_FALSE(nothing.Call("Close", 0));
    CHECK_FALSE(nothing.Put("Visible", true));
    CHECK(Err().Number() == 9);
    Err().Clear();
}

TEST_CASE_FIXTURE(Fixture,
                  "a failing call yields the neutral value and leaves its status pending under the member's name") {
    object.answer = RPC_E_DISCONNECTED;
    CHECK(object.AsDispatch().Long("Count") == 0);
    CHECK(Err().Number() == static_cast<std::int32_t>(RPC_E_DISCONNECTED));
    CHECK(Err().Description().starts_with("Count: "));
    CHECK(object.AsDispatch().Text("Name").empty());
    CHECK_FALSE(object.AsDispatch().Object("Parent"));
    CHECK_FALSE(object.AsDispatch().Flag("Visible"));
    CHECK_FALSE(object.AsDispatch().Call("Close"));
    CHECK_FALSE(object.AsDispatch().Put("Visible", true));
}

TEST_CASE_FIXTURE(Fixture, "a name that the host does not know is a failure of its own and calls nothing") {
    object.knowsNames = false;
    CHECK_FALSE(object.AsDispatch().Put("Picture", 1));
    CHECK(Err().Number() == static_cast<std::int32_t>(DISP_E_UNKNOWNNAME));
    CHECK(object.asked.at(0).kind == 0);
}

TEST_CASE_FIXTURE(Fixture, "the failure that made an object empty stays pending through the calls on it") {
    object.answer = E_FAIL;
    const Dispatch bars = object.AsDispatch().Object("CommandBars");
    CHECK(bars.Object("Item", "Standard").Long("Count") == 0);
    CHECK(Err().Description().starts_with("CommandBars: "));
}

TEST_CASE_FIXTURE(Fixture, "a call that succeeds leaves the pending error as it was") {
    Err().Set(9, "earlier");
    object.result = [](VARIANT& into) {
        into.vt = VT_I4;
        into.lVal = 3;
    };
    CHECK(object.AsDispatch().Long("Count") == 3);
    CHECK(Err().Number() == 9);
}

TEST_CASE_FIXTURE(Fixture, "the host's own error information gives number and description, filled in late or not") {
    object.answer = DISP_E_EXCEPTION;
    object.explain = [](EXCEPINFO& info) {
        info.pvReserved = nullptr;
        info.bstrSource = Bstr("Outlook").Detach();
        info.bstrHelpFile = Bstr("outlook.chm").Detach();
        info.pfnDeferredFillIn = &FillInLate;
    };
    CHECK_FALSE(object.AsDispatch().Call("Close", 0));
    CHECK(Err().Number() == static_cast<std::int32_t>(E_ACCESSDENIED));
    CHECK(Err().Description() == "Close: The item was moved.");
}

TEST_CASE_FIXTURE(Fixture, "error information with a code of its own keeps that code") {
    object.answer = DISP_E_EXCEPTION;
    object.explain = [](EXCEPINFO& info) { info.wCode = 438; };
    CHECK_FALSE(object.AsDispatch().Call("Close"));
    CHECK(Err().Number() == 438);
}

TEST_CASE_FIXTURE(Fixture, "error information without any code is an exception, and 1 is a code") {
    object.answer = DISP_E_EXCEPTION;
    CHECK_FALSE(object.AsDispatch().Call("Close"));
    CHECK(Err().Number() == static_cast<std::int32_t>(DISP_E_EXCEPTION));
    object.explain = [](EXCEPINFO& info) { info.wCode = 1; };
    CHECK_FALSE(object.AsDispatch().Call("Close"));
    CHECK(Err().Number() == 1);
}

TEST_CASE_FIXTURE(Fixture, "an object where a text was asked for reads as the value that stands for it") {
    FakeObject named;
    named.result = [](VARIANT& into) { Text(into, "Standard"); };
    object.result = [&](VARIANT& into) {
        into.vt = VT_DISPATCH;
        into.pdispVal = &named;
        named.AddRef();
    };
    CHECK(object.AsDispatch().Text("Bar") == "Standard");
    REQUIRE(named.asked.size() == 1);
    CHECK(named.asked[0].id == DISPID_VALUE);
    CHECK(named.references == 1);
}

TEST_CASE_FIXTURE(Fixture, "memory that ran out and Visual Basic's own numbers are pending under their short numbers") {
    object.answer = E_OUTOFMEMORY;
    CHECK_FALSE(object.AsDispatch().Call("Close"));
    CHECK(Err().Number() == OutOfMemory);
    object.answer = static_cast<HRESULT>(0x800A01A8);
    CHECK_FALSE(object.AsDispatch().Call("Close"));
    CHECK(Err().Number() == ObjectRequired);
}

TEST_CASE_FIXTURE(Fixture, "nothing where something was asked for is the neutral value and no failure") {
    CHECK(object.AsDispatch().Long("Count") == 0);
    CHECK(object.AsDispatch().Text("Name").empty());
    CHECK_FALSE(object.AsDispatch().Flag("Visible"));
    object.result = [](VARIANT& into) {
        into.vt = VT_DISPATCH;
        into.pdispVal = nullptr;
    };
    CHECK_FALSE(object.AsDispatch().Object("ActiveExplorer"));
    CHECK_FALSE(Err());
}

TEST_CASE_FIXTURE(Fixture, "an answer that is no object yields the empty object and says so") {
    object.result = [](VARIANT& into) { Text(into, "Standard"); };
    CHECK_FALSE(object.AsDispatch().Object("Item", 1));
    CHECK(Err().Number() == ObjectRequired);
}

TEST_CASE_FIXTURE(Fixture, "an answer is converted where Windows can convert it") {
    object.result = [](VARIANT& into) { Text(into, "17"); };
    CHECK(object.AsDispatch().Long("Count") == 17);
    object.result = [](VARIANT& into) {
        into.vt = VT_INT;
        into.intVal = 9;
    };
    CHECK(object.AsDispatch().Text("Id") == "9");
    CHECK(object.AsDispatch().Flag("BuiltIn"));
    CHECK_FALSE(Err());
    object.result = [](VARIANT& into) { Text(into, "many"); };
    CHECK(object.AsDispatch().Long("Count") == 0);
    CHECK(Err().Number() == TypeMismatch);
}

TEST_CASE_FIXTURE(Fixture, "arguments arrive in reverse order, what is left out as not given") {
    object.result = [this](VARIANT& into) {
        into.vt = VT_DISPATCH;
        into.pdispVal = &object;
        object.AddRef();
    };
    CHECK(object.AsDispatch().Object("Add", 1, Missing, "Tag", true));
    const FakeObject::Asked& call = object.asked.at(0);
    CHECK(call.member == "Add");
    CHECK(call.kind == (DISPATCH_METHOD | DISPATCH_PROPERTYGET));
    CHECK(call.types == std::vector<VARTYPE>{VT_BOOL, VT_BSTR, VT_ERROR, VT_I4});
    CHECK(call.texts.at(1) == "Tag");
}

TEST_CASE_FIXTURE(Fixture, "a property's new value bears the name that the host expects") {
    CHECK(object.AsDispatch().Put("Caption", "C&orvella"));
    CHECK(object.asked.at(0).kind == DISPATCH_PROPERTYPUT);
    CHECK(object.asked.at(0).named == 1);
    CHECK(object.asked.at(0).newValue == DISPID_PROPERTYPUT);
    CHECK(object.asked.at(0).texts.at(0) == "C&orvella");
}

TEST_CASE_FIXTURE(Fixture, "characters of the user's code page survive the way there and back") {
    object.result = [](VARIANT& into) { Text(into, "M\xFCller \x80"); };
    CHECK(object.AsDispatch().Text("FullName") == "M\xFCller \x80");
}

TEST_CASE_FIXTURE(Fixture, "copies share the object and every one gives its reference back") {
    Dispatch first = object.AsDispatch();
    const Dispatch second = first;
    Dispatch third = std::move(first);
    CHECK_FALSE(first);  // NOLINT(bugprone-use-after-move): an object moved from is empty
    CHECK(object.references == 3);
    third = second;
    const Dispatch& itself = third;
    third = itself;
    CHECK(object.references == 3);
}

TEST_CASE_FIXTURE(Fixture, "identity tells the same from different objects, and nothing of none") {
    FakeObject other;
    CHECK(Compare(object.AsDispatch(), object.AsDispatch()) == Identity::Same);
    CHECK(Compare(object.AsDispatch(), other.AsDispatch()) == Identity::Different);
    CHECK(Compare(object.AsDispatch(), {}) == Identity::Unknown);
}

TEST_CASE("a class that is not registered gives an empty object and a pending error") {
    Err().Clear();
    CHECK_FALSE(CreateObject("Nobody.Has.This"));
    CHECK(Err().Number() != 0);
    CHECK(Err().Description().starts_with("Nobody.Has.This: "));
    Err().Clear();
}

TEST_CASE_FIXTURE(Fixture, "an event reaches the member that its table names and the host gets S_OK") {
    const auto listener = std::make_shared<Listener>();
    const Connection connection = ConnectEvents(object.AsDispatch(), FakeEvents(), listener, handlers);
    REQUIRE(connection);
    VARIANTARG number{};
    number.vt = VT_I4;
    CHECK(object.Fire(object.sink, 1, {number, number}) == S_OK);
    CHECK(object.Fire(object.sink, 99) == S_OK);
    CHECK(listener->first == 1);
    CHECK(listener->count == 2);
}

TEST_CASE_FIXTURE(Fixture, "what an event's procedure throws does not reach the host") {
    const auto listener = std::make_shared<Listener>();
    const Connection connection = ConnectEvents(object.AsDispatch(), FakeEvents(), listener, handlers);
    CHECK(object.Fire(object.sink, 2) == S_OK);
    CHECK(Err().Number() == InvalidProcedureCall);
}

TEST_CASE_FIXTURE(Fixture, "an argument that is no object reads as none") {
    VARIANTARG arguments[3]{};
    arguments[0].vt = VT_I4;
    arguments[1].vt = VT_DISPATCH;
    arguments[1].pdispVal = &object;
    arguments[2].vt = VT_DISPATCH | VT_BYREF;
    IDispatch* byReference = &object;
    arguments[2].ppdispVal = &byReference;
    const DISPPARAMS given{arguments, nullptr, 3, 0};
    const EventArguments read(given);
    CHECK(read.Object(0));
    CHECK(read.Object(1));
    CHECK_FALSE(read.Object(2));
    CHECK_FALSE(read.Object(3));
}

TEST_CASE_FIXTURE(Fixture, "a source that takes no sinks leaves the connection empty and the failure pending") {
    const auto listener = std::make_shared<Listener>();
    object.takesSinks = false;
    CHECK_FALSE(ConnectEvents(object.AsDispatch(), FakeEvents(), listener, handlers));
    CHECK(Err().Number() == static_cast<std::int32_t>(CONNECT_E_ADVISELIMIT));
    Err().Clear();
    CHECK_FALSE(ConnectEvents(object.AsDispatch(), OfficeInterface(0x0006304E), listener, handlers));
    CHECK(Err().Number() == static_cast<std::int32_t>(CONNECT_E_NOCONNECTION));
}

TEST_CASE_FIXTURE(Fixture, "an event that arrives after the end falls on nothing") {
    const auto listener = std::make_shared<Listener>();
    Connection connection = ConnectEvents(object.AsDispatch(), FakeEvents(), listener, handlers);
    const ComPtr<IUnknown> late = object.sink;
    connection.End();
    connection.End();
    CHECK_FALSE(connection);
    CHECK(object.unadvised == std::vector<DWORD>{5});
    CHECK(object.Fire(late, 1) == S_OK);
    CHECK(listener->first == 0);
}

TEST_CASE_FIXTURE(Fixture, "a host that refuses to end a connection hears nothing more from the sink") {
    const auto listener = std::make_shared<Listener>();
    Connection connection = ConnectEvents(object.AsDispatch(), FakeEvents(), listener, handlers);
    const ComPtr<IUnknown> late = object.sink;
    object.answer = E_FAIL;
    connection.End();
    object.Fire(late, 1);
    CHECK(listener->first == 0);
    CHECK_FALSE(Err());
}

TEST_CASE_FIXTURE(Fixture, "a listener that is gone gets no events") {
    auto listener = std::make_shared<Listener>();
    const Connection connection = ConnectEvents(object.AsDispatch(), FakeEvents(), listener, handlers);
    listener.reset();
    CHECK(object.Fire(object.sink, 1) == S_OK);
}

TEST_CASE_FIXTURE(Fixture, "a procedure may end its own connection and let go of its own object") {
    auto listener = std::make_shared<Listener>();
    Connection connection = ConnectEvents(object.AsDispatch(), FakeEvents(), listener, handlers);
    int finished = 0;
    listener->during = [&] {
        connection.End();
        listener.reset();
        ++finished;
    };
    const ComPtr<IUnknown> sink = object.sink;
    CHECK(object.Fire(sink, 1) == S_OK);
    CHECK(finished == 1);
}

TEST_CASE_FIXTURE(Fixture, "a connection that is moved ends once") {
    const auto listener = std::make_shared<Listener>();
    {
        Connection first = ConnectEvents(object.AsDispatch(), FakeEvents(), listener, handlers);
        Connection second = std::move(first);
        CHECK(object.unadvised.empty());
        first = std::move(second);
    }
    CHECK(object.unadvised.size() == 1);
}

TEST_CASE("Windows' own text for a status has no line break at its end") {
    CHECK(SystemMessage(ERROR_PATH_NOT_FOUND).find_first_of("\r\n") == std::string::npos);
    CHECK_FALSE(SystemMessage(ERROR_PATH_NOT_FOUND).empty());
    CHECK(SystemMessage(0x12345678).empty());
}

TEST_CASE("recording a status keeps the thread's last error") {
    SetLastError(1234);
    RecordStatus(ERROR_PATH_NOT_FOUND);
    CHECK(GetLastError() == 1234);
    CHECK(Err().Number() == ERROR_PATH_NOT_FOUND);
    RecordStatus(0);
    CHECK(Err().Number() == ERROR_PATH_NOT_FOUND);
    Err().Clear();
}
