#include "platform/com/Dispatch.h"

#include <memory>
#include <utility>

#include "platform/Err.h"
#include "platform/SystemError.h"
#include "platform/com/Com.h"

namespace platform {
namespace {

// The host's own error information, whose three strings are ours to free.
class ExceptionInfo : public EXCEPINFO {
  public:
    ExceptionInfo() noexcept : EXCEPINFO{} {}
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
    ~ExceptionInfo() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }
    [[nodiscard]] std::int32_t Number() {
        if (pfnDeferredFillIn) pfnDeferredFillIn(this);
        if (scode != 0) return static_cast<std::int32_t>(scode);
        return wCode != 0 ? wCode : static_cast<std::int32_t>(DISP_E_EXCEPTION);
    }
};

void RecordFailure(const char* member, HRESULT result, ExceptionInfo* thrown = nullptr) {
    const bool explained = result == DISP_E_EXCEPTION && thrown;
    const std::int32_t number = explained ? thrown->Number() : static_cast<std::int32_t>(result);
    std::string reason = explained ? TextOf(thrown->bstrDescription) : std::string();
    if (reason.empty()) reason = SystemMessage(number);
    RecordStatus(number, std::string(member) + ": " + reason);
}

void Fill(VARIANTARG& target, const Argument& argument) {
    switch (argument.Holds()) {
        case Argument::Kind::None:
            target.vt = VT_ERROR;
            target.scode = DISP_E_PARAMNOTFOUND;
            break;
        case Argument::Kind::Number:
            target.vt = VT_I4;
            target.lVal = argument.Number();
            break;
        case Argument::Kind::Flag:
            target.vt = VT_BOOL;
            target.boolVal = argument.Flag() ? VARIANT_TRUE : VARIANT_FALSE;
            break;
        case Argument::Kind::Text:
            target.vt = VT_BSTR;
            target.bstrVal = Bstr(argument.Text()).Detach();
            break;
        case Argument::Kind::Object:
            target.vt = VT_DISPATCH;
            target.pdispVal = ComPtr<IDispatch>::Copy(argument.Object().Get()).Detach();
            break;
    }
}

// False, with the pending error set, when the object has no member of that name.
bool FindId(IDispatch* object, const Member& member, DISPID& id) {
    std::wstring name = Widen(member.Name());
    LPOLESTR names = name.data();
    const HRESULT status = object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(status)) RecordFailure(member.Name(), status);
    return SUCCEEDED(status);
}

// The one place that knows how a late-bound call is made: arguments in reverse order, the name that a
// property's new value bears, and the host's error information. True when the host returned a success.
bool Invoke(IDispatch* object, const Member& member, WORD kind, std::initializer_list<Argument> arguments,
            VARIANT* result) {
    // The object may let go of itself during the call.
    const ComPtr<IDispatch> kept = ComPtr<IDispatch>::Copy(object);
    DISPID id = member.Id();
    if (id == DISPID_UNKNOWN && !FindId(object, member, id)) return false;
    Variant single;  // most calls have no more than one argument
    const std::unique_ptr<Variant[]> several(arguments.size() > 1 ? new Variant[arguments.size()] : nullptr);
    Variant* const values = several ? several.get() : &single;
    std::size_t slot = arguments.size();
    for (const Argument& argument : arguments) Fill(values[--slot], argument);

    DISPID newValue = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{values, nullptr, static_cast<UINT>(arguments.size()), 0};
    if (kind == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &newValue;
        parameters.cNamedArgs = 1;
    }
    ExceptionInfo thrown;
    UINT badArgument = 0;
    const auto invoke = [&] {
        return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result, &thrown, &badArgument);
    };
    HRESULT status = invoke();
    if (status == DISP_E_MEMBERNOTFOUND && member.Id() != DISPID_UNKNOWN) {
        if (!FindId(object, member, id)) return false;
        status = invoke();
    }
    if (SUCCEEDED(status)) return true;
    RecordFailure(member.Name(), status, &thrown);
    return false;
}

constexpr WORD readOrCall = DISPATCH_PROPERTYGET | DISPATCH_METHOD;

// The result of a member as the type asked for; `answer` is VT_EMPTY where there is none.
bool Read(IDispatch* object, const Member& member, std::initializer_list<Argument> arguments, VARTYPE type,
          Variant& answer) {
    Variant raw;
    if (!Invoke(object, member, readOrCall, arguments, &raw)) return false;
    if (raw.vt == VT_EMPTY || raw.vt == VT_NULL) return false;
    if (raw.vt == type) {
        std::swap<VARIANT>(answer, raw);
        return true;
    }
    const HRESULT status = VariantChangeType(&answer, &raw, 0, type);
    if (SUCCEEDED(status)) return true;
    RecordFailure(member.Name(), status == DISP_E_TYPEMISMATCH ? static_cast<HRESULT>(TypeMismatch) : status);
    return false;
}

}  // namespace

Dispatch Dispatch::Attach(IDispatch* object) noexcept { return Dispatch(object); }

Dispatch Dispatch::Copy(IDispatch* object) noexcept { return Dispatch(ComPtr<IDispatch>::Copy(object).Detach()); }

Dispatch::Dispatch(const Dispatch& other) noexcept : Dispatch(Copy(other.object_)) {}

Dispatch::Dispatch(Dispatch&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

Dispatch& Dispatch::operator=(Dispatch other) noexcept {
    std::swap(object_, other.object_);
    return *this;
}

Dispatch::~Dispatch() { Reset(); }

void Dispatch::Reset() noexcept {
    if (IDispatch* object = std::exchange(object_, nullptr)) object->Release();
}

Dispatch Dispatch::GetObjectMember(const Member& member, ArgumentList arguments) const {
    Variant answer;
    if (!Invoke(object_, member, readOrCall, arguments, &answer)) return {};
    if (answer.vt == VT_DISPATCH) return Copy(answer.pdispVal);
    if (answer.vt == VT_UNKNOWN && answer.punkVal) {
        const ComPtr<IUnknown> object = ComPtr<IUnknown>::Copy(answer.punkVal);
        if (ComPtr<IDispatch> dispatch = object.As<IDispatch>(IID_IDispatch)) return Attach(dispatch.Detach());
    }
    Err().Set(ObjectRequired, std::string(member.Name()) + ": Object required");
    return {};
}

std::string Dispatch::GetTextMember(const Member& member, ArgumentList arguments) const {
    Variant answer;
    return Read(object_, member, arguments, VT_BSTR, answer) ? TextOf(answer.bstrVal) : std::string();
}

std::int32_t Dispatch::GetLongMember(const Member& member, ArgumentList arguments) const {
    Variant answer;
    return Read(object_, member, arguments, VT_I4, answer) ? answer.lVal : 0;
}

bool Dispatch::GetFlagMember(const Member& member, ArgumentList arguments) const {
    Variant answer;
    return Read(object_, member, arguments, VT_BOOL, answer) && answer.boolVal != VARIANT_FALSE;
}

bool Dispatch::CallMember(const Member& member, ArgumentList arguments) const {
    Variant answer;
    return Invoke(object_, member, DISPATCH_METHOD, arguments, &answer);
}

bool Dispatch::Put(const Member& member, const Argument& value) const {
    return object_ && Invoke(object_, member, DISPATCH_PROPERTYPUT, {value}, nullptr);
}

Identity Compare(const Dispatch& left, const Dispatch& right) noexcept {
    if (!left || !right) return Identity::Unknown;
    if (left.Get() == right.Get()) return Identity::Same;
    const auto first = ComPtr<IDispatch>::Copy(left.Get()).As<IUnknown>(IID_IUnknown);
    const auto second = ComPtr<IDispatch>::Copy(right.Get()).As<IUnknown>(IID_IUnknown);
    if (!first || !second) return Identity::Unknown;
    return first.Get() == second.Get() ? Identity::Same : Identity::Different;
}

Dispatch CreateObject(std::string_view programId) {
    CLSID classId{};
    HRESULT status = CLSIDFromProgID(Widen(programId).c_str(), &classId);
    ComPtr<IDispatch> object;
    if (SUCCEEDED(status)) {
        status = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                  object.PutVoid());
    }
    if (FAILED(status)) RecordFailure(std::string(programId).c_str(), status);
    return Dispatch::Attach(object.Detach());
}

}  // namespace platform
