#include "unit/standins/outlook/client.h"

#include <oleauto.h>

namespace client {

std::string Join(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    return text;
}

namespace {

std::wstring Wide(const char* text) {
    std::wstring wide;
    for (; *text; ++text) wide.push_back(static_cast<unsigned char>(*text));
    return wide;
}

std::string Narrow(BSTR text) {
    std::string narrow;
    for (UINT i = 0; text && i < SysStringLen(text); ++i) narrow.push_back(static_cast<char>(text[i]));
    return narrow;
}

}  // namespace

Variant::Variant(const char* text) : Variant() {
    vt = VT_BSTR;
    bstrVal = SysAllocString(Wide(text).c_str());
}

Variant Variant::Omitted() {
    Variant omitted;
    omitted.vt = VT_ERROR;
    omitted.scode = DISP_E_PARAMNOTFOUND;
    return omitted;
}

Object Answer::AsObject() const {
    if (value.vt != VT_DISPATCH || !value.pdispVal) return {};
    value.pdispVal->AddRef();
    return Object(value.pdispVal);
}

std::string Answer::AsText() const { return value.vt == VT_BSTR ? Narrow(value.bstrVal) : std::string("<no text>"); }

int Answer::AsNumber() const {
    if (value.vt == VT_I4) return static_cast<int>(value.lVal);
    if (value.vt == VT_INT) return value.intVal;
    if (value.vt == VT_BOOL) return value.boolVal;
    return -999;
}

HRESULT LookUp(const Object& object, const char* name, DISPID& id) {
    std::wstring wide = Wide(name);
    LPOLESTR names[] = {wide.data()};
    return object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
}

DISPID IdOf(const Object& object, const char* name) {
    DISPID id = DISPID_UNKNOWN;
    return SUCCEEDED(LookUp(object, name, id)) ? id : DISPID_UNKNOWN;
}

Answer Invoke(const Object& object, DISPID id, WORD flags, const std::vector<Variant>& arguments) {
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPID put = DISPID_PROPERTYPUT;
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS parameters{reversed.data(), isPut ? &put : nullptr, static_cast<UINT>(reversed.size()), isPut ? 1U : 0U};
    EXCEPINFO exception{};
    Answer answer;
    answer.code = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, isPut ? nullptr : &answer.value,
                                 &exception, nullptr);
    if (answer.code == DISP_E_EXCEPTION) {
        if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
        answer.scode = exception.scode;
        answer.description = Narrow(exception.bstrDescription);
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        SysFreeString(exception.bstrHelpFile);
    }
    return answer;
}

namespace {

Answer ByName(const Object& object, const char* name, WORD flags, const std::vector<Variant>& arguments) {
    DISPID id = DISPID_UNKNOWN;
    const HRESULT known = LookUp(object, name, id);
    if (SUCCEEDED(known)) return Invoke(object, id, flags, arguments);
    Answer answer;
    answer.code = known;
    return answer;
}

}  // namespace

Answer Get(const Object& object, const char* name, const std::vector<Variant>& arguments) {
    return ByName(object, name, DISPATCH_PROPERTYGET, arguments);
}
Answer Put(const Object& object, const char* name, const Variant& value, WORD flags) {
    return ByName(object, name, flags, {value});
}
Answer Call(const Object& object, const char* name, const std::vector<Variant>& arguments) {
    return ByName(object, name, DISPATCH_METHOD, arguments);
}

GUID Id(unsigned long first) { return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}}; }

HRESULT FindPoint(const Object& source, unsigned long set, Com<IConnectionPoint>& point) {
    Com<IConnectionPointContainer> container;
    const HRESULT offered = source->QueryInterface(IID_IConnectionPointContainer, container.putVoid());
    return FAILED(offered) ? offered : container->FindConnectionPoint(Id(set), point.put());
}

Sink::Sink(const Object& source, unsigned long set, Handler handler) : set_(Id(set)), handler_(std::move(handler)) {
    advised_ = FindPoint(source, set, point_);
    if (SUCCEEDED(advised_)) advised_ = point_->Advise(static_cast<IUnknown*>(this), &cookie_);
}

Sink::~Sink() {
    if (cookie_ != 0) Cut();
}

HRESULT Sink::Cut() {
    const HRESULT answered = point_ ? point_->Unadvise(cookie_) : E_FAIL;
    Leave();
    return answered;
}

STDMETHODIMP Sink::QueryInterface(REFIID iid, void** out) {
    *out = nullptr;
    if (iid != IID_IUnknown && iid != IID_IDispatch && iid != set_) return E_NOINTERFACE;
    *out = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP Sink::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*, UINT*) {
    events.push_back(id);
    lastFlags = flags;
    if (handler_) handler_(id, *parameters);
    return answer;
}

STDMETHODIMP AddIn::QueryInterface(REFIID iid, void** out) {
    *out = nullptr;
    if (iid != IID_IUnknown && iid != IID_IDispatch && iid != standin::iidExtensibility) return E_NOINTERFACE;
    *out = static_cast<standin::Extensibility*>(this);
    AddRef();
    return S_OK;
}

HRESULT AddIn::Note(const std::string& what, SAFEARRAY** array) {
    told.push_back(what);
    long first = -1, lower = 0;
    if (array && *array && SUCCEEDED(SafeArrayGetLBound(*array, 1, &lower)) && lower == 1) {
        Variant value;
        if (SUCCEEDED(SafeArrayGetElement(*array, &lower, &value)) && value.vt == VT_I4) first = value.lVal;
    }
    custom.push_back(first);
    if (onAny) onAny(what);
    return S_OK;
}

STDMETHODIMP AddIn::OnConnection(IDispatch* app, int mode, IDispatch* me, SAFEARRAY** array) {
    Note("OnConnection " + std::to_string(mode), array);
    return onConnection ? onConnection(app, me) : S_OK;
}

Host::Host(const standin::Options& options) : outlook(options) {
    outlook.IgnoreRegistry();
    outlook.Start();
    application = Object(outlook.Application());
}

Object Host::Explorer(int number) const {
    return Call(Get(application, "Explorers").AsObject(), "Item", {number}).AsObject();
}
Object Host::Bar(const char* name, int explorer) const {
    return Get(Get(Explorer(explorer), "CommandBars").AsObject(), "Item", {name}).AsObject();
}
Object Host::Controls(const char* bar, int explorer) const { return Get(Bar(bar, explorer), "Controls").AsObject(); }

Object Host::Button(const char* tag, int explorer) const {
    const Variant none = Variant::Omitted();
    Object button = Call(Controls("Standard", explorer), "Add", {1, none, none, none, true}).AsObject();
    Put(button, "Tag", tag);
    Put(button, "Caption", tag);
    return button;
}

}  // namespace client
