// The callbacks of the ribbon in cases that no host should bring about, called as a host calls them; and what the host
// is given for every ribbon that there is.
#include <doctest.h>
#include <windows.h>
// oleauto after windows.h
#include <oleauto.h>

#include <string>
#include <utility>
#include <vector>

#include "e2e/RecordedCorvella.h"
#include "e2e/Session.h"
#include "outlook/RibbonHost.h"

using e2e::RecordedCorvella;
using e2e::RibbonIs;
using e2e::Session;
using standin::FolderKind;
using standin::ItemClass;
using standin::Window;

namespace {

constexpr const char* callbacks[] = {"OnAction", "GetEnabled", "GetVisible", "GetSmallImage", "GetLargeImage"};
constexpr const char* explorerTags[] = {
    "Main",       "mEditor",           "mSync",        "mSync0",       "mSync1", "mNewSMS", "mSettings",
    "Buttonsync", "ButtonSendToPhone", "ButtonUpdate", "none of ours", ""};

// An object that a host could give: its three members, or none at all.
class Given final : public IDispatch {
  public:
    Given(std::string tag, IDispatch* context) : tag_(std::move(tag)), context_(context) {}
    bool refusesAll = false;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
        if (refusesAll || id < 1 || id > 3 || !result) return DISP_E_MEMBERNOTFOUND;
        if (id == 2) {
            result->vt = VT_DISPATCH;
            result->pdispVal = context_;
            if (context_) context_->AddRef();
            return S_OK;
        }
        result->vt = VT_BSTR;
        result->bstrVal = SysAllocString(std::wstring(tag_.begin(), tag_.end()).c_str());
        return S_OK;
    }

  private:
    std::string tag_;
    IDispatch* context_;
};

// The add-in's callbacks, which outlive its connection for as long as a test holds them.
class Callbacks {
  public:
    explicit Callbacks(Session& session) : object_(session.host.RibbonCallbacks(e2e::progId)) { REQUIRE(object_); }
    Callbacks(const Callbacks&) = delete;
    Callbacks& operator=(const Callbacks&) = delete;
    ~Callbacks() { object_->Release(); }

    [[nodiscard]] DISPID IdOf(const std::string& name) const {
        std::wstring wide(name.begin(), name.end());
        LPOLESTR names = wide.data();
        DISPID id = DISPID_UNKNOWN;
        const HRESULT status = object_->GetIDsOfNames(IID_NULL, &names, 1, 0x0409, &id);
        CHECK((status == S_OK) == (id != DISPID_UNKNOWN));
        return id;
    }
    // The variant type of what it returned; it must be what shows nothing. A host that has no room for a result is
    // played as well.
    void CheckNeutral(const std::string& name, IDispatch* control) const {
        CAPTURE(name);
        VARIANT argument{};
        argument.vt = VT_DISPATCH;
        argument.pdispVal = control;
        CheckNeutral(name, &argument, 1);
        CheckNeutral(name, nullptr, 0);
    }
    void CheckNeutral(const std::string& name, VARIANT* arguments, UINT count) const {
        DISPPARAMS parameters{arguments, nullptr, count, 0};
        VARIANT result{};
        CHECK(object_->Invoke(IdOf(name), IID_NULL, 0, DISPATCH_METHOD, &parameters, &result, nullptr, nullptr) ==
              S_OK);
        const bool shows = result.vt == VT_BOOL ? result.boolVal != VARIANT_FALSE : result.vt != VT_EMPTY;
        CHECK_FALSE(shows);
        VariantClear(&result);
        CHECK(object_->Invoke(IdOf(name), IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr) ==
              S_OK);
    }
    // Every callback with a control of every tag.
    void CheckAllNeutral(IDispatch* context) const {
        for (const char* name : callbacks) {
            for (const char* tag : explorerTags) {
                CAPTURE(tag);
                Given control(tag, context);
                CheckNeutral(name, &control);
            }
        }
    }
    [[nodiscard]] IDispatch* Get() const { return object_; }

  private:
    IDispatch* object_;
};

// What a method of Application returns, by its number.
class Found {
  public:
    Found(Session& session, DISPID method) {
        IDispatch* application = session.host.Application();
        DISPPARAMS none{};
        application->Invoke(method, IID_NULL, 0, DISPATCH_METHOD, &none, &object_, nullptr, nullptr);
        application->Release();
        REQUIRE(object_.vt == VT_DISPATCH);
        REQUIRE(object_.pdispVal);
    }
    ~Found() { VariantClear(&object_); }
    Found(const Found&) = delete;
    Found& operator=(const Found&) = delete;
    [[nodiscard]] IDispatch* Get() const { return object_.pdispVal; }

  private:
    VARIANT object_{};
};
constexpr DISPID activeExplorer = 0x111, activeInspector = 0x112;

// How many characters of XML the host is given for a ribbon; -1 where it is refused.
int LengthOfXml(IDispatch* addIn, const wchar_t* ribbonId) {
    constexpr IID extensibilityId{0x000C0396, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    standin::RibbonExtensibility* extensibility = nullptr;
    REQUIRE(addIn->QueryInterface(extensibilityId, reinterpret_cast<void**>(&extensibility)) == S_OK);
    const BSTR id = SysAllocString(ribbonId);
    BSTR xml = nullptr;
    const HRESULT status = extensibility->GetCustomUI(id, &xml);
    const int length = FAILED(status) ? -1 : static_cast<int>(SysStringLen(xml));
    SysFreeString(xml);
    SysFreeString(id);
    extensibility->Release();
    return length;
}

// One is selected in the Explorer, a new one is open.
void StartWithContacts(Session& session) {
    session.host.Start();
    session.host.SwitchFolder(session.FirstWindow(), FolderKind::Contacts);
    session.host.Select(session.FirstWindow(), {session.host.AddItem(FolderKind::Contacts)});
    session.OpenNew(ItemClass::Contact);
}

void CheckNothingHappened(RecordedCorvella& corvella) {
    CHECK(corvella.StartsLater().empty());
    for (const char* list : {"ChangedA", "ChangedC", "ChangedT"}) {
        CHECK(e2e::ReadValue(e2e::outlookKey, list).value_or("").empty());
    }
}

// Every id of which is known that a host asks for it.
constexpr const char* ribbonIds[] = {"Microsoft.Outlook.Explorer",
                                     "Microsoft.Outlook.Contact",
                                     "Microsoft.Outlook.Appointment",
                                     "Microsoft.Outlook.Task",
                                     "Microsoft.Outlook.DistributionList",
                                     "Microsoft.Outlook.Journal",
                                     "Microsoft.Outlook.Mail.Read",
                                     "Microsoft.Outlook.Mail.Compose",
                                     "Microsoft.Outlook.MeetingRequest.Read",
                                     "Microsoft.Outlook.MeetingRequest.Send",
                                     "Microsoft.Outlook.Response.Read",
                                     "Microsoft.Outlook.Response.Compose",
                                     "Microsoft.Outlook.Response.CounterPropose",
                                     "Microsoft.Outlook.Post.Read",
                                     "Microsoft.Outlook.Post.Compose",
                                     "Microsoft.Outlook.Report",
                                     "Microsoft.Outlook.Resend",
                                     "Microsoft.Outlook.RSS",
                                     "Microsoft.Outlook.Sharing.Read",
                                     "Microsoft.Outlook.Sharing.Compose",
                                     "Microsoft.OMS.SMS.Compose",
                                     "Microsoft.OMS.SMS.Read",
                                     "Microsoft.OMS.MMS.Compose",
                                     "Microsoft.OMS.MMS.Read",
                                     "Microsoft.Mso.IMLayerUI"};
constexpr int withCommands = 4;

}  // namespace

TEST_CASE("the host is given XML for the four ribbons that have commands of ours, and nothing for any other one") {
    for (const int version : {14, 15, 16}) {
        Session session({.version = version}, RibbonIs::Asked);
        session.host.Start();
        int number = 0;
        for (const char* id : ribbonIds) {
            CAPTURE(id);
            CHECK(session.host.CustomUI(e2e::progId, id).empty() == (number++ >= withCommands));
        }
        for (const char* id :
             {"", "Microsoft", "microsoft.outlook.explorer", "Microsoft.Outlook.Explorer.More", "\xFF"}) {
            CAPTURE(id);
            CHECK(session.host.CustomUI(e2e::progId, id).empty());
        }
        CHECK(session.host.Complaints().empty());
    }
}

TEST_CASE("a host that asks for every ribbon at start takes each, and says nothing against any") {
    Session session({.version = 16, .ribbon = {.askedBefore = {std::begin(ribbonIds) + 1, std::end(ribbonIds)}}},
                    RibbonIs::Asked);
    session.host.Start();
    CHECK(session.host.RibbonsAsked().size() == std::size(ribbonIds));
    CHECK(session.host.RibbonErrors().empty());
    CHECK(session.host.FindRibbon(session.OpenNew(ItemClass::Task), "TabTask_ButtonUpdate").visible);
    CHECK(session.host.Complaints().empty());
}

TEST_CASE("callbacks are found by name, however its letters are cased, and what is no callback is refused") {
    Session session({.version = 16}, RibbonIs::Asked);
    session.host.Start();
    const Callbacks ribbon(session);
    for (const char* name : callbacks) CHECK(ribbon.IdOf(name) != DISPID_UNKNOWN);
    CHECK(ribbon.IdOf("ONACTION") == ribbon.IdOf("OnAction"));
    CHECK(ribbon.IdOf("GetCustomUI") == 1);
    for (const char* name : {"", "OnActionn", "OnConnection", "Invoke"}) CHECK(ribbon.IdOf(name) == DISPID_UNKNOWN);
    DISPPARAMS none{};
    for (const DISPID id : {DISPID{DISPID_UNKNOWN}, DISPID{0}, DISPID{2}, DISPID{99}}) {
        CHECK(ribbon.Get()->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr) ==
              DISP_E_MEMBERNOTFOUND);
    }
    CHECK(ribbon.Get()->Invoke(ribbon.IdOf("OnAction"), IID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr,
                               nullptr) == DISP_E_MEMBERNOTFOUND);
}

TEST_CASE("without a control, with one of another kind and with no arguments at all nothing happens") {
    Session session({.version = 16}, RibbonIs::Asked);
    RecordedCorvella corvella;
    corvella.Install();
    session.host.Start();
    const Callbacks ribbon(session);
    for (const char* name : callbacks) {
        ribbon.CheckNeutral(name, nullptr);
        Given refusing("mEditor", nullptr);
        refusing.refusesAll = true;
        ribbon.CheckNeutral(name, &refusing);
        VARIANT number{};
        number.vt = VT_I4;
        number.lVal = 7;
        ribbon.CheckNeutral(name, &number, 1);
        CHECK(ribbon.Get()->Invoke(ribbon.IdOf(name), IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr,
                                   nullptr) == S_OK);
    }
    CheckNothingHappened(corvella);
}

TEST_CASE("in a window that is none of the command's, or no window at all, nothing happens") {
    Session session({.version = 16}, RibbonIs::Asked);
    RecordedCorvella corvella;
    corvella.Install();
    session.host.Start();
    session.OpenNew(ItemClass::Contact);
    const Callbacks ribbon(session);
    Given stranger("mEditor", nullptr);
    for (const char* name : {"OnAction", "GetEnabled", "GetVisible"}) {
        for (const char* tag : explorerTags) {
            CAPTURE(tag);
            Given control(tag, &stranger);
            ribbon.CheckNeutral(name, &control);
        }
    }
    CheckNothingHappened(corvella);
}

TEST_CASE(
    "a command of Explorers in an item window, and the other way round, does nothing and asks for nothing amiss") {
    Session session({.version = 16}, RibbonIs::Asked);
    RecordedCorvella corvella;
    corvella.Install();
    StartWithContacts(session);
    const Found explorer(session, activeExplorer), inspector(session, activeInspector);
    const Callbacks ribbon(session);
    for (const char* name : {"OnAction", "GetEnabled", "GetVisible"}) {
        Given itemCommand("ButtonUpdate", explorer.Get());
        ribbon.CheckNeutral(name, &itemCommand);
        for (const char* tag : {"mEditor", "mSync", "Buttonsync", "ButtonSendToPhone"}) {
            CAPTURE(tag);
            Given explorerCommand(tag, inspector.Get());
            ribbon.CheckNeutral(name, &explorerCommand);
        }
    }
    CheckNothingHappened(corvella);
    for (const std::string& complaint : session.host.Complaints()) CHECK_MESSAGE(false, complaint);
}

TEST_CASE("before the host has taken the ribbon nothing happens, in whatever window") {
    Session session({.version = 16, .ribbon = {.refuseAll = true}}, RibbonIs::Asked);
    RecordedCorvella corvella;
    corvella.Install();
    StartWithContacts(session);
    const Found explorer(session, activeExplorer), inspector(session, activeInspector);
    const Callbacks ribbon(session);
    for (IDispatch* context : {static_cast<IDispatch*>(nullptr), explorer.Get(), inspector.Get()})
        ribbon.CheckAllNeutral(context);
    CheckNothingHappened(corvella);
}

TEST_CASE("as long as the host has not taken the ribbon, nothing of it is asked for again") {
    for (const standin::RibbonOptions& options :
         {standin::RibbonOptions{.refuseAll = true}, standin::RibbonOptions{.asked = standin::RibbonAsked::Never}}) {
        Session session({.version = 16, .ribbon = options}, RibbonIs::Asked);
        session.host.Record();
        session.host.Start();
        session.host.SwitchFolder(session.FirstWindow(), FolderKind::Contacts);
        session.host.Select(session.FirstWindow(), {session.host.AddItem(FolderKind::Contacts)});
        for (const std::string& line : session.host.Transcript())
            CHECK_MESSAGE(line.find("Invalidate") == std::string::npos, line);
        CHECK(session.host.Complaints().empty());
    }
}

TEST_CASE("what changed before the ribbon was first looked at is seen right at the first look") {
    for (const int version : {14, 15, 16}) {
        CAPTURE(version);
        Session session({.version = version, .startFolder = FolderKind::Contacts}, RibbonIs::Asked);
        session.host.AddItem(FolderKind::Contacts);
        session.host.Start();
        const Window window = session.FirstWindow();
        session.host.Select(window, session.host.ItemsIn(FolderKind::Contacts));
        CHECK(session.host.FindRibbon(window, "TabContacts_ButtonSendToPhone").enabled);
        CHECK(session.host.Complaints().empty());
    }
}

TEST_CASE("after the user has unloaded the add-in, and after Outlook has ended, nothing happens in whatever window") {
    for (const bool unloaded : {true, false}) {
        CAPTURE(unloaded);
        Session session({.version = 16}, RibbonIs::Asked);
        RecordedCorvella corvella;
        corvella.Install();
        session.host.Start();
        session.OpenNew(ItemClass::Contact);
        const Found explorer(session, activeExplorer), inspector(session, activeInspector);
        const Callbacks ribbon(session);
        CHECK(LengthOfXml(ribbon.Get(), L"Microsoft.Outlook.Contact") > 100);
        if (unloaded) {
            session.host.UnloadAddIn(e2e::progId);
        } else {
            session.host.Quit();
        }
        for (IDispatch* context : {static_cast<IDispatch*>(nullptr), explorer.Get(), inspector.Get()})
            ribbon.CheckAllNeutral(context);
        CheckNothingHappened(corvella);
        // The host asks once more, and tells once more that it has taken a ribbon.
        CHECK(LengthOfXml(ribbon.Get(), L"Microsoft.Outlook.Contact") == 0);
        Given ui("", nullptr);
        ribbon.CheckNeutral("OnExplorerRibbonLoad", &ui);
        ribbon.CheckAllNeutral(explorer.Get());
        CheckNothingHappened(corvella);
    }
}

TEST_CASE("a command that needs no window runs without a Context, one that does does nothing") {
    Session session({.version = 15, .ribbon = {.context = standin::RibbonContext::Nothing}}, RibbonIs::Asked);
    RecordedCorvella corvella;
    corvella.Install();
    session.host.Start();
    CHECK(session.host.ClickRibbon(session.FirstWindow(), "TabMail_mEditor"));
    CHECK(corvella.Starts(1) == std::vector<std::string>{corvella.Line("")});
    session.host.SwitchFolder(session.FirstWindow(), FolderKind::Contacts);
    session.host.Select(session.FirstWindow(), {session.host.AddItem(FolderKind::Contacts)});
    CHECK_FALSE(session.host.ClickRibbon(session.FirstWindow(), "TabContacts_ButtonSendToPhone"));  // cannot be seen
    CheckNothingHappened(corvella);
}

TEST_CASE("a click whose Context is another object, or whose window has just closed, does nothing") {
    for (const standin::RibbonContext context :
         {standin::RibbonContext::AnotherObject, standin::RibbonContext::ClosedWindow}) {
        Session session({.version = 16, .ribbon = {.context = context}}, RibbonIs::Asked);
        RecordedCorvella corvella;
        corvella.Install();
        session.host.Start();
        const Window contact = session.OpenNew(ItemClass::Contact);
        session.host.ClickRibbon(contact, "TabContact_ButtonUpdate");
        session.host.ClickRibbon(session.FirstWindow(), "TabMail_mEditor");
        CheckNothingHappened(corvella);
        CHECK(session.host.References() <= 60);
    }
}

TEST_CASE("the ribbon describes its one interface to whoever asks") {
    Session session({.version = 16}, RibbonIs::Asked);
    session.host.Start();
    const Callbacks ribbon(session);
    UINT count = 0;
    CHECK(ribbon.Get()->GetTypeInfoCount(&count) == S_OK);
    CHECK(count == 1);
    ITypeInfo* info = nullptr;
    REQUIRE(ribbon.Get()->GetTypeInfo(0, 0, &info) == S_OK);
    REQUIRE(info != nullptr);
    wchar_t getCustomUi[] = L"GetCustomUI";
    wchar_t* name = getCustomUi;
    MEMBERID id = 0;
    CHECK(info->GetIDsOfNames(&name, 1, &id) == S_OK);
    info->Release();
    CHECK(ribbon.Get()->GetTypeInfo(1, 0, &info) == DISP_E_BADINDEX);
    CHECK(info == nullptr);
}

TEST_CASE("who knows only IDispatch asks for the ribbon by name, with one text") {
    Session session({.version = 16}, RibbonIs::Asked);
    session.host.Start();
    const Callbacks ribbon(session);
    const DISPID id = ribbon.IdOf("GetCustomUI");
    REQUIRE(id != DISPID_UNKNOWN);
    VARIANT ribbonId{}, number{}, xml{};
    ribbonId.vt = VT_BSTR;
    ribbonId.bstrVal = SysAllocString(L"Microsoft.Outlook.Explorer");
    number.vt = VT_I4;
    const auto ask = [&](VARIANT* arguments, UINT count) {
        DISPPARAMS parameters{arguments, nullptr, count, 0};
        return ribbon.Get()->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, &xml, nullptr, nullptr);
    };
    CHECK(ask(nullptr, 0) == DISP_E_BADPARAMCOUNT);
    CHECK(ask(&number, 1) == DISP_E_TYPEMISMATCH);
    CHECK(xml.vt == VT_EMPTY);
    CHECK(ask(&ribbonId, 1) == S_OK);
    REQUIRE(xml.vt == VT_BSTR);
    CHECK(static_cast<int>(SysStringLen(xml.bstrVal)) == LengthOfXml(ribbon.Get(), ribbonId.bstrVal));
    CHECK(std::wstring(xml.bstrVal, SysStringLen(xml.bstrVal)).find(L"<customUI") != std::wstring::npos);
    VariantClear(&xml);
    VariantClear(&ribbonId);
}
