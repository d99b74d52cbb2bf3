// The COM object, class factory and entry points around an add-in class that keeps a diary.
#include <doctest.h>
// ole2 after windows.h
#include <windows.h>

#include <ole2.h>
#include <olectl.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/Err.h"
#include "platform/Module.h"
#include "platform/com/Com.h"
#include "platform/com/ComServer.h"
#include "platform/com/Dispatch.h"
#include "testing/PrivateRegistry.h"

using platform::ComPtr;

// The interface as Outlook drives it, written down once more: only slots count. Not in the unnamed
// namespace, where the compiler would see that nobody here implements it and call nothing.
struct Extensibility : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch*, LONG, IDispatch*, SAFEARRAY**) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnDisconnection(LONG, SAFEARRAY**) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY**) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY**) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY**) = 0;
};

namespace {

constexpr IID extensibilityId{0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};
constexpr CLSID diaryClass{0x1F6C0D5E, 0x93B4, 0x4D0F, {0xA8, 0x6E, 0x5B, 0x7C, 0x02, 0xD4, 0xE1, 0x93}};

// What a test wants of the next add-in, and what has happened to those that were made.
struct Diary {
    std::vector<std::string> lines;
    bool failInFactory = false;
    bool failInCalls = false;
    bool keepApplication = false;
    platform::Dispatch kept;
};
Diary diary;

std::string Line(const char* what, std::int32_t mode) { return std::string(what) + " " + std::to_string(mode); }

class DiaryAddin final : public platform::AddinInstance {
  public:
    void AddinInstance_OnConnection(const platform::Dispatch& application, std::int32_t connectMode,
                                    const platform::Dispatch& addInInst) override {
        Write(Line("connect", connectMode) + (application ? " application" : "") + (addInInst ? " addin" : ""));
        if (diary.keepApplication) diary.kept = application;
    }
    void AddinInstance_OnDisconnection(std::int32_t removeMode) override { Write(Line("disconnect", removeMode)); }
    void AddinInstance_OnAddInsUpdate() override { Write("update"); }
    void AddinInstance_OnStartupComplete() override { Write("startup complete"); }
    void AddinInstance_OnBeginShutdown() override { Write("begin shutdown"); }
    void AddinInstance_Terminate() override { Write("terminate"); }
    ~DiaryAddin() override { diary.lines.emplace_back("gone"); }

  private:
    static void Write(const std::string& line) {
        diary.lines.push_back(line);
        if (diary.failInCalls) throw std::runtime_error("the add-in failed");
    }
};

std::unique_ptr<platform::AddinInstance> MakeDiaryAddin() {
    if (diary.failInFactory) throw std::bad_alloc();
    return std::make_unique<DiaryAddin>();
}

constexpr platform::ServerDescription description{
    "{1F6C0D5E-93B4-4D0F-A86E-5B7C02D4E193}",
    "CVDiaryAddIn.Connect",
    "CVDiaryAddIn.Connect",
    "Corvella diary",
    "An add-in that writes down what is done to it",
    3,
    MakeDiaryAddin,
    [] { diary.lines.emplace_back("let go"); },
};

// An object of the host's that counts its references.
class HostObject final : public IDispatch {
  public:
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        *object = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, OLECHAR**, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }
    ULONG references = 1;
};

struct Fixture {
    Fixture() { diary = {}; }
    ~Fixture() { diary = {}; }

    static ComPtr<IClassFactory> Factory() {
        ComPtr<IClassFactory> factory;
        REQUIRE(DllGetClassObject(diaryClass, IID_IClassFactory, factory.PutVoid()) == S_OK);
        return factory;
    }
    static ComPtr<Extensibility> Addin() {
        ComPtr<Extensibility> addin;
        REQUIRE(Factory()->CreateInstance(nullptr, extensibilityId, addin.PutVoid()) == S_OK);
        return addin;
    }
    using Lines = std::vector<std::string>;
};

DISPID IdOf(IDispatch* object, const wchar_t* name) {
    std::wstring copy = name;
    OLECHAR* names = copy.data();
    DISPID id = DISPID_UNKNOWN;
    return SUCCEEDED(object->GetIDsOfNames(IID_NULL, &names, 1, 0, &id)) ? id : DISPID_UNKNOWN;
}

}  // namespace

const platform::ServerDescription& platform::Server() { return description; }

TEST_CASE_FIXTURE(Fixture, "the host's calls reach the add-in class in their order and with their modes") {
    HostObject application;
    HostObject addInInst;
    {
        const auto addin = Addin();
        CHECK(addin->OnConnection(&application, 1, &addInInst, nullptr) == S_OK);
        CHECK(addin->OnAddInsUpdate(nullptr) == S_OK);
        CHECK(addin->OnStartupComplete(nullptr) == S_OK);
        CHECK(addin->OnBeginShutdown(nullptr) == S_OK);
        CHECK(addin->OnDisconnection(0, nullptr) == S_OK);
    }
    CHECK(diary.lines == Lines{"connect 1 application addin", "update", "startup complete", "begin shutdown",
                               "disconnect 0", "terminate", "gone"});
}

TEST_CASE_FIXTURE(Fixture, "a call without application or add-in object hands on empty objects") {
    const auto addin = Addin();
    CHECK(addin->OnConnection(nullptr, 0, nullptr, nullptr) == S_OK);
    CHECK(diary.lines == Lines{"connect 0"});
}

TEST_CASE_FIXTURE(Fixture, "the custom array may be missing, empty or filled") {
    const auto addin = Addin();
    SAFEARRAY* none = nullptr;
    SAFEARRAY* empty = SafeArrayCreateVector(VT_VARIANT, 1, 0);
    CHECK(addin->OnConnection(nullptr, 0, nullptr, &none) == S_OK);
    CHECK(addin->OnConnection(nullptr, 0, nullptr, &empty) == S_OK);
    CHECK(diary.lines.size() == 2);
    SafeArrayDestroy(empty);
}

TEST_CASE_FIXTURE(Fixture, "the host's objects are held only as long as the add-in keeps them") {
    HostObject application;
    HostObject addInInst;
    diary.keepApplication = true;
    const auto addin = Addin();
    addin->OnConnection(&application, 1, &addInInst, nullptr);
    CHECK(application.references == 2);
    CHECK(addInInst.references == 1);
    diary.kept.Reset();
    CHECK(application.references == 1);
}

TEST_CASE_FIXTURE(Fixture, "a failing add-in returns success from every call and leaves the error pending") {
    const auto addin = Addin();
    diary.failInCalls = true;
    CHECK(addin->OnConnection(nullptr, 1, nullptr, nullptr) == S_OK);
    CHECK(platform::Err().Description() == "the add-in failed");
    CHECK(addin->OnDisconnection(1, nullptr) == S_OK);
    CHECK(addin->OnAddInsUpdate(nullptr) == S_OK);
    CHECK(addin->OnStartupComplete(nullptr) == S_OK);
    CHECK(addin->OnBeginShutdown(nullptr) == S_OK);
    CHECK(diary.lines.size() == 5);
}

TEST_CASE_FIXTURE(Fixture, "an add-in that fails while it ends is gone all the same") {
    diary.failInCalls = true;
    Addin();
    CHECK(diary.lines == Lines{"terminate", "gone"});
    CHECK(DllCanUnloadNow() == S_OK);
}

TEST_CASE_FIXTURE(Fixture, "an add-in that cannot be made is refused without an exception") {
    diary.failInFactory = true;
    void* object = &diary;
    CHECK(Factory()->CreateInstance(nullptr, IID_IUnknown, &object) == E_OUTOFMEMORY);
    CHECK(object == nullptr);
    CHECK(DllCanUnloadNow() == S_OK);
}

TEST_CASE_FIXTURE(Fixture, "the add-in is one object by each of its interfaces and refuses all others") {
    const auto addin = Addin();
    const auto unknown = addin.As<IUnknown>(IID_IUnknown);
    CHECK(unknown.Get() == addin.As<IDispatch>(IID_IDispatch).As<IUnknown>(IID_IUnknown).Get());
    void* object = &diary;
    CHECK(addin->QueryInterface(IID_IMarshal, &object) == E_NOINTERFACE);
    CHECK(object == nullptr);
    CHECK(addin->QueryInterface(IID_IUnknown, nullptr) == E_POINTER);
}

TEST_CASE_FIXTURE(Fixture, "an interface that the new add-in does not have leaves no add-in behind") {
    void* object = &diary;
    CHECK(Factory()->CreateInstance(nullptr, IID_IMarshal, &object) == E_NOINTERFACE);
    CHECK(object == nullptr);
    CHECK(diary.lines == Lines{"terminate", "gone"});
}

TEST_CASE_FIXTURE(Fixture, "the factory makes nothing that is to be part of another object") {
    HostObject outer;
    void* object = &diary;
    CHECK(Factory()->CreateInstance(&outer, IID_IUnknown, &object) == CLASS_E_NOAGGREGATION);
    CHECK(object == nullptr);
    CHECK(Factory()->CreateInstance(nullptr, IID_IUnknown, nullptr) == E_POINTER);
}

TEST_CASE_FIXTURE(Fixture, "only the one class is served, and only by its factory") {
    void* object = &diary;
    CHECK(DllGetClassObject(CLSID_NULL, IID_IClassFactory, &object) == CLASS_E_CLASSNOTAVAILABLE);
    CHECK(object == nullptr);
    object = &diary;
    CHECK(DllGetClassObject(diaryClass, IID_IDispatch, &object) == E_NOINTERFACE);
    CHECK(object == nullptr);
    CHECK(DllGetClassObject(diaryClass, IID_IClassFactory, nullptr) == E_POINTER);
}

TEST_CASE_FIXTURE(Fixture, "the library may go when nothing of it is in use") { CHECK(DllCanUnloadNow() == S_OK); }

TEST_CASE_FIXTURE(Fixture, "an add-in keeps the library loaded") {
    auto addin = Addin();
    CHECK(DllCanUnloadNow() == S_FALSE);
    addin.Reset();
    CHECK(DllCanUnloadNow() == S_OK);
}

DWORD WINAPI AskWhetherItMayGo(void* said) {
    *static_cast<HRESULT*>(said) = DllCanUnloadNow();
    return 0;
}

TEST_CASE_FIXTURE(Fixture,
                  "what is kept without an add-in is let go of before the library goes, on the add-in's thread") {
    auto addin = Addin();
    CHECK(DllCanUnloadNow() == S_FALSE);
    CHECK(diary.lines.empty());
    addin.Reset();
    diary.lines.clear();
    HRESULT said = E_FAIL;
    const HANDLE other = CreateThread(nullptr, 0, AskWhetherItMayGo, &said, 0, nullptr);
    REQUIRE(WaitForSingleObject(other, 20000) == WAIT_OBJECT_0);
    CloseHandle(other);
    CHECK(said == S_OK);
    CHECK(diary.lines.empty());
    CHECK(DllCanUnloadNow() == S_OK);
    CHECK(diary.lines == Lines{"let go"});
}

TEST_CASE_FIXTURE(Fixture, "a reference to the factory keeps the library loaded") {
    auto factory = Factory();
    CHECK(DllCanUnloadNow() == S_FALSE);
    factory.Reset();
    CHECK(DllCanUnloadNow() == S_OK);
}

TEST_CASE_FIXTURE(Fixture, "a lock of the factory keeps the library loaded until it is undone") {
    Factory()->LockServer(TRUE);
    Factory()->LockServer(TRUE);
    Factory()->LockServer(FALSE);
    CHECK(DllCanUnloadNow() == S_FALSE);
    Factory()->LockServer(FALSE);
    CHECK(DllCanUnloadNow() == S_OK);
}

TEST_CASE_FIXTURE(Fixture, "a token of whoever Windows may call keeps the library loaded") {
    {
        const platform::KeepLoaded form;
        const platform::KeepLoaded another;
        CHECK(DllCanUnloadNow() == S_FALSE);
    }
    CHECK(DllCanUnloadNow() == S_OK);
}

TEST_CASE_FIXTURE(Fixture, "the methods have the names and ids of the Office interface") {
    const auto addin = Addin();
    CHECK(IdOf(addin.Get(), L"OnConnection") == 1);
    CHECK(IdOf(addin.Get(), L"OnDisconnection") == 2);
    CHECK(IdOf(addin.Get(), L"OnAddInsUpdate") == 3);
    CHECK(IdOf(addin.Get(), L"OnStartupComplete") == 4);
    CHECK(IdOf(addin.Get(), L"OnBeginShutdown") == 5);
    CHECK(IdOf(addin.Get(), L"Terminate") == DISPID_UNKNOWN);
}

TEST_CASE_FIXTURE(Fixture, "a caller that knows only names reaches the add-in too") {
    const auto addin = Addin();
    HostObject application;
    SAFEARRAY* custom = SafeArrayCreateVector(VT_VARIANT, 1, 0);
    VARIANTARG arguments[4] = {};
    V_VT(&arguments[0]) = VT_ARRAY | VT_VARIANT | VT_BYREF;
    V_ARRAYREF(&arguments[0]) = &custom;
    V_VT(&arguments[1]) = VT_DISPATCH;
    V_VT(&arguments[2]) = VT_I4;
    V_I4(&arguments[2]) = 1;
    V_VT(&arguments[3]) = VT_DISPATCH;
    V_DISPATCH(&arguments[3]) = &application;
    DISPPARAMS parameters{arguments, nullptr, 4, 0};
    CHECK(addin->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr) == S_OK);
    CHECK(diary.lines == Lines{"connect 1 application"});
    SafeArrayDestroy(custom);
}

TEST_CASE_FIXTURE(Fixture, "the description of the interface has its methods in slots 7 to 11") {
    const auto addin = Addin();
    UINT count = 0;
    CHECK(addin->GetTypeInfoCount(&count) == S_OK);
    CHECK(count == 1);
    ComPtr<ITypeInfo> dispatchInfo;
    REQUIRE(addin->GetTypeInfo(0, 0, dispatchInfo.Put()) == S_OK);
    HREFTYPE reference = 0;
    REQUIRE(dispatchInfo->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference) == S_OK);
    ComPtr<ITypeInfo> info;
    REQUIRE(dispatchInfo->GetRefTypeInfo(reference, info.Put()) == S_OK);
    for (UINT index = 0; index < 5; ++index) {
        FUNCDESC* function = nullptr;
        REQUIRE(info->GetFuncDesc(index, &function) == S_OK);
        CHECK(function->oVft == static_cast<SHORT>((7 + index) * sizeof(void*)));
        CHECK(function->memid == static_cast<MEMBERID>(index + 1));
        info->ReleaseFuncDesc(function);
    }
    ComPtr<ITypeInfo> none;
    CHECK(addin->GetTypeInfo(1, 0, none.Put()) == DISP_E_BADINDEX);
}

TEST_CASE("the module of a test program is the program itself") {
    CHECK(platform::ModuleHandle() == GetModuleHandleA(nullptr));
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    CHECK(platform::ModulePath() == path);
}

TEST_CASE("the module's folder is its path up to the last backslash, which belongs to it") {
    const std::string path = platform::ModulePath();
    const std::string folder = platform::ModuleFolder();
    CHECK(folder + "platform_server_test.exe" == path);
    CHECK(folder.back() == '\\');
}

TEST_CASE("self-registration registers the module that it is linked into, and takes it back") {
    const PrivateRegistry registry;
    const std::string key = std::string("CLSID\\") + description.clsid + "\\InprocServer32";
    CHECK(DllRegisterServer() == S_OK);
    CHECK(PrivateRegistry::Raw(HKEY_CLASSES_ROOT, key, "").bytes == platform::ModulePath() + '\0');
    CHECK(DllUnregisterServer() == S_OK);
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CLASSES_ROOT, key));
}

TEST_CASE("self-registration that is refused says that the class could not be registered") {
    const PrivateRegistry registry;
    HKEY refusing = nullptr;
    REQUIRE(RegCreateKeyA(HKEY_LOCAL_MACHINE, "Refusing", &refusing) == ERROR_SUCCESS);
    REQUIRE(RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Refusing") == ERROR_SUCCESS);
    REQUIRE(RegOverridePredefKey(HKEY_CURRENT_USER, refusing) == ERROR_SUCCESS);
    CHECK(DllRegisterServer() == SELFREG_E_CLASS);
    CHECK(DllUnregisterServer() == SELFREG_E_CLASS);
}
