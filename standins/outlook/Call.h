// outlook/Call.h: one Invoke as the member that carries it out sees it: arguments in the order in which they are
// declared, converted when asked for, and a place for the result.
//
// Errors  A handler fails by throwing Failure, which Object::Invoke turns into its answer. Nothing else is thrown.
#pragma once
#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#include <string>
#include <string_view>
#include <vector>

namespace standin {

struct Member;

struct Failure {
    HRESULT code = E_FAIL;
    std::wstring description;  // not empty: returned as DISP_E_EXCEPTION with `code` as scode
    unsigned argument = 0;     // of DISP_E_TYPEMISMATCH: its place in rgvarg
};

[[noreturn]] void Refuse(HRESULT code);
[[noreturn]] void RefuseWords(HRESULT scode, const wchar_t* description);  // as Outlook itself refuses

class Value : public VARIANT {
  public:
    Value() { VariantInit(this); }
    Value(const VARIANT& other) : Value() {
        VariantCopyInd(this, const_cast<VARIANT*>(&other));
    }  // NOLINT: meant to convert
    Value(const Value& other) : Value() { VariantCopy(this, const_cast<Value*>(&other)); }
    Value& operator=(const Value& other) {
        VariantCopy(this, const_cast<Value*>(&other));
        return *this;
    }
    ~Value() { VariantClear(this); }
    static Value OfText(std::wstring_view text);
    static Value OfLong(long number);
    static Value OfDate(double date);
    static Value OfFlag(bool flag);
    // False and unchanged when the content does not read as `type`.
    bool Become(VARTYPE type) { return SUCCEEDED(VariantChangeTypeEx(this, this, LOCALE_INVARIANT, 0, type)); }
    bool operator==(const Value& other) const;
    [[nodiscard]] std::wstring Text() const;  // "" when it does not read as text
};

// Results that are not plain long, bool and text.
struct OfficeInt {
    int value;
};  // VT_INT, which the Office library has where Outlook's has VT_I4
struct Date {
    double value;
};

class Call {
  public:
    // `result` may be null. Throws Failure for a count or a name of arguments that the member has not.
    Call(const Member& member, WORD flags, const DISPPARAMS& parameters, VARIANT* result);

    [[nodiscard]] DISPID Id() const;
    [[nodiscard]] bool IsPut() const { return put_; }
    [[nodiscard]] bool Given(std::size_t number) const;  // not omitted; numbers count from 0
    [[nodiscard]] Value Raw(std::size_t number) const;   // VT_ERROR when omitted
    [[nodiscard]] long Long(std::size_t number) const;
    [[nodiscard]] long LongOr(std::size_t number, long otherwise) const {
        return Given(number) ? Long(number) : otherwise;
    }
    [[nodiscard]] bool FlagOr(std::size_t number, bool otherwise) const;
    [[nodiscard]] std::wstring Text(std::size_t number) const;
    [[nodiscard]] std::wstring TextOr(std::size_t number, const std::wstring& otherwise) const {
        return Given(number) ? Text(number) : otherwise;
    }
    [[nodiscard]] IDispatch* Dispatch(std::size_t number) const;  // borrowed, may be NULL
    [[nodiscard]] bool IsText(std::size_t number) const;

    void Return(long value) { Return(Value::OfLong(value)); }
    void Return(bool value) { Return(Value::OfFlag(value)); }
    void Return(const std::wstring& text) { Return(Value::OfText(text)); }
    void Return(OfficeInt value);
    void Return(Date value) { Return(Value::OfDate(value.value)); }
    void Return(IDispatch* object);  // may be NULL; adds a reference for the caller
    void Return(const Value& value);
    void ReturnOutside(IUnknown* object);     // one that is not the stand-in's own: a picture, an add-in's object
    void ReturnEnumerator(IUnknown* object);  // takes over the reference

    // Reads the value of a put.
    void Read(long& value) const { value = Long(0); }
    void Read(int& value) const { value = static_cast<int>(Long(0)); }
    void Read(bool& value) const { value = FlagOr(0, false); }
    void Read(std::wstring& value) const { value = Text(0); }
    void Read(IDispatch*& value) const { value = Dispatch(0); }

  private:
    [[nodiscard]] Value As(std::size_t number, VARTYPE type) const;

    const Member& member_;
    bool put_;
    std::vector<const VARIANT*> arguments_;  // by number; null when omitted
    std::vector<unsigned> places_;
    VARIANT* result_;
};

}  // namespace standin
