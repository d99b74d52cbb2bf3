#include "platform/com/RibbonObject.h"

#include <new>
#include <string>
#include <utility>

#include "platform/Guard.h"
#include "platform/com/OwnTypeLibrary.h"

namespace platform {
namespace {

// Office's interface, in the order of its vtable; dispatch id 1.
struct IRibbonExtensibility : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE GetCustomUI(BSTR ribbonId, BSTR* xml) = 0;
};

constexpr DISPID getCustomUiId = 1;
constexpr DISPID firstCallbackId = 100;

std::wstring FromUtf8(std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), length);
    return wide;
}

// Gives `result`, which may be null, what a callback returned.
void Return(VARIANT* result, const Argument& value) {
    if (!result) return;
    VariantInit(result);
    switch (value.Holds()) {
        case Argument::Kind::None: break;
        case Argument::Kind::Number:
            result->vt = VT_I4;
            result->lVal = value.Number();
            break;
        case Argument::Kind::Flag:
            result->vt = VT_BOOL;
            result->boolVal = value.Flag() ? VARIANT_TRUE : VARIANT_FALSE;
            break;
        case Argument::Kind::Text:
            result->vt = VT_BSTR;
            result->bstrVal = Bstr(value.Text()).Detach();
            break;
        case Argument::Kind::Object:
            result->vt = VT_DISPATCH;
            result->pdispVal = ComPtr<IDispatch>::Copy(value.Object().Get()).Detach();
            break;
    }
}

class RibbonObject final : public IRibbonExtensibility {
  public:
    RibbonObject(RibbonInstance& ribbon, IUnknown* owner) noexcept
        : ribbon_(ribbon), owner_(ComPtr<IUnknown>::Copy(owner)) {}
    RibbonObject(const RibbonObject&) = delete;
    RibbonObject& operator=(const RibbonObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (!object) return E_POINTER;
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == ribbonExtensibilityId;
        if (!known) return owner_->QueryInterface(id, object);
        *object = static_cast<IRibbonExtensibility*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
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
        if (!names || !ids || count == 0) return E_INVALIDARG;
        for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;  // parameters have no names
        if (names[0]) RunGuarded([&] { ids[0] = IdOf(Narrow(names[0])); });
        return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        if (!(flags & DISPATCH_METHOD)) return DISP_E_MEMBERNOTFOUND;
        const ComPtr<IUnknown> kept = ComPtr<IUnknown>::Copy(this);  // the call may let go of everything
        if (result) VariantInit(result);
        DISPPARAMS none{};
        if (!parameters) parameters = &none;
        if (id == getCustomUiId) return InvokeGetCustomUI(*parameters, result);
        if (id < firstCallbackId) return DISP_E_MEMBERNOTFOUND;
        RunGuarded([&] { Return(result, ribbon_.RunCallback(id - firstCallbackId, EventArguments(*parameters))); });
        return S_OK;
    }

    STDMETHODIMP GetCustomUI(BSTR ribbonId, BSTR* xml) override {
        if (!xml) return E_POINTER;
        *xml = nullptr;
        const ComPtr<IUnknown> kept = ComPtr<IUnknown>::Copy(this);
        RunGuarded([&] {
            const std::wstring text = FromUtf8(ribbon_.GetCustomUI(TextOf(ribbonId)));
            if (!text.empty()) *xml = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        });
        return S_OK;
    }

  private:
    ~RibbonObject() = default;

    DISPID IdOf(const std::string& name) const {
        const std::int32_t callback = ribbon_.FindCallback(name);
        if (callback != RibbonInstance::unknown) return firstCallbackId + callback;
        return name == "GetCustomUI" ? getCustomUiId : DISPID_UNKNOWN;
    }
    HRESULT InvokeGetCustomUI(const DISPPARAMS& parameters, VARIANT* result) {
        if (parameters.cArgs != 1) return DISP_E_BADPARAMCOUNT;
        if (!parameters.rgvarg || parameters.rgvarg[0].vt != VT_BSTR) return DISP_E_TYPEMISMATCH;
        Bstr xml;
        const HRESULT status = GetCustomUI(parameters.rgvarg[0].bstrVal, xml.Put());
        if (!result) return status;
        result->vt = VT_BSTR;
        result->bstrVal = xml.Detach();
        return status;
    }
    bool Info() noexcept {
        if (!info_) RunGuarded([&] { info_ = OwnTypeInfo(ribbonExtensibilityId); });
        return static_cast<bool>(info_);
    }

    ULONG references_ = 1;
    RibbonInstance& ribbon_;
    ComPtr<IUnknown> owner_;  // the add-in's object, which holds the instance
    ComPtr<ITypeInfo> info_;
};

}  // namespace

HRESULT MakeRibbonObject(RibbonInstance& ribbon, IUnknown* owner, void** object) noexcept {
    *object = new (std::nothrow) RibbonObject(ribbon, owner);
    return *object ? S_OK : E_OUTOFMEMORY;
}

}  // namespace platform
