// outlook/Enumerator.h: For Each over a collection.
#pragma once
#include <string>
#include <vector>

#include "outlook/Call.h"
#include "outlook/Object.h"

namespace standin {

// The objects that the collection had when it was made.
class Enumerator : public Counted, public IEnumVARIANT {
  public:
    Enumerator(std::shared_ptr<Gate> gate, std::string name, std::vector<Result> objects);
    [[nodiscard]] std::string Name() const override { return "enumerator of " + name_; }
    STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return AddOutside(); }
    STDMETHODIMP_(ULONG) Release() override { return ReleaseOutside(); }
    STDMETHODIMP Next(ULONG count, VARIANT* values, ULONG* fetched) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumVARIANT** out) override;

  private:
    HRESULT Fetch(ULONG count, VARIANT* values, ULONG& fetched);

    std::string name_;
    std::vector<Result> objects_;
    std::size_t next_ = 0;
};

void ReturnEnumerator(Call& call, const Object& of, std::vector<Result> objects);

}  // namespace standin
