#include "outlook/Enumerator.h"

#include <algorithm>

namespace standin {

void ReturnEnumerator(Call& call, const Object& of, std::vector<Result> objects) {
    auto* enumerator = new Enumerator(of.SharedGate(), of.Name(), std::move(objects));
    enumerator->AddRef();
    call.ReturnEnumerator(static_cast<IEnumVARIANT*>(enumerator));
}

Enumerator::Enumerator(std::shared_ptr<Gate> gate, std::string name, std::vector<Result> objects)
    : Counted(std::move(gate)), name_(std::move(name)), objects_(std::move(objects)) {}

STDMETHODIMP Enumerator::QueryInterface(REFIID iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (iid != IID_IUnknown && iid != IID_IEnumVARIANT) return E_NOINTERFACE;
    *out = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP Enumerator::Next(ULONG count, VARIANT* values, ULONG* fetched) {
    if (!values || (count != 1 && !fetched)) return E_POINTER;
    ULONG taken = 0;
    for (ULONG i = 0; i < count; ++i) VariantInit(&values[i]);
    const HRESULT answer = TheGate().Pass({
        .member = [] { return std::string("Enumerator.Next"); },
        .request = [this] { return Name() + ".Next"; },
        .result = [&] { return " -> " + std::to_string(taken); },
        .work = [&] { return Fetch(count, values, taken); },
        .spoil = [](const Fault& fault) { return fault.kind == Fault::Kind::Empty ? S_FALSE : fault.code; },
    });
    if (fetched) *fetched = taken;
    return answer;
}

HRESULT Enumerator::Fetch(ULONG count, VARIANT* values, ULONG& fetched) {
    if (TheGate().Over() != S_OK) return TheGate().Over();
    for (; fetched < count && next_ < objects_.size(); ++fetched, ++next_) {
        values[fetched].vt = VT_DISPATCH;
        values[fetched].pdispVal = objects_[next_].get();
        objects_[next_]->AddRef();
    }
    return fetched == count ? S_OK : S_FALSE;
}

STDMETHODIMP Enumerator::Skip(ULONG count) {
    const std::size_t left = objects_.size() - next_;
    next_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
}

STDMETHODIMP Enumerator::Reset() {
    next_ = 0;
    return S_OK;
}

STDMETHODIMP Enumerator::Clone(IEnumVARIANT** out) {
    if (!out) return E_POINTER;
    auto* copy = new Enumerator(SharedGate(), name_, objects_);
    copy->next_ = next_;
    copy->AddRef();
    *out = copy;
    return S_OK;
}

}  // namespace standin
