// How the stand-in finds, connects and leaves add-ins.
#include <doctest.h>

#include "testing/PrivateRegistry.h"
#include "unit/standins/outlook/client.h"

using namespace client;

namespace {

using Told = std::vector<std::string>;

// A class factory on the stack.
class Factory : public IClassFactory {
  public:
    explicit Factory(AddIn& product) : product_(product) {}
    STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
        *out = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** out) override {
        ++made;
        return product_.QueryInterface(iid, out);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    int made = 0;

  private:
    AddIn& product_;
};

// An add-in's registration and a class of it, for the life of one test.
class Registered {
  public:
    Registered(const std::string& progId, AddIn& addIn, DWORD loadBehavior)
        : addInKey_(addIns + progId), classKey_("Software\\Classes\\" + progId), factory_(addIn) {
        Write(addInKey_, "FriendlyName", "A friend");
        Write(addInKey_, "Description", "It does things");
        HKEY key = nullptr;
        RegCreateKeyA(HKEY_CURRENT_USER, addInKey_.c_str(), &key);
        RegSetValueExA(key, "LoadBehavior", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&loadBehavior),
                       sizeof loadBehavior);
        RegCloseKey(key);
        Write(classKey_ + "\\CLSID", "", "{6B6E3F6A-0C52-4C1D-9B59-2D3B3C1F7A11}");
        CoInitialize(nullptr);
        const CLSID classId = {0x6B6E3F6A, 0x0C52, 0x4C1D, {0x9B, 0x59, 0x2D, 0x3B, 0x3C, 0x1F, 0x7A, 0x11}};
        CoRegisterClassObject(classId, &factory_, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
    }
    ~Registered() {
        CoRevokeClassObject(cookie_);
        CoUninitialize();
    }
    Registered(const Registered&) = delete;
    Registered& operator=(const Registered&) = delete;
    [[nodiscard]] DWORD LoadBehavior() const {
        DWORD value = 99, size = sizeof value;
        HKEY key = nullptr;
        RegOpenKeyA(HKEY_CURRENT_USER, addInKey_.c_str(), &key);
        RegQueryValueExA(key, "LoadBehavior", nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &size);
        RegCloseKey(key);
        return value;
    }

  private:
    static constexpr char addIns[] = "Software\\Microsoft\\Office\\Outlook\\Addins\\";
    static void Write(const std::string& path, const char* name, const std::string& text) {
        HKEY key = nullptr;
        RegCreateKeyA(HKEY_CURRENT_USER, path.c_str(), &key);
        RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>(text.size() + 1));
        RegCloseKey(key);
    }
    PrivateRegistry registry_;
    std::string addInKey_, classKey_;
    Factory factory_;
    DWORD cookie_ = 0;
};

}  // namespace

TEST_CASE("at start an add-in is connected, told of the list, and told that the start is complete") {
    AddIn addIn;
    standin::Outlook outlook;
    outlook.IgnoreRegistry();
    outlook.UseAddIn("Some.AddIn", &addIn);
    outlook.Start();
    CHECK(addIn.told == Told{"OnConnection 1", "OnAddInsUpdate", "OnStartupComplete"});
    CHECK(addIn.custom == std::vector<long>{1, -1, -1});
    CHECK(outlook.AddIns().front().connected);
}

TEST_CASE("every add-in is connected before any is told that the start is complete") {
    Told all;
    AddIn first, second;
    first.onAny = [&](const std::string& what) { all.push_back("first " + what); };
    second.onAny = [&](const std::string& what) { all.push_back("second " + what); };
    standin::Outlook outlook;
    outlook.IgnoreRegistry();
    outlook.UseAddIn("First", &first);
    outlook.UseAddIn("Second", &second);
    outlook.Start();
    CHECK(all == Told{"first OnConnection 1", "second OnConnection 1", "first OnAddInsUpdate", "second OnAddInsUpdate",
                      "first OnStartupComplete", "second OnStartupComplete"});
}

TEST_CASE("started by automation the first custom value is 3, and the arrays can be missing") {
    using standin::CustomArray;
    for (const auto shape : {CustomArray::AsDocumented, CustomArray::PointerToNull, CustomArray::NullPointer}) {
        AddIn addIn;
        standin::Outlook outlook({.startedBy = standin::StartedBy::Automation, .customArray = shape});
        outlook.IgnoreRegistry();
        outlook.UseAddIn("Some.AddIn", &addIn);
        outlook.Start();
        CHECK(addIn.custom.front() == (shape == CustomArray::AsDocumented ? 3 : -1));
        CHECK(addIn.told.size() == 3);
    }
}

TEST_CASE("the window events of the start come after the add-ins are told") {
    AddIn addIn;
    Told order;
    std::unique_ptr<Sink> onApplication, onExplorer;
    addIn.onConnection = [&](IDispatch* app, IDispatch*) {
        app->AddRef();
        const Object application(app);
        onApplication = std::make_unique<Sink>(application, applicationEvents11,
                                               [&](DISPID id, DISPPARAMS&) { order.push_back(std::to_string(id)); });
        const Object explorer = Call(Get(application, "Explorers").AsObject(), "Item", {1}).AsObject();
        onExplorer = std::make_unique<Sink>(
            explorer, explorerEvents, [&](DISPID id, DISPPARAMS&) { order.push_back("window " + std::to_string(id)); });
        return S_OK;
    };
    addIn.onAny = [&](const std::string& what) { order.push_back(what); };
    standin::Outlook outlook;
    outlook.IgnoreRegistry();
    outlook.UseAddIn("Some.AddIn", &addIn);
    outlook.Start();
    CHECK(order == Told{"OnConnection 1", "OnAddInsUpdate", "OnStartupComplete", std::to_string(0xF006),
                        std::to_string(0xFA90), "window " + std::to_string(0xF001)});
    onApplication.reset();
    onExplorer.reset();
}

TEST_CASE("an add-in that refuses is released and hears no more") {
    AddIn addIn;
    addIn.onConnection = [](IDispatch*, IDispatch*) { return E_FAIL; };
    standin::Outlook outlook;
    outlook.IgnoreRegistry();
    outlook.UseAddIn("Some.AddIn", &addIn);
    outlook.Start();
    CHECK(addIn.told == Told{"OnConnection 1"});
    CHECK(addIn.references == 2);  // the test's, and UseAddIn's
    CHECK(outlook.AddIns().front().loadBehavior == 2);
    CHECK_FALSE(outlook.AddIns().front().connected);
}

TEST_CASE("an add-in is made by its class factory") {
    AddIn addIn;
    Factory factory(addIn);
    standin::Outlook outlook;
    outlook.IgnoreRegistry();
    outlook.UseAddIn("Some.AddIn", &factory);
    outlook.Start();
    CHECK(factory.made == 1);
    CHECK(addIn.told.size() == 3);
}

TEST_CASE("a registered add-in is created through COM and its load behaviour kept in the registry") {
    AddIn addIn;
    const Registered registered("StandIn.TestAddIn", addIn, 3);
    standin::Outlook outlook;
    outlook.Start();
    CHECK(addIn.told.size() == 3);
    REQUIRE(outlook.AddIns().size() == 1);
    CHECK(outlook.AddIns().front().friendlyName == "A friend");
    CHECK(outlook.AddIns().front().description == "It does things");
    CHECK(outlook.UnloadAddIn("StandIn.TestAddIn"));
    CHECK(registered.LoadBehavior() == 2);
    CHECK(outlook.LoadAddIn("standin.testaddin"));
    CHECK(registered.LoadBehavior() == 3);
}

TEST_CASE("an add-in with another load behaviour is not loaded at start, one to be loaded once is") {
    for (const DWORD behaviour : {0UL, 2UL, 8UL, 9UL, 16UL}) {
        CAPTURE(behaviour);
        AddIn addIn;
        const Registered registered("StandIn.TestAddIn", addIn, behaviour);
        standin::Outlook outlook;
        outlook.Start();
        CHECK(addIn.told.empty() == (behaviour != 16));
        CHECK(registered.LoadBehavior() == (behaviour == 16 ? 9 : behaviour));
    }
}

TEST_CASE("a registered add-in that cannot be created is switched off") {
    const PrivateRegistry registry;
    HKEY key = nullptr;
    RegCreateKeyA(HKEY_CURRENT_USER, "Software\\Microsoft\\Office\\Outlook\\Addins\\No.Such.Class", &key);
    DWORD value = 3, size = sizeof value;
    RegSetValueExA(key, "LoadBehavior", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
    standin::Outlook outlook;
    outlook.Start();
    RegQueryValueExA(key, "LoadBehavior", nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &size);
    RegCloseKey(key);
    CHECK(value == 2);
    CHECK(outlook.Complaints().size() == 1);
}

TEST_CASE("an add-in of the machine is loaded, unless the user's entry of the same name says otherwise") {
    const PrivateRegistry registry;
    const std::string path = "Software\\Microsoft\\Office\\Outlook\\Addins\\No.Such.Class";
    const auto write = [&](HKEY root, DWORD value) {
        HKEY key = nullptr;
        RegCreateKeyA(root, path.c_str(), &key);
        RegSetValueExA(key, "LoadBehavior", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
        RegCloseKey(key);
    };
    write(HKEY_LOCAL_MACHINE, 3);
    {
        standin::Outlook outlook;
        outlook.Start();
        CHECK(outlook.Complaints().size() == 1);  // tried, and not there
    }
    write(HKEY_CURRENT_USER, 0);
    standin::Outlook outlook;
    outlook.Start();
    CHECK(outlook.Complaints().empty());
}

TEST_CASE("the user unticks and ticks an add-in") {
    AddIn addIn, other;
    Host host;
    host.outlook.UseAddIn("Some.AddIn", &addIn, 2);
    host.outlook.UseAddIn("Other.AddIn", &other, 2);
    CHECK(host.outlook.LoadAddIn("Other.AddIn"));
    CHECK(host.outlook.LoadAddIn("Some.AddIn"));
    CHECK_FALSE(host.outlook.LoadAddIn("Some.AddIn"));
    CHECK(addIn.told == Told{"OnConnection 0", "OnAddInsUpdate"});
    CHECK(host.outlook.UnloadAddIn("Some.AddIn"));
    CHECK_FALSE(host.outlook.UnloadAddIn("Some.AddIn"));
    CHECK(addIn.told == Told{"OnConnection 0", "OnAddInsUpdate", "OnDisconnection 1"});
    CHECK(other.told == Told{"OnConnection 0", "OnAddInsUpdate", "OnAddInsUpdate", "OnAddInsUpdate"});
    CHECK(addIn.references == 2);
}

TEST_CASE("COMAddIns finds an add-in by its ProgId and gives the object that it published") {
    AddIn addIn;
    Host host;
    addIn.onConnection = [](IDispatch* application, IDispatch* self) {
        self->AddRef();
        const Object me(self);
        CHECK(Get(me, "ProgId").AsText() == "Some.AddIn");
        return Put(me, "Object", Variant(application)).code;
    };
    host.outlook.UseAddIn("Some.AddIn", &addIn, 2);
    const Object addIns = Get(host.application, "COMAddIns").AsObject();
    CHECK(Get(addIns, "Count").AsNumber() == 1);
    const Object entry = Call(addIns, "Item", {"some.addin"}).AsObject();
    REQUIRE(entry);
    CHECK(Get(entry, "Connect").AsNumber() == VARIANT_FALSE);
    CHECK(Put(entry, "Connect", true).code == S_OK);
    CHECK(Get(Get(entry, "Object").AsObject(), "Name").AsText() == "Outlook");
    CHECK(Put(entry, "Connect", false).code == S_OK);
    CHECK(addIn.told.back() == "OnDisconnection 1");
    CHECK_FALSE(Get(entry, "Object").AsObject());
    CHECK(Call(addIns, "Item", {"No.AddIn"}).code == E_INVALIDARG);
    CHECK(Call(addIns, "Item", {2}).code == DISP_E_BADINDEX);
}
