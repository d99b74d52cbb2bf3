// unit/standins/outlook/client.h: how the stand-in's own tests talk to it: raw late-bound calls, a sink and an add-in
// that do what a test tells them. No product code, so that a fault of one is not hidden by the same fault in the other.
#pragma once
#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "outlook/Extensibility.h"
#include "outlook/Outlook.h"

namespace client {

// An owned interface pointer.
template <class T>
class Com {
  public:
    Com() = default;
    explicit Com(T* owned) : pointer_(owned) {}
    Com(const Com& other) : pointer_(other.pointer_) {
        if (pointer_) pointer_->AddRef();
    }
    Com(Com&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    Com& operator=(Com other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    ~Com() {
        if (pointer_) pointer_->Release();
    }
    T* get() const { return pointer_; }
    T* operator->() const { return pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }
    T** put() {
        *this = Com();
        return &pointer_;
    }
    void** putVoid() { return reinterpret_cast<void**>(put()); }

  private:
    T* pointer_ = nullptr;
};

using Object = Com<IDispatch>;

// Lines as one text: doctest prints it when it differs.
std::string Join(const std::vector<std::string>& lines);

// A VARIANT argument or result.
class Variant : public VARIANT {
  public:
    Variant() { VariantInit(this); }
    Variant(int number) : Variant() {
        vt = VT_I4;
        lVal = number;
    }
    Variant(bool flag) : Variant() {
        vt = VT_BOOL;
        boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Variant(const char* text);
    Variant(const std::string& text) : Variant(text.c_str()) {}
    Variant(IDispatch* object) : Variant() {
        vt = VT_DISPATCH;
        pdispVal = object;
        if (object) object->AddRef();
    }
    Variant(const Object& object) : Variant(object.get()) {}
    Variant(const Variant& other) : Variant() { VariantCopy(this, const_cast<Variant*>(&other)); }
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }
    static Variant Omitted();
};

struct Answer {
    HRESULT code = S_OK;
    Variant value;
    HRESULT scode = S_OK;     // of DISP_E_EXCEPTION
    std::string description;  // likewise
    [[nodiscard]] bool Failed() const { return FAILED(code); }
    [[nodiscard]] Object AsObject() const;
    [[nodiscard]] std::string AsText() const;
    [[nodiscard]] int AsNumber() const;
};

DISPID IdOf(const Object& object, const char* name);  // DISPID_UNKNOWN
HRESULT LookUp(const Object& object, const char* name, DISPID& id);
// Arguments in the order of their declaration.
Answer Invoke(const Object& object, DISPID id, WORD flags, const std::vector<Variant>& arguments = {});
Answer Get(const Object& object, const char* name, const std::vector<Variant>& arguments = {});
Answer Put(const Object& object, const char* name, const Variant& value, WORD flags = DISPATCH_PROPERTYPUT);
Answer Call(const Object& object, const char* name, const std::vector<Variant>& arguments = {});

// {xxxxxxxx-0000-0000-C000-000000000046}
GUID Id(unsigned long first);
inline constexpr unsigned long applicationEvents = 0x6304E, applicationEvents10 = 0x6300E,
                               applicationEvents11 = 0x6302C, explorersEvents = 0x63078, explorerEvents = 0x6304F,
                               explorerEvents10 = 0x6300F, inspectorsEvents = 0x63079, inspectorEvents = 0x6307D,
                               itemEvents = 0x6303A, buttonEvents = 0xC0351;

// A sink on the stack, advised until it is cut or ends.
class Sink final : public IDispatch {
  public:
    using Handler = std::function<void(DISPID, DISPPARAMS&)>;
    Sink(const Object& source, unsigned long set, Handler handler = {});
    ~Sink();
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    [[nodiscard]] HRESULT Advised() const { return advised_; }
    HRESULT Cut();
    void Leave() {
        point_ = {};
        cookie_ = 0;
    }  // leaves the advise behind

    std::vector<DISPID> events;
    HRESULT answer = S_OK;

    STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                        UINT*) override;
    ULONG references = 1;
    WORD lastFlags = 0;

  private:
    GUID set_;
    Handler handler_;
    Com<IConnectionPoint> point_;
    DWORD cookie_ = 0;
    HRESULT advised_ = E_FAIL;
};

// Finds the connection point of `set`; what the source returns.
HRESULT FindPoint(const Object& source, unsigned long set, Com<IConnectionPoint>& point);

// An add-in that notes what it is told, and does what a test hangs in.
class AddIn : public standin::Extensibility {
  public:
    std::vector<std::string> told;
    std::function<HRESULT(IDispatch* application, IDispatch* self)> onConnection;
    std::function<void(const std::string&)> onAny;
    Object application, self;  // kept only by what a test hangs in
    std::vector<long> custom;  // first element of each `custom`, -1 for an empty or absent one
    ULONG references = 1;

    STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP OnConnection(IDispatch* app, int mode, IDispatch* me, SAFEARRAY** array) override;
    STDMETHODIMP OnDisconnection(int mode, SAFEARRAY** array) override {
        return Note("OnDisconnection " + std::to_string(mode), array);
    }
    STDMETHODIMP OnAddInsUpdate(SAFEARRAY** array) override { return Note("OnAddInsUpdate", array); }
    STDMETHODIMP OnStartupComplete(SAFEARRAY** array) override { return Note("OnStartupComplete", array); }
    STDMETHODIMP OnBeginShutdown(SAFEARRAY** array) override { return Note("OnBeginShutdown", array); }

  private:
    HRESULT Note(const std::string& what, SAFEARRAY** array);
};

// A started host without the registry, and its Application.
struct Host {
    explicit Host(const standin::Options& options = {});
    standin::Outlook outlook;
    Object application;
    Object Explorer(int number = 1) const;  // of Application.Explorers
    Object Bar(const char* name, int explorer = 1) const;
    Object Controls(const char* bar, int explorer = 1) const;
    // A custom button at the end of "Standard", with a tag.
    Object Button(const char* tag, int explorer = 1) const;
};

}  // namespace client
