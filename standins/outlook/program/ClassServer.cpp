#include "outlook/program/ClassServer.h"

#include <objbase.h>

#include <string>

#include "outlook/Pointers.h"

namespace program {

namespace {

constexpr CLSID serverClass = {0x4E7A2D10, 0x9B3C, 0x4F65, {0xA1, 0x58, 0x0C, 0x6D, 0x37, 0xE2, 0x94, 0xB8}};
constexpr const char* serverClassText = "{4E7A2D10-9B3C-4F65-A158-0C6D37E294B8}";

// Every object that it makes is the one Application.
class ApplicationFactory final : public IClassFactory {
  public:
    explicit ApplicationFactory(standin::Outlook& outlook) : outlook_(outlook) {}
    virtual ~ApplicationFactory() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        *out = iid == IID_IUnknown || iid == IID_IClassFactory ? static_cast<IClassFactory*>(this) : nullptr;
        if (!*out) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        IDispatch* application = outlook_.Application();
        const HRESULT answer = application->QueryInterface(iid, out);
        application->Release();
        return answer;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

  private:
    standin::Outlook& outlook_;
    ULONG references_ = 0;
};

std::string ClassKey() { return std::string("CLSID\\") + serverClassText; }

bool SetDefault(const std::string& key, const char* text) {
    return RegSetValueA(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, text, 0) == ERROR_SUCCESS;
}

bool Remove(const std::string& key) {
    const LONG answer = RegDeleteKeyA(HKEY_CLASSES_ROOT, key.c_str());
    return answer == ERROR_SUCCESS || answer == ERROR_FILE_NOT_FOUND;
}

}  // namespace

ClassServer::ClassServer(standin::Outlook& outlook) {
    const standin::Theirs<IUnknown> factory(new ApplicationFactory(outlook));
    if (FAILED(CoRegisterClassObject(serverClass, factory.get(), CLSCTX_LOCAL_SERVER, REGCLS_MULTI_SEPARATE, &cookie_)))
        cookie_ = 0;
}

ClassServer::~ClassServer() {
    if (Offered()) CoRevokeClassObject(cookie_);
}

bool RegisterServer() {
    const std::string progId = serverProgId;
    return SetDefault(progId, "Outlook stand-in") && SetDefault(progId + "\\CLSID", serverClassText) &&
           SetDefault(ClassKey(), "Outlook stand-in") && SetDefault(ClassKey() + "\\ProgID", serverProgId);
}

bool UnregisterServer() {
    const std::string progId = serverProgId;
    bool whole = true;
    for (const std::string& key : {progId + "\\CLSID", progId, ClassKey() + "\\ProgID", ClassKey()})
        whole = Remove(key) && whole;
    return whole;
}

}  // namespace program
