// Clicks on the stand-in's buttons and the events they bring.
#include <doctest.h>

#include "unit/standins/outlook/client.h"

using namespace client;

namespace {

int InstanceOf(const Object& control) { return Get(control, "InstanceId").AsNumber(); }

// The InstanceId of the control that a Click event brings.
int Clicked(const DISPPARAMS& parameters) {
    IDispatch* control = parameters.rgvarg[1].pdispVal;
    control->AddRef();
    return InstanceOf(Object(control));
}

}  // namespace

TEST_CASE("a click calls the sinks of every control with the same Id and Tag, with the clicked control as argument") {
    Host host;
    host.outlook.OpenExplorer();
    const Object first = host.Button("same", 1), second = host.Button("same", 2), other = host.Button("other", 1);
    std::vector<int> clicked;
    const auto note = [&](DISPID, DISPPARAMS& parameters) { clicked.push_back(Clicked(parameters)); };
    Sink onFirst(first, buttonEvents, note), onSecond(second, buttonEvents, note), onOther(other, buttonEvents, note);
    const standin::ClickResult result = host.outlook.Click(InstanceOf(second));
    CHECK(result.reached);
    CHECK(result.sinks == 2);
    CHECK(clicked == std::vector<int>{InstanceOf(second), InstanceOf(second)});
    CHECK(onOther.events.empty());
}

TEST_CASE("a Click event is a method call with the control second and Cancel first in the reversed array") {
    Host host;
    const Object button = host.Button("mark");
    std::vector<VARTYPE> types;
    Sink sink(button, buttonEvents, [&](DISPID, DISPPARAMS& parameters) {
        for (UINT i = 0; i < parameters.cArgs; ++i) types.push_back(parameters.rgvarg[i].vt);
        *parameters.rgvarg[0].pboolVal = VARIANT_TRUE;
    });
    const standin::ClickResult result = host.outlook.Click(InstanceOf(button));
    CHECK(sink.events == std::vector<DISPID>{1});
    CHECK(sink.lastFlags == DISPATCH_METHOD);
    CHECK(types == std::vector<VARTYPE>{VT_BOOL | VT_BYREF, VT_DISPATCH});
    CHECK(result.cancelled);
}

TEST_CASE("the action of a built-in button runs unless a sink cancels it") {
    Host host;
    const Object print = Get(host.Controls("Standard"), "Item", {2}).AsObject();
    CHECK(host.outlook.Click(InstanceOf(print)).defaultRuns);
    Sink sink(print, buttonEvents,
              [](DISPID, DISPPARAMS& parameters) { *parameters.rgvarg[0].pboolVal = VARIANT_TRUE; });
    const standin::ClickResult result = host.outlook.Click(InstanceOf(print));
    CHECK(result.sinks == 1);
    CHECK_FALSE(result.defaultRuns);
}

TEST_CASE("a disabled, hidden or deleted control cannot be clicked, nor one in a hidden popup") {
    Host host;
    const Object button = host.Button("mark");
    Sink sink(button, buttonEvents);
    const int instance = InstanceOf(button);
    Put(button, "Enabled", false);
    CHECK_FALSE(host.outlook.Click(instance).reached);
    Put(button, "Enabled", true);
    Put(button, "Visible", false);
    CHECK_FALSE(host.outlook.Click(instance).reached);
    const Variant none = Variant::Omitted();
    const Object popup = Call(host.Controls("Menu Bar"), "Add", {10, none, none, none, true}).AsObject();
    const Object entry = Call(Get(popup, "Controls").AsObject(), "Add").AsObject();
    CHECK(host.outlook.Click(InstanceOf(entry)).reached);
    Put(popup, "Visible", false);
    CHECK_FALSE(host.outlook.Click(InstanceOf(entry)).reached);
    Call(button, "Delete");
    CHECK_FALSE(host.outlook.Click(instance).reached);
    CHECK(sink.events.empty());
}

TEST_CASE("events stop when the advised control object is released, sink or not") {
    Host host;
    Object button = host.Button("mark");
    const int instance = InstanceOf(button);
    Sink sink(button, buttonEvents);
    sink.Leave();
    CHECK(host.outlook.Click(instance).sinks == 1);
    button = {};
    CHECK(host.outlook.Click(instance).sinks == 0);
    CHECK(sink.references == 1);
    CHECK(host.outlook.Advises() == 0);
}

TEST_CASE("a deleted control is not told of the click on another with its tag") {
    Host host;
    const Object deleted = host.Button("same"), left = host.Button("same");
    Sink onDeleted(deleted, buttonEvents), onLeft(left, buttonEvents);
    Call(deleted, "Delete");
    CHECK(host.outlook.Click(InstanceOf(left)).sinks == 1);
    CHECK(onDeleted.events.empty());
}

TEST_CASE("the connection point keeps the control it belongs to") {
    Host host;
    Object button = host.Button("mark");
    const int instance = InstanceOf(button);
    Sink sink(button, buttonEvents);
    button = {};
    CHECK(host.outlook.Click(instance).sinks == 1);
    CHECK(sink.Cut() == S_OK);
    CHECK(host.outlook.Click(instance).sinks == 0);
    CHECK(host.outlook.References() == 1);  // the Application of this test
}

TEST_CASE("a sink that unadvises and deletes its control inside its own click is not called again") {
    Host host;
    const Object button = host.Button("mark");
    Sink* self = nullptr;
    Sink sink(button, buttonEvents, [&](DISPID, DISPPARAMS&) {
        self->Cut();
        Call(button, "Delete");
    });
    self = &sink;
    CHECK(host.outlook.Click(InstanceOf(button)).sinks == 1);
    CHECK(host.outlook.Advises() == 0);
    CHECK(Get(button, "Caption").Failed());
}

TEST_CASE("ActionControl is the clicked control during the click only") {
    Host host;
    const Object button = host.Button("mark");
    const Object bars = Get(host.Explorer(), "CommandBars").AsObject();
    int during = 0;
    Sink sink(button, buttonEvents,
              [&](DISPID, DISPPARAMS&) { during = InstanceOf(Get(bars, "ActionControl").AsObject()); });
    host.outlook.Click(InstanceOf(button));
    CHECK(during == InstanceOf(button));
    CHECK_FALSE(Get(bars, "ActionControl").AsObject());
}

TEST_CASE("Execute clicks the control") {
    const Host host;
    const Object button = host.Button("mark");
    Sink sink(button, buttonEvents);
    CHECK(Call(button, "Execute").code == S_OK);
    CHECK(sink.events.size() == 1);
}

TEST_CASE("the documented OnAction loads the add-in that it names, the form with brackets outside does not") {
    AddIn addIn;
    Host host;
    host.outlook.UseAddIn("On.Demand", &addIn, 8);
    const standin::Window window = host.outlook.Windows().front();
    host.outlook.Click(host.outlook.AddCustomButton(window, "Standard", "Outside", "1", "<!On.Demand>"));
    CHECK(addIn.told.empty());
    host.outlook.Click(host.outlook.AddCustomButton(window, "Standard", "Documented", "2", "!<On.Demand>"));
    CHECK(addIn.told == std::vector<std::string>{"OnConnection 0", "OnAddInsUpdate"});
    CHECK(host.outlook.AddIns().front().loadBehavior == 9);
}
