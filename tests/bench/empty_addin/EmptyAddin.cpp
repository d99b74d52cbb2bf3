// The least that Outlook loads as an add-in: nothing of the product is in it and it does nothing. What it costs to be
// found, loaded, connected and let go is the floor for comparisons.
#include <windows.h>
// olectl after windows.h
#include <olectl.h>

#include <initializer_list>

namespace {

// No std::string in here: it would bring in more of the runtime than all the rest.
#define CLASS_ID "{C3A1F7D0-2B64-4E58-9D0B-6F1E8A75C204}"
#define PROG_ID "CVEmptyAddIn.Connect"
#define CLASS_KEY "CLSID\\" CLASS_ID
#define ADDIN_KEY "Software\\Microsoft\\Office\\Outlook\\Addins\\" PROG_ID
constexpr CLSID emptyClass{0xC3A1F7D0, 0x2B64, 0x4E58, {0x9D, 0x0B, 0x6F, 0x1E, 0x8A, 0x75, 0xC2, 0x04}};
constexpr IID extensibilityId{0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

LONG references = 0;

class EmptyAddin final : public IDispatch {
  public:
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == extensibilityId;
        *object = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references)); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(InterlockedDecrement(&references)); }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, OLECHAR**, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
    virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch*, LONG, IDispatch*, SAFEARRAY**) { return S_OK; }
    virtual HRESULT STDMETHODCALLTYPE OnDisconnection(LONG, SAFEARRAY**) { return S_OK; }
    virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY**) { return S_OK; }
    virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY**) { return S_OK; }
    virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY**) { return S_OK; }
};
EmptyAddin addin;

class EmptyFactory final : public IClassFactory {
  public:
    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = this;
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override {
        return addin.QueryInterface(id, object);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};
EmptyFactory factory;

HMODULE self = nullptr;

bool Write(HKEY root, const char* path, const char* name, DWORD type, const void* data, DWORD size) {
    HKEY key = nullptr;
    if (RegCreateKeyA(root, path, &key) != ERROR_SUCCESS) return false;
    const LONG status = RegSetValueExA(key, name, 0, type, static_cast<const BYTE*>(data), size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS;
}
bool Write(HKEY root, const char* path, const char* name, const char* text) {
    return Write(root, path, name, REG_SZ, text, static_cast<DWORD>(lstrlenA(text) + 1));
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID clsid, REFIID id, void** object) {
    return clsid == emptyClass ? factory.QueryInterface(id, object) : CLASS_E_CLASSNOTAVAILABLE;
}
STDAPI DllCanUnloadNow() { return references == 0 ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() {
    char path[MAX_PATH];
    GetModuleFileNameA(self, path, sizeof path);
    const DWORD atStart = 3;
    const bool written = Write(HKEY_CLASSES_ROOT, CLASS_KEY "\\InprocServer32", nullptr, path) &&
                         Write(HKEY_CLASSES_ROOT, CLASS_KEY "\\InprocServer32", "ThreadingModel", "Apartment") &&
                         Write(HKEY_CLASSES_ROOT, PROG_ID "\\CLSID", nullptr, CLASS_ID) &&
                         Write(HKEY_CURRENT_USER, ADDIN_KEY, "FriendlyName", "Empty") &&
                         Write(HKEY_CURRENT_USER, ADDIN_KEY, "LoadBehavior", REG_DWORD, &atStart, sizeof atStart);
    return written ? S_OK : SELFREG_E_CLASS;
}
STDAPI DllUnregisterServer() {
    for (const char* key : {CLASS_KEY "\\InprocServer32", CLASS_KEY, PROG_ID "\\CLSID", PROG_ID}) {
        RegDeleteKeyA(HKEY_CLASSES_ROOT, key);
    }
    RegDeleteKeyA(HKEY_CURRENT_USER, ADDIN_KEY);
    return S_OK;
}

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) self = module;
    return TRUE;
}
