#include "outlook/Object.h"

#include <olectl.h>

#include <algorithm>

#include "outlook/Host.h"
#include "outlook/TypeInfo.h"
#include "outlook/Words.h"

namespace standin {

// --- texts for the transcript ---

namespace {

// Of the stand-in's own objects the name; the others are not looked into.
std::string ObjectText(const Gate& gate, const IUnknown* pointer) {
    for (const auto& [serial, counted] : gate.Objects()) {
        const auto* object = dynamic_cast<const Object*>(counted);
        if (object && static_cast<const IDispatch*>(object) == pointer) return object->Name();
    }
    return pointer ? "(object)" : "Nothing";
}

std::string ArgumentText(const Gate& gate, const VARIANT& argument) {
    switch (argument.vt) {
        case VT_EMPTY: return "Empty";
        case VT_ERROR: return {};
        case VT_BSTR: return Quote(Ansi(Value(argument).Text()));
        case VT_BOOL: return argument.boolVal ? "True" : "False";
        case VT_DISPATCH:
        case VT_UNKNOWN: return ObjectText(gate, argument.punkVal);
        default: return Ansi(Value(argument).Text());
    }
}

std::string ArgumentsText(const Gate& gate, const DISPPARAMS* parameters) {
    std::string text;
    for (UINT i = parameters ? parameters->cArgs : 0; i-- > 0;) {
        text += ArgumentText(gate, parameters->rgvarg[i]);
        if (i != 0) text += ", ";
    }
    return text;
}

std::string ResultText(const Gate& gate, const VARIANT* result) {
    if (!result || result->vt == VT_EMPTY) return {};
    return " -> " + ArgumentText(gate, *result);
}

bool IsPutFlag(WORD flags) { return (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0; }

// `window.CommandBars("Menu Bar")`: arguments for a property that has none are meant for the collection in it.
bool IsShorthand(const Member& member, const DISPPARAMS& parameters) {
    return member.kinds == DISPATCH_PROPERTYGET && *member.parameters == '\0' && parameters.cArgs != 0;
}

HRESULT WINAPI FillLate(EXCEPINFO* exception) {
    const HRESULT scode = exception->scode;
    *exception = EXCEPINFO{};
    return FillException(exception, scode, L"The operation failed.", false) == DISP_E_EXCEPTION ? S_OK : E_FAIL;
}

}  // namespace

HRESULT FillException(EXCEPINFO* exception, HRESULT scode, const wchar_t* description, bool deferred) {
    if (!exception) return DISP_E_EXCEPTION;
    *exception = EXCEPINFO{};
    exception->scode = scode;
    if (deferred) {
        exception->pfnDeferredFillIn = &FillLate;
        return DISP_E_EXCEPTION;
    }
    exception->bstrSource = SysAllocString(L"Microsoft Outlook");
    exception->bstrDescription = SysAllocString(description);
    exception->bstrHelpFile = SysAllocString(L"outlook.hlp");
    return DISP_E_EXCEPTION;
}

EventArgument::EventArgument(Object* object) : text(object ? object->Name() : "Nothing") {
    value.vt = VT_DISPATCH;
    value.pdispVal = object;  // borrowed: the receiver adds its own reference
}

EventArgument::EventArgument(const std::wstring& given) : words(given), text(Quote(Ansi(given))) { value.vt = VT_BSTR; }

EventArgument::EventArgument(VARIANT_BOOL* cancel) : text("Cancel") {
    value.vt = VT_BOOL | VT_BYREF;
    value.pboolVal = cancel;
}

// --- the object ---

Object::Object(std::shared_ptr<Gate> gate) : Counted(std::move(gate)) {}
Object::~Object() = default;

Result Object::GetApplication() { return TheHost().Application(); }
Result Object::GetSession() { return TheHost().NameSpace(); }

STDMETHODIMP Object::QueryInterface(REFIID iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch)
        *out = static_cast<IDispatch*>(this);
    else if (iid == IID_IOleWindow && HasFrame())
        *out = static_cast<IOleWindow*>(this);
    else if (iid == IID_IConnectionPointContainer)
        return QueryContainer(out);
    if (!*out) {
        // Asked by COM itself of any object; everything else is worth knowing.
        if (iid == Type().iid)
            TheGate().Complain(Name() + ": early binding to " + Type().interfaceName + " is not offered");
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

HRESULT Object::QueryContainer(void** out) {
    return TheGate().Pass({
        .member = [this] { return Type().PlainName() + ".QueryInterface"; },
        .request = [this] { return Name() + ".QueryInterface(IConnectionPointContainer)"; },
        .result = [] { return std::string(); },
        .work =
            [this, out] {
                if (Type().events.empty()) return E_NOINTERFACE;
                *out = static_cast<IConnectionPointContainer*>(this);
                AddRef();
                return S_OK;
            },
        .spoil = [](const Fault& fault) { return fault.kind == Fault::Kind::Empty ? S_OK : fault.code; },
        .detail = true,
    });
}

STDMETHODIMP Object::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
}

STDMETHODIMP Object::GetTypeInfo(UINT index, LCID, ITypeInfo** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return TheGate().Pass({
        .member = [this] { return Type().PlainName() + ".GetTypeInfo"; },
        .request = [this] { return Name() + ".GetTypeInfo"; },
        .result = [this] { return " -> " + std::string(Type().interfaceName); },
        .work =
            [this, index, out] {
                if (index != 0) return DISP_E_BADINDEX;
                auto* info = new TypeInfo(SharedGate(), Type(), Version());
                info->AddRef();
                *out = info;
                return S_OK;
            },
        .spoil = [](const Fault& fault) { return fault.kind == Fault::Kind::Empty ? S_OK : fault.code; },
        .detail = true,
    });
}

STDMETHODIMP Object::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (!names || !ids || count == 0) return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    return TheGate().Pass({
        .member = [this] { return Type().PlainName() + ".GetIDsOfNames"; },
        .request = [this, names] { return Name() + ".GetIDsOfNames(" + Ansi(names[0]) + ")"; },
        .result = [ids] { return " -> " + Hex(static_cast<unsigned long>(ids[0])); },
        .work = [=, this] { return LookUp(names, count, ids); },
        .spoil = [](const Fault& fault) { return fault.kind == Fault::Kind::Empty ? S_OK : fault.code; },
        .detail = true,
    });
}

HRESULT Object::LookUp(LPOLESTR* names, UINT count, DISPID* ids) {
    const Member* member = Type().Find(Ansi(names[0]), Version());
    if (!member) {
        TheGate().complaints.push_back(Name() + " has no " + Ansi(names[0]));
        return DISP_E_UNKNOWNNAME;
    }
    ids[0] = member->id;
    HRESULT answer = S_OK;
    for (UINT i = 1; i < count; ++i) {
        ids[i] = NumberOfParameter(member->id, Ansi(names[i]));
        if (ids[i] == DISPID_UNKNOWN) answer = DISP_E_UNKNOWNNAME;
    }
    return answer;
}

DISPID Object::NumberOfParameter(DISPID id, const std::string& name) const {
    for (const Members table : Type().tables) {
        for (const Member& member : table) {
            if (member.id != id || member.since > Version()) continue;
            const std::vector<std::string> names = ParameterNames(member);
            for (std::size_t number = 0; number < names.size(); ++number) {
                std::string plain = names[number];
                if (plain.back() == '?') plain.pop_back();
                if (SameName(plain, name)) return static_cast<DISPID>(number);
            }
        }
    }
    return DISPID_UNKNOWN;
}

STDMETHODIMP Object::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                            EXCEPINFO* exception, UINT* badArgument) {
    if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (!parameters) return E_INVALIDARG;
    if (result) VariantInit(result);
    const Ref<Object> alive(this);  // the call may end with the last reference gone
    const auto memberName = [this, id, flags] {
        const Member* member = Type().Find(id, flags, Version());
        return member ? std::string(member->name) : Hex(static_cast<unsigned long>(id));
    };
    return TheGate().Pass({
        .member = [&] { return Type().PlainName() + "." + memberName(); },
        .request =
            [&] {
                const std::string arguments = ArgumentsText(TheGate(), parameters);
                const std::string text = Name() + "." + memberName();
                if (IsPutFlag(flags)) return text + " = " + arguments;
                return arguments.empty() ? text : text + "(" + arguments + ")";
            },
        .result = [&] { return ResultText(TheGate(), result); },
        .work = [&] { return Carry(id, flags, *parameters, result, exception, badArgument); },
        .spoil =
            [&](const Fault& fault) {
                if (fault.kind == Fault::Kind::Empty) return S_OK;
                if (fault.kind == Fault::Kind::Fails || fault.kind == Fault::Kind::Refused) return fault.code;
                return FillException(exception, fault.code, L"The operation failed.",
                                     fault.kind == Fault::Kind::DeferredException);
            },
    });
}

HRESULT Object::Carry(DISPID id, WORD flags, const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                      UINT* badArgument) {
    const HRESULT over = TheGate().Over() != S_OK ? TheGate().Over() : Gone();
    try {
        if (over != S_OK) Refuse(over);
        const Member* member = Type().Find(id, flags, Version());
        if (!member) Refuse(DISP_E_MEMBERNOTFOUND);
        if (IsShorthand(*member, parameters))
            return CarryOn(*member, flags, parameters, result, exception, badArgument);
        Call call(*member, flags, parameters, result);
        member->handler(*this, call);
        return S_OK;
    } catch (const Failure& failure) {
        return Answer(failure, exception, badArgument);
    }
}

// Read as `window.CommandBars.Item("Menu Bar")`, as Windows' own dispatching reads it.
HRESULT Object::CarryOn(const Member& member, WORD flags, const DISPPARAMS& parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) {
    Value collection;
    Call call(member, flags, DISPPARAMS{}, &collection);
    member.handler(*this, call);
    if (collection.vt != VT_DISPATCH || !collection.pdispVal) Refuse(DISP_E_BADPARAMCOUNT);
    DISPPARAMS arguments = parameters;
    return collection.pdispVal->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments, result,
                                       exception, badArgument);
}

HRESULT Object::Answer(const Failure& failure, EXCEPINFO* exception, UINT* badArgument) const {
    if (failure.code == DISP_E_TYPEMISMATCH && badArgument) *badArgument = failure.argument;
    if (!failure.description.empty()) return FillException(exception, failure.code, failure.description.c_str(), false);
    if (TheGate().failuresAsExceptions) return FillException(exception, failure.code, L"The method failed.", false);
    return failure.code;
}

STDMETHODIMP Object::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = TheGate().Over() == S_OK && Gone() == S_OK ? Frame() : nullptr;
    return *window ? S_OK : E_FAIL;
}

// --- events ---

STDMETHODIMP Object::EnumConnectionPoints(IEnumConnectionPoints** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    TheGate().Complain(Name() + ": EnumConnectionPoints is not offered");
    return E_NOTIMPL;
}

STDMETHODIMP Object::FindConnectionPoint(REFIID iid, IConnectionPoint** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    const auto setName = [&] {
        for (const EventSet& set : Type().events)
            if (set.diid == iid) return std::string(set.name);
        return std::string("unknown set");
    };
    return TheGate().Pass({
        .member = [this] { return Type().PlainName() + ".FindConnectionPoint"; },
        .request = [&] { return Name() + ".FindConnectionPoint(" + setName() + ")"; },
        .result = [] { return std::string(); },
        .work = [&] { return FindPoint(iid, out); },
        .spoil = [](const Fault& fault) { return fault.kind == Fault::Kind::Empty ? S_OK : fault.code; },
        .detail = true,
    });
}

HRESULT Object::FindPoint(REFIID iid, IConnectionPoint** out) {
    for (const Ref<ConnectionPoint>& point : points_) {
        if (point->Set().diid != iid) continue;
        point->AddRef();
        *out = point.get();
        return S_OK;
    }
    for (const EventSet& set : Type().events) {
        if (set.diid != iid || set.since > Version()) continue;
        points_.push_back(Make<ConnectionPoint>(*this, set));
        points_.back()->AddRef();
        *out = points_.back().get();
        return S_OK;
    }
    return CONNECT_E_NOCONNECTION;
}

int Object::Sinks() const {
    int count = 0;
    for (const Ref<ConnectionPoint>& point : points_) count += static_cast<int>(point->Sinks().size());
    return count;
}

std::vector<std::string> Object::AdviseNames() const {
    std::vector<std::string> names;
    for (const Ref<ConnectionPoint>& point : points_) names.insert(names.end(), point->Sinks().size(), point->Name());
    return names;
}

void Object::DropSinks() {
    for (const Ref<ConnectionPoint>& point : points_) point->DropSinks();
}

int Object::Raise(const Event& event, const std::vector<EventArgument>& arguments) {
    const Ref<Object> alive(this);
    std::vector<VARIANT> reversed;
    for (auto it = arguments.rbegin(); it != arguments.rend(); ++it) {
        VARIANT value = it->value;
        if (value.vt == VT_BSTR) value.bstrVal = SysAllocString(it->words.c_str());
        reversed.push_back(value);
    }
    int called = 0;
    const std::vector<Ref<ConnectionPoint>> points = points_;
    for (const Ref<ConnectionPoint>& point : points) {
        if (point->Set().level < event.level) continue;
        const std::vector<ConnectionPoint::Advised> sinks = point->Sinks();
        for (const ConnectionPoint::Advised& advised : sinks) {
            if (!point->Has(advised.cookie)) continue;  // unadvised by a sink before it
            ++called;
            CallSink(advised.sink.get(), event, arguments, reversed);
        }
    }
    for (VARIANT& value : reversed)
        if (value.vt == VT_BSTR) VariantClear(&value);
    return called;
}

void Object::CallSink(IDispatch* sink, const Event& event, const std::vector<EventArgument>& arguments,
                      std::vector<VARIANT>& reversed) {
    const auto text = [&] {
        std::string words = Name() + ": " + event.name + "(";
        for (std::size_t i = 0; i < arguments.size(); ++i) words += (i ? ", " : "") + arguments[i].text;
        return words + ")";
    };
    const Gate::Outward outward(TheGate(), text);
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    EXCEPINFO exception{};
    UINT badArgument = 0;
    Value result;
    const HRESULT answer = sink->Invoke(event.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result,
                                        &exception, &badArgument);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    if (FAILED(answer)) TheGate().Complain("sink of " + text() + " answers " + Hex(static_cast<unsigned long>(answer)));
}

// --- connection points ---

ConnectionPoint::ConnectionPoint(Object& owner, const EventSet& set)
    : Counted(owner.SharedGate()), owner_(owner), set_(set) {}

std::string ConnectionPoint::Name() const { return owner_.Name() + " " + set_.name; }

bool ConnectionPoint::Has(DWORD cookie) const {
    return std::any_of(sinks_.begin(), sinks_.end(), [&](const Advised& advised) { return advised.cookie == cookie; });
}

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (iid != IID_IUnknown && iid != IID_IConnectionPoint) return E_NOINTERFACE;
    *out = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* iid) {
    if (!iid) return E_POINTER;
    *iid = set_.diid;
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** out) {
    if (!out) return E_POINTER;
    *out = static_cast<IConnectionPointContainer*>(&owner_);
    (*out)->AddRef();
    return S_OK;
}

Visit ConnectionPoint::Through(const char* member, const std::string& arguments) const {
    return {
        .member = [this, member] { return owner_.Type().PlainName() + "." + member; },
        .request = [this, member, arguments] { return Name() + "." + member + "(" + arguments + ")"; },
        .result = [] { return std::string(); },
        .work = {},
        .spoil = {},
        .detail = false,
    };
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (!sink || !cookie) return E_POINTER;
    *cookie = 0;
    Visit visit = Through("Advise", "");
    visit.work = [&] { return Take(sink, cookie); };
    visit.result = [cookie] { return " -> " + std::to_string(*cookie); };
    visit.spoil = [](const Fault& fault) { return fault.kind == Fault::Kind::Empty ? S_OK : fault.code; };
    return TheGate().Pass(visit);
}

HRESULT ConnectionPoint::Take(IUnknown* sink, DWORD* cookie) {
    const HRESULT over = TheGate().Over() != S_OK ? TheGate().Over() : owner_.Gone();
    if (over != S_OK) return over;
    Theirs<IDispatch> taken;
    if (FAILED(sink->QueryInterface(set_.diid, taken.put())) || !taken) return CONNECT_E_CANNOTCONNECT;
    *cookie = TheGate().nextCookie++;
    sinks_.push_back({*cookie, taken});
    return S_OK;
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
    const Ref<ConnectionPoint> alive(this);
    Visit visit = Through("Unadvise", std::to_string(cookie));
    visit.work = [&] { return Cut(cookie); };
    visit.spoil = [&](const Fault& fault) {
        // Told to fail, it cuts all the same, so that a test does not leak by it, unless that is what is asked for.
        if (fault.kind != Fault::Kind::Refused) Cut(cookie);
        return fault.kind == Fault::Kind::Empty ? S_OK : fault.code;
    };
    return TheGate().Pass(visit);
}

HRESULT ConnectionPoint::Cut(DWORD cookie) {
    const auto found =
        std::find_if(sinks_.begin(), sinks_.end(), [&](const Advised& advised) { return advised.cookie == cookie; });
    if (found == sinks_.end()) {
        if (TheGate().Over() == S_OK) TheGate().Complain(Name() + ": Unadvise of an unknown cookie");
        return CONNECT_E_NOCONNECTION;
    }
    const Theirs<IDispatch> last = found->sink;  // released after it is off the list
    sinks_.erase(found);
    return S_OK;
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return E_NOTIMPL;
}

}  // namespace standin
