#include "outlook/Call.h"

#include "outlook/Member.h"

namespace standin {

void Refuse(HRESULT code) { throw Failure{code, {}, 0}; }
void RefuseWords(HRESULT scode, const wchar_t* description) { throw Failure{scode, description, 0}; }

Value Value::OfText(std::wstring_view text) {
    Value value;
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return value;
}

Value Value::OfLong(long number) {
    Value value;
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

Value Value::OfDate(double date) {
    Value value;
    value.vt = VT_DATE;
    value.date = date;
    return value;
}

Value Value::OfFlag(bool flag) {
    Value value;
    value.vt = VT_BOOL;
    value.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return value;
}

bool Value::operator==(const Value& other) const { return vt == other.vt && Text() == other.Text(); }

std::wstring Value::Text() const {
    Value copy = *this;
    if (!copy.Become(VT_BSTR) || !copy.bstrVal) return {};
    return {copy.bstrVal, SysStringLen(copy.bstrVal)};
}

namespace {

bool Omitted(const VARIANT* argument) {
    return !argument || (argument->vt == VT_ERROR && argument->scode == DISP_E_PARAMNOTFOUND);
}

}  // namespace

Call::Call(const Member& member, WORD flags, const DISPPARAMS& parameters, VARIANT* result)
    : member_(member),
      put_((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0 &&
           (member.kinds & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0),
      result_(result) {
    std::vector<std::string> names = put_ ? std::vector<std::string>{"Value"} : ParameterNames(member);
    arguments_.resize(names.size());
    places_.resize(names.size());
    const UINT named = parameters.cNamedArgs, all = parameters.cArgs;
    if (all > names.size() || named > all) Refuse(DISP_E_BADPARAMCOUNT);
    if (put_ && (all != 1 || named != 1 || parameters.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))
        Refuse(DISP_E_PARAMNOTOPTIONAL);
    for (UINT place = 0; place < all; ++place) {
        std::size_t number = all - 1 - place;  // positional ones stand in reverse order behind the named ones
        if (place < named) {
            const DISPID id = parameters.rgdispidNamedArgs[place];
            number = put_ ? 0 : static_cast<std::size_t>(id);
            if (number >= names.size() || arguments_[number]) Refuse(DISP_E_PARAMNOTFOUND);
        }
        arguments_[number] = &parameters.rgvarg[place];
        places_[number] = place;
    }
    for (std::size_t number = 0; number < names.size(); ++number)
        if (names[number].back() != '?' && Omitted(arguments_[number])) Refuse(DISP_E_PARAMNOTOPTIONAL);
}

DISPID Call::Id() const { return member_.id; }

bool Call::Given(std::size_t number) const { return number < arguments_.size() && !Omitted(arguments_[number]); }

Value Call::Raw(std::size_t number) const {
    if (Given(number)) return *arguments_[number];
    Value omitted;
    omitted.vt = VT_ERROR;
    omitted.scode = DISP_E_PARAMNOTFOUND;
    return omitted;
}

Value Call::As(std::size_t number, VARTYPE type) const {
    Value value = Raw(number);
    if (!value.Become(type)) throw Failure{DISP_E_TYPEMISMATCH, {}, number < places_.size() ? places_[number] : 0};
    return value;
}

long Call::Long(std::size_t number) const { return As(number, VT_I4).lVal; }

bool Call::FlagOr(std::size_t number, bool otherwise) const {
    return Given(number) ? As(number, VT_BOOL).boolVal != VARIANT_FALSE : otherwise;
}

std::wstring Call::Text(std::size_t number) const { return As(number, VT_BSTR).Text(); }

IDispatch* Call::Dispatch(std::size_t number) const {
    const Value value = Raw(number);
    if (value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) {
        Value converted = value;
        if (!value.punkVal || converted.Become(VT_DISPATCH)) return value.punkVal ? converted.pdispVal : nullptr;
    }
    throw Failure{DISP_E_TYPEMISMATCH, {}, number < places_.size() ? places_[number] : 0};
}

bool Call::IsText(std::size_t number) const { return Raw(number).vt == VT_BSTR; }

void Call::Return(OfficeInt value) {
    if (!result_) return;
    result_->vt = VT_INT;
    result_->intVal = value.value;
}

void Call::Return(IDispatch* object) {
    if (!result_) return;
    result_->vt = VT_DISPATCH;
    result_->pdispVal = object;
    if (object) object->AddRef();
}

void Call::Return(const Value& value) {
    if (result_) VariantCopy(result_, const_cast<Value*>(&value));
}

void Call::ReturnOutside(IUnknown* object) {
    if (!result_) return;
    result_->vt = VT_DISPATCH;
    result_->pdispVal = nullptr;
    if (object) object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&result_->pdispVal));
}

void Call::ReturnEnumerator(IUnknown* object) {
    if (!result_) {
        object->Release();
        return;
    }
    result_->vt = VT_UNKNOWN;
    result_->punkVal = object;
}

}  // namespace standin
