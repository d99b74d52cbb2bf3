// bench/replay/AddIn.h: what the host sees of an add-in that records or plays: a class factory, and the two interfaces by
// which it is called. What they do is for the derived class to say.
#pragma once
#include <windows.h>

#include <objbase.h>

#include <functional>
#include <utility>

#include "bench/replay/Tape.h"
#include "outlook/Extensibility.h"
#include "outlook/RibbonHost.h"

namespace Bench {

inline constexpr IID ribbonExtensibilityId{0x000C0396, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// The IUnknown of an object that counts its references and deletes itself, and an IDispatch that has no names.
template <class Interface>
class Counting : public Interface {
  public:
    Counting() = default;
    virtual ~Counting() = default;
    Counting(const Counting&) = delete;
    Counting& operator=(const Counting&) = delete;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

  private:
    ULONG references_ = 1;
};

template <class Interface>
class WithoutNames : public Counting<Interface> {
  public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, OLECHAR**, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }
};

// Arguments as an event brings them.
inline VARIANT ObjectArgument(IDispatch* object) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_DISPATCH;
    value.pdispVal = object;
    return value;
}

// Makes an add-in by calling `make`, which returns it with one reference.
class FactoryOf final : public IClassFactory {
  public:
    using Maker = std::function<IUnknown*()>;
    explicit FactoryOf(Maker make) : make_(std::move(make)) {}
    virtual ~FactoryOf() = default;
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IClassFactory;
        *object = known ? static_cast<IClassFactory*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override {
        IUnknown* made = make_();
        const HRESULT status = made->QueryInterface(id, object);
        made->Release();
        return status;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

  private:
    Maker make_;
};

}  // namespace Bench
