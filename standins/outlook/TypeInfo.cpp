#include "outlook/TypeInfo.h"

#include "outlook/Words.h"

namespace standin {

STDMETHODIMP TypeInfo::QueryInterface(REFIID iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (iid != IID_IUnknown && iid != IID_ITypeInfo) return E_NOINTERFACE;
    *out = static_cast<ITypeInfo*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP TypeInfo::GetTypeAttr(TYPEATTR** out) {
    if (!out) return E_POINTER;
    *out = static_cast<TYPEATTR*>(CoTaskMemAlloc(sizeof(TYPEATTR)));
    if (!*out) return E_OUTOFMEMORY;
    **out = TYPEATTR{};
    (*out)->guid = type_.iid;
    (*out)->typekind = TKIND_DISPATCH;
    (*out)->wTypeFlags = TYPEFLAG_FDUAL | TYPEFLAG_FDISPATCHABLE;
    (*out)->cbSizeVft = 7 * sizeof(void*);
    return S_OK;
}

STDMETHODIMP TypeInfo::GetDocumentation(MEMBERID id, BSTR* name, BSTR* text, DWORD* context, BSTR* file) {
    if (text) *text = nullptr;
    if (context) *context = 0;
    if (file) *file = nullptr;
    if (name) *name = nullptr;
    const Member* member = id == MEMBERID_NIL ? nullptr : type_.Find(id, version_);
    if (id != MEMBERID_NIL && !member) return TYPE_E_ELEMENTNOTFOUND;
    if (name) *name = SysAllocString(Wide(member ? member->name : type_.interfaceName).c_str());
    return S_OK;
}

STDMETHODIMP TypeInfo::GetIDsOfNames(LPOLESTR* names, UINT count, MEMBERID* ids) {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    const Member* member = type_.Find(Ansi(names[0]), version_);
    ids[0] = member ? member->id : MEMBERID_NIL;
    return member && count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

}  // namespace standin
