#include "platform/com/ComServer.h"

#include <windows.h>
// olectl after windows.h
#include <olectl.h>

#include <new>
#include <string>
#include <utility>

#include "platform/Guard.h"
#include "platform/Module.h"
#include "platform/com/Com.h"
#include "platform/com/Dispatch.h"
#include "platform/com/OwnTypeLibrary.h"
#include "platform/com/Registration.h"
#include "platform/com/RibbonObject.h"

namespace platform {
namespace {

// {B65AD801-ABAF-11D0-BB8B-00A0C90F2744}
constexpr IID extensibilityId{0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

// The Office add-in interface, in the order of its vtable; dispatch ids 1 to 5.
struct IDTExtensibility2 : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, LONG connectMode, IDispatch* addInInst,
                                                   SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnDisconnection(LONG removeMode, SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;
};

// Objects, references to the factory and locks of it: what keeps the library in use.
LONG uses = 0;
DWORD threadOfAddin = 0;  // of the last one, to which the objects that the library keeps belong

template <class Call>
HRESULT HandOn(Call&& call) noexcept {
    RunGuarded(call);
    return S_OK;
}

// The add-in as COM sees it: it hands on every call of the host, guarded, and returns S_OK.
class AddinObject final : public IDTExtensibility2 {
  public:
    explicit AddinObject(std::unique_ptr<AddinInstance> instance) noexcept : instance_(std::move(instance)) {
        InterlockedIncrement(&uses);
    }
    AddinObject(const AddinObject&) = delete;
    AddinObject& operator=(const AddinObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (!object) return E_POINTER;
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == extensibilityId;
        *object = known ? static_cast<IDTExtensibility2*>(this) : nullptr;
        if (!known) return QueryRibbon(id, object);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
    STDMETHODIMP_(ULONG) Release() override {
        const LONG left = InterlockedDecrement(&references_);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = Info() ? 1 : 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (!info) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        if (!Info()) return TYPE_E_CANTLOADLIBRARY;
        *info = ComPtr<ITypeInfo>(info_).Detach();
        return S_OK;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, OLECHAR** names, UINT count, LCID, DISPID* ids) override {
        return Info() ? DispGetIDsOfNames(info_.Get(), names, count, ids) : TYPE_E_CANTLOADLIBRARY;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* wrongArgument) override {
        if (!Info()) return TYPE_E_CANTLOADLIBRARY;
        return DispInvoke(static_cast<IDTExtensibility2*>(this), info_.Get(), id, flags, arguments, result, exception,
                          wrongArgument);
    }

    STDMETHODIMP OnConnection(IDispatch* application, LONG connectMode, IDispatch* addInInst, SAFEARRAY**) override {
        return HandOn([&] {
            instance_->AddinInstance_OnConnection(Dispatch::Copy(application), connectMode, Dispatch::Copy(addInInst));
        });
    }
    STDMETHODIMP OnDisconnection(LONG removeMode, SAFEARRAY**) override {
        return HandOn([&] { instance_->AddinInstance_OnDisconnection(removeMode); });
    }
    STDMETHODIMP OnAddInsUpdate(SAFEARRAY**) override {
        return HandOn([&] { instance_->AddinInstance_OnAddInsUpdate(); });
    }
    STDMETHODIMP OnStartupComplete(SAFEARRAY**) override {
        return HandOn([&] { instance_->AddinInstance_OnStartupComplete(); });
    }
    STDMETHODIMP OnBeginShutdown(SAFEARRAY**) override {
        return HandOn([&] { instance_->AddinInstance_OnBeginShutdown(); });
    }

  private:
    ~AddinObject() {
        RunGuarded([&] { instance_->AddinInstance_Terminate(); });
        instance_.reset();
        info_.Reset();
        InterlockedDecrement(&uses);
    }

    HRESULT QueryRibbon(REFIID id, void** object) noexcept {
        RibbonInstance* ribbon = id == ribbonExtensibilityId ? instance_->Ribbon() : nullptr;
        return ribbon ? MakeRibbonObject(*ribbon, static_cast<IDTExtensibility2*>(this), object) : E_NOINTERFACE;
    }

    // Office drives the vtable, so the description is loaded only for whoever asks by name.
    bool Info() noexcept {
        if (!info_) RunGuarded([&] { info_ = OwnTypeInfo(extensibilityId); });
        return static_cast<bool>(info_);
    }

    LONG references_ = 1;
    std::unique_ptr<AddinInstance> instance_;
    ComPtr<ITypeInfo> info_;
};

HRESULT CreateAddin(REFIID id, void** object) noexcept {
    std::unique_ptr<AddinInstance> instance;
    threadOfAddin = GetCurrentThreadId();
    RunGuarded([&] { instance = Server().factory(); });
    auto* addin = instance ? new (std::nothrow) AddinObject(std::move(instance)) : nullptr;
    if (!addin) return E_OUTOFMEMORY;
    const HRESULT answer = addin->QueryInterface(id, object);
    addin->Release();
    return answer;
}

// One for the library, never deleted.
class AddinFactory final : public IClassFactory {
  public:
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (!object) return E_POINTER;
        const bool known = id == IID_IUnknown || id == IID_IClassFactory;
        *object = known ? static_cast<IClassFactory*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&uses)); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(InterlockedDecrement(&uses)); }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        return outer ? CLASS_E_NOAGGREGATION : CreateAddin(id, object);
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        lock ? AddRef() : Release();
        return S_OK;
    }
};

AddinFactory factory;

bool IsServed(REFCLSID id) noexcept {
    CLSID served{};
    bool parsed = false;
    RunGuarded([&] { parsed = SUCCEEDED(CLSIDFromString(Widen(Server().clsid).c_str(), &served)); });
    return parsed && id == served;
}

}  // namespace
}  // namespace platform

using namespace platform;

STDAPI DllGetClassObject(REFCLSID clsid, REFIID id, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    return IsServed(clsid) ? factory.QueryInterface(id, object) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    if (InterlockedCompareExchange(&uses, 0, 0) != 0 || IsKeptLoaded()) return S_FALSE;
    if (GetCurrentThreadId() == threadOfAddin && Server().letGo) RunGuarded(Server().letGo);
    return S_OK;
}

STDAPI DllRegisterServer() {
    std::string path;
    RunGuarded([&] { path = ModulePath(); });
    return RegisterServer(Server(), path) ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() { return UnregisterServer(Server()) ? S_OK : SELFREG_E_CLASS; }

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(module);
    return TRUE;
}
