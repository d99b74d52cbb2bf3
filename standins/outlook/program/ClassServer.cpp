#include "outlook/program/ClassServer.h"

#include <objbase.h>

#include <iterator>
#include <string>

#include "outlook/Pointers.h"

namespace program {

namespace {

using Giver = IDispatch* (standin::Outlook::*)();  // one reference for the caller

struct OfferedClass {
    CLSID id;
    const char* idText;
    const char* progId;
    Giver give;
};
constexpr OfferedClass offeredClasses[] = {
    {{0x4E7A2D10, 0x9B3C, 0x4F65, {0xA1, 0x58, 0x0C, 0x6D, 0x37, 0xE2, 0x94, 0xB8}},
     "{4E7A2D10-9B3C-4F65-A158-0C6D37E294B8}",
     "OutlookStandIn.Application",
     &standin::Outlook::Application},
    {{0x4E7A2D11, 0x9B3C, 0x4F65, {0xA1, 0x58, 0x0C, 0x6D, 0x37, 0xE2, 0x94, 0xB8}},
     "{4E7A2D11-9B3C-4F65-A158-0C6D37E294B8}",
     "OutlookStandIn.User",
     &standin::Outlook::User},
};

class Factory final : public IClassFactory {
  public:
    Factory(standin::Outlook& outlook, Giver give) : outlook_(outlook), give_(give) {}
    virtual ~Factory() = default;

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
        IDispatch* given = (outlook_.*give_)();
        const HRESULT answer = given->QueryInterface(iid, out);
        given->Release();
        return answer;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

  private:
    standin::Outlook& outlook_;
    Giver give_;
    ULONG references_ = 0;
};

std::string ClassKey(const OfferedClass& offered) { return std::string("CLSID\\") + offered.idText; }

bool SetDefault(const std::string& key, const char* text) {
    return RegSetValueA(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, text, 0) == ERROR_SUCCESS;
}

bool Remove(const std::string& key) {
    const LONG answer = RegDeleteKeyA(HKEY_CLASSES_ROOT, key.c_str());
    return answer == ERROR_SUCCESS || answer == ERROR_FILE_NOT_FOUND;
}

}  // namespace

ClassServer::ClassServer(standin::Outlook& outlook) {
    for (const OfferedClass& offered : offeredClasses) {
        const standin::Theirs<IUnknown> factory(new Factory(outlook, offered.give));
        DWORD cookie = 0;
        if (SUCCEEDED(
                CoRegisterClassObject(offered.id, factory.get(), CLSCTX_LOCAL_SERVER, REGCLS_MULTI_SEPARATE, &cookie)))
            cookies_.push_back(cookie);
    }
    offered_ = cookies_.size() == std::size(offeredClasses);
}

ClassServer::~ClassServer() {
    for (const DWORD cookie : cookies_) CoRevokeClassObject(cookie);
}

bool RegisterServer() {
    bool whole = true;
    for (const OfferedClass& offered : offeredClasses) {
        const std::string progId = offered.progId, title = "Outlook stand-in";
        whole = whole && SetDefault(progId, title.c_str()) && SetDefault(progId + "\\CLSID", offered.idText) &&
                SetDefault(ClassKey(offered), title.c_str()) &&
                SetDefault(ClassKey(offered) + "\\ProgID", offered.progId);
    }
    return whole;
}

bool UnregisterServer() {
    bool whole = true;
    for (const OfferedClass& offered : offeredClasses) {
        const std::string progId = offered.progId, key = ClassKey(offered);
        for (const std::string& name : {progId + "\\CLSID", progId, key + "\\ProgID", key})
            whole = Remove(name) && whole;
    }
    return whole;
}

}  // namespace program
