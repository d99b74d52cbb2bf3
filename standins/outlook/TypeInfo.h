// outlook/TypeInfo.h: as much type information as tells what an object is: its interface's name, id and member names.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <memory>
#include <string>

#include "outlook/Gate.h"
#include "outlook/Member.h"

namespace standin {

class TypeInfo : public Counted, public ITypeInfo {
  public:
    // `type` outlives every object of its kind.
    TypeInfo(std::shared_ptr<Gate> gate, const TypeDescription& type, int version)
        : Counted(std::move(gate)), type_(type), version_(version) {}

    [[nodiscard]] std::string Name() const override {
        return "type information of " + std::string(type_.interfaceName);
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return AddOutside(); }
    STDMETHODIMP_(ULONG) Release() override { return ReleaseOutside(); }
    STDMETHODIMP GetTypeAttr(TYPEATTR** out) override;
    STDMETHODIMP_(void) ReleaseTypeAttr(TYPEATTR* attributes) override { CoTaskMemFree(attributes); }
    STDMETHODIMP GetDocumentation(MEMBERID id, BSTR* name, BSTR* text, DWORD* context, BSTR* file) override;
    STDMETHODIMP GetIDsOfNames(LPOLESTR* names, UINT count, MEMBERID* ids) override;
    STDMETHODIMP GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
    STDMETHODIMP GetFuncDesc(UINT, FUNCDESC**) override { return E_NOTIMPL; }
    STDMETHODIMP GetVarDesc(UINT, VARDESC**) override { return E_NOTIMPL; }
    STDMETHODIMP GetNames(MEMBERID, BSTR*, UINT, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetRefTypeOfImplType(UINT, HREFTYPE*) override { return E_NOTIMPL; }
    STDMETHODIMP GetImplTypeFlags(UINT, INT*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(PVOID, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override { return E_NOTIMPL; }
    STDMETHODIMP GetRefTypeInfo(HREFTYPE, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP AddressOfMember(MEMBERID, INVOKEKIND, PVOID*) override { return E_NOTIMPL; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID, PVOID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMops(MEMBERID, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainingTypeLib(ITypeLib**, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP_(void) ReleaseFuncDesc(FUNCDESC*) override {}
    STDMETHODIMP_(void) ReleaseVarDesc(VARDESC*) override {}

  private:
    const TypeDescription& type_;
    int version_;
};

}  // namespace standin
