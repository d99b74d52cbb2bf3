// The gate through which every call into the stand-in goes: faults, counts, the ledger of references.
#include <doctest.h>

#include "unit/standins/outlook/client.h"

using namespace client;
using standin::Fault;

TEST_CASE("calls of the outside are counted, the host's own are not") {
    Host host;
    host.outlook.ResetCalls();
    host.outlook.OpenInspector(host.outlook.NewItem(standin::ItemClass::Contact));
    CHECK(host.outlook.Calls() == 0);
    Get(host.application, "Name");  // GetIDsOfNames and Invoke
    CHECK(host.outlook.Calls() == 2);
    Com<IConnectionPoint> point;
    FindPoint(host.application, applicationEvents, point);  // QueryInterface and FindConnectionPoint
    CHECK(host.outlook.Calls() == 4);
    Sink sink(host.application, applicationEvents);
    CHECK(host.outlook.Calls() == 7);
    sink.Cut();
    CHECK(host.outlook.Calls() == 8);
}

TEST_CASE("a planned fault hits exactly the call with its number, and no other") {
    for (int k = 1; k <= 6; ++k) {
        Host host;
        host.outlook.ResetCalls();
        host.outlook.FailCall(k, Fault::Fails(RPC_E_DISCONNECTED));
        std::vector<int> failed;
        for (int call = 1; call <= 6; ++call)
            if (Invoke(host.application, 0x3001, DISPATCH_PROPERTYGET).code == RPC_E_DISCONNECTED)
                failed.push_back(call);
        CHECK(failed == std::vector<int>{k});
        CHECK(host.outlook.FaultsHit() == 1);
    }
}

TEST_CASE("a call that is made to fail does not do its work") {
    Host host;
    const Object controls = host.Controls("Standard");
    host.outlook.FailMember("CommandBarControls.Add", Fault::Fails(E_FAIL), 1);
    CHECK(Call(controls, "Add").code == E_FAIL);
    CHECK(Get(controls, "Count").AsNumber() == 12);
    CHECK(Call(controls, "Add").code == S_OK);
    CHECK(Get(controls, "Count").AsNumber() == 13);
}

TEST_CASE("a planned exception fills in its words, at once or when asked") {
    Host host;
    for (const Fault& fault : {Fault::Exception(E_ACCESSDENIED), Fault::DeferredException(E_ACCESSDENIED)}) {
        host.outlook.FailMember("Application.Name", fault, 1);
        const Answer answer = Get(host.application, "Name");
        CHECK(answer.code == DISP_E_EXCEPTION);
        CHECK(answer.scode == E_ACCESSDENIED);
        CHECK(answer.description == "The operation failed.");
        CHECK(answer.value.vt == VT_EMPTY);
    }
}

TEST_CASE("an empty answer is a success without a result") {
    Host host;
    host.outlook.FailMember("Application.ActiveExplorer", Fault::Empty(), 1);
    const Answer answer = Call(host.application, "ActiveExplorer");
    CHECK(answer.code == S_OK);
    CHECK(answer.value.vt == VT_EMPTY);
    host.outlook.FailMember("Application.GetIDsOfNames", Fault::Empty(), 1);
    DISPID id = 5;
    CHECK(LookUp(host.application, "Name", id) == S_OK);
    CHECK(id == DISPID_UNKNOWN);
    host.outlook.FailMember("Application.FindConnectionPoint", Fault::Empty(), 1);
    Com<IConnectionPoint> point;
    CHECK(FindPoint(host.application, applicationEvents, point) == S_OK);
    CHECK_FALSE(point);
}

TEST_CASE("every kind of call can be made to fail") {
    Host host;
    Com<IConnectionPointContainer> container;
    host.outlook.FailMember("Application.QueryInterface", Fault::Fails(E_NOINTERFACE), 1);
    CHECK(host.application->QueryInterface(IID_IConnectionPointContainer, container.putVoid()) == E_NOINTERFACE);
    host.outlook.FailMember("Application.Advise", Fault::Fails(E_OUTOFMEMORY), 1);
    Sink refused(host.application, applicationEvents);
    CHECK(refused.Advised() == E_OUTOFMEMORY);
    CHECK(refused.references == 1);
    host.outlook.FailMember("Application.GetTypeInfo", Fault::Fails(E_FAIL), 1);
    Com<ITypeInfo> info;
    CHECK(host.application->GetTypeInfo(0, 0, info.put()) == E_FAIL);
    host.outlook.FailMember("Enumerator.Next", Fault::Fails(E_FAIL), 1);
    const Answer found = Get(host.Controls("Menu Bar"), "_NewEnum");
    Com<IEnumVARIANT> enumerator;
    found.value.punkVal->QueryInterface(IID_IEnumVARIANT, enumerator.putVoid());
    Variant value;
    CHECK(enumerator->Next(1, &value, nullptr) == E_FAIL);
    CHECK(host.outlook.FaultsHit() == 4);
}

TEST_CASE("Unadvise does its work even when it is told to fail") {
    Host host;
    Sink sink(host.application, applicationEvents);
    CHECK(host.outlook.Advises() == 1);
    host.outlook.FailMember("Application.Unadvise", Fault::Fails(E_FAIL), 1);
    CHECK(sink.Cut() == E_FAIL);
    CHECK(host.outlook.Advises() == 0);
    CHECK(sink.references == 1);
}

TEST_CASE("the ledger names what is held, and reads nothing when all is released") {
    standin::Outlook outlook;
    outlook.IgnoreRegistry();
    outlook.Start();
    CHECK(outlook.References() == 0);
    {
        const Object application(outlook.Application());
        const Object explorer = Call(application, "ActiveExplorer").AsObject();
        const Object again = Call(application, "ActiveExplorer").AsObject();
        const Object bars = Get(explorer, "CommandBars").AsObject();
        const Object standard = Get(bars, "Item", {"Standard"}).AsObject();
        const Object print = Get(Get(standard, "Controls").AsObject(), "Item", {2}).AsObject();
        CHECK(outlook.References() == 6);
        CHECK(outlook.ReferenceList() == std::vector<std::string>{"Application: 1", "Explorer 1: 2",
                                                                  "CommandBars of Explorer 1: 1",
                                                                  "CommandBar \"Standard\" of Explorer 1: 1",
                                                                  "CommandBarButton \"Print...\" of Explorer 1: 1"});
        Sink sink(explorer, explorerEvents);
        CHECK(outlook.AdviseList() == std::vector<std::string>{"Explorer 1 ExplorerEvents"});
        CHECK(outlook.ReferenceList().back() == "Explorer 1 ExplorerEvents: 1");
    }
    CHECK(outlook.References() == 0);
    CHECK(outlook.Advises() == 0);
}

TEST_CASE("an advise that is left behind is in the list until its window is gone for good") {
    Host host;
    Sink sink(host.Explorer(), explorerEvents);
    sink.Leave();
    CHECK(host.outlook.AdviseList() == std::vector<std::string>{"Explorer 1 ExplorerEvents"});
    CHECK(sink.references == 2);
    host.outlook.EndProcess();
    CHECK(host.outlook.Advises() == 0);
    CHECK(sink.references == 1);
}

TEST_CASE("the transcript has a line a call, with what came of it, and the calls inside an event below it") {
    Host host;
    const Object inspectors = Get(host.application, "Inspectors").AsObject();
    Sink sink(inspectors, inspectorsEvents, [](DISPID, DISPPARAMS& parameters) {
        parameters.rgvarg[0].pdispVal->AddRef();
        Get(Object(parameters.rgvarg[0].pdispVal), "CurrentItem");
    });
    const Object controls = host.Controls("Standard");
    host.outlook.Record();
    host.outlook.OpenInspector(host.outlook.NewItem(standin::ItemClass::Contact));
    const Variant none = Variant::Omitted();
    const Object button = Call(controls, "Add", {1, none, none, 3, true}).AsObject();
    Put(button, "Caption", "Hello");
    Call(controls, "Add", {1, none, none, 99});
    Get(Get(host.Explorer(), "CommandBars").AsObject(), "Nonsense");
    CHECK(Join(host.outlook.Transcript()) ==
          Join({"# open ContactItem 1", "! Inspectors: NewInspector(Inspector 2)",
                "  Inspector 2.CurrentItem -> ContactItem 1",
                "Controls of \"Standard\" of Explorer 1.Add(1, , , 3, True) -> CommandBarButton \"\" of Explorer 1",
                "CommandBarButton \"\" of Explorer 1.Caption = \"Hello\"",
                "Controls of \"Standard\" of Explorer 1.Add(1, , , 99) -> fails 0x8002000B",
                "Application.Explorers -> Explorers", "Explorers.Item(1) -> Explorer 1",
                "Explorer 1.CommandBars -> CommandBars of Explorer 1",
                "CommandBars of Explorer 1.GetIDsOfNames(Nonsense) -> fails 0x80020006"}));
}

TEST_CASE("the detailed transcript shows the look-ups too") {
    Host host;
    host.outlook.Record(standin::Detail::Everything);
    Get(host.application, "Name");
    CHECK(Join(host.outlook.Transcript()) ==
          Join({"Application.GetIDsOfNames(Name) -> 0x00003001", "Application.Name -> \"Outlook\""}));
}

TEST_CASE("a sink that returns a failure is complained about") {
    Host host;
    Sink sink(host.Explorer(), explorerEvents);
    sink.answer = E_FAIL;
    host.outlook.SwitchFolder(host.outlook.Windows().front(), standin::FolderKind::OutlookToday);
    CHECK(host.outlook.Complaints() ==
          std::vector<std::string>{
              "sink of Explorer 1: BeforeFolderSwitch(MAPIFolder \"Personal Folders\", Cancel) answers 0x80004005",
              "sink of Explorer 1: FolderSwitch() answers 0x80004005"});
}

TEST_CASE("a handle that is not known any more is the caller's mistake") {
    Host host;
    const standin::Window window = host.outlook.OpenExplorer();
    host.outlook.CloseWindow(window);
    CHECK_THROWS_AS(static_cast<void>(host.outlook.View(window)), std::out_of_range);
    CHECK_THROWS_AS(static_cast<void>(host.outlook.Controls(host.outlook.Windows().front(), "No bar")),
                    std::out_of_range);
    standin::Outlook unstarted;
    CHECK_THROWS_AS(unstarted.OpenExplorer(), std::logic_error);
}
