#include "bench/replay/Recorder.h"

#include <ocidl.h>

#include <map>
#include <string>

#include "bench/replay/AddIn.h"
#include "bench/replay/Recording.h"
#include "bench/replay/WindowsCalls.h"
#include "testing/ImportPatch.h"

namespace Bench {

Recording* recording = nullptr;

namespace {

// What the add-in gets in place of one reference to an object of the host.
template <class Interface>
class Tapped : public Interface {
  public:
    Tapped(Interface* real, int slot) : real_(real), slot_(slot) {}  // takes the reference
    Tapped(const Tapped&) = delete;
    Tapped& operator=(const Tapped&) = delete;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

  protected:
    virtual ~Tapped() {
        recording->LetGo(slot_);
        real_->Release();
    }
    Interface* real_;
    int slot_;

  private:
    ULONG references_ = 1;
};

class TappedObject;
std::map<IUnknown*, TappedObject*>& TappedObjects() {
    static std::map<IUnknown*, TappedObject*> objects;
    return objects;
}

class TappedObject final : public Tapped<IDispatch> {
  public:
    TappedObject(IDispatch* real, int slot) : Tapped(real, slot) { TappedObjects()[this] = this; }
    [[nodiscard]] IDispatch* Real() const { return real_; }
    [[nodiscard]] int Slot() const { return slot_; }

    STDMETHODIMP QueryInterface(REFIID id, void** object) override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return real_->GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        recording->whole = false;
        return real_->GetTypeInfo(index, locale, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID id, OLECHAR** names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID locale, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override;

  private:
    ~TappedObject() override { TappedObjects().erase(this); }
};

// The wrapper of an object that the add-in gets a reference to; `real` passes over.
TappedObject* Tap(IDispatch* real) { return new TappedObject(real, recording->NewObject()); }

// --- arguments

// Those of one call, kept for the replay: texts are copied, objects are slots.
struct Arguments {
    std::vector<VARIANT> values;
    std::vector<int> slots;
    DISPID named = 0;
    bool hasName = false;

    Arguments() = default;
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments() {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (slots[i] == noSlot) VariantClear(&values[i]);
        }
    }
    [[nodiscard]] DISPPARAMS Parameters(const Slots& from) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (slots[i] != noSlot) values[i].pdispVal = from.Object(slots[i]);
        }
        return {values.data(), hasName ? &named : nullptr, static_cast<UINT>(values.size()), hasName ? 1u : 0u};
    }
};

IUnknown* IdentityOf(IUnknown* object) {
    IUnknown* identity = nullptr;
    object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity));
    if (identity) identity->Release();
    return identity;
}

// The slot of an object that the add-in hands to the host; `passed` becomes what the host knows.
int SlotOf(VARIANT& passed, std::size_t step) {
    const auto tapped = TappedObjects().find(passed.punkVal);
    if (tapped != TappedObjects().end()) {
        passed.pdispVal = tapped->second->Real();
        return tapped->second->Slot();
    }
    const int picture = recording->UsePicture(IdentityOf(passed.punkVal), step);
    if (picture == noSlot) recording->whole = false;
    return picture;
}

std::shared_ptr<Arguments> Keep(const DISPPARAMS& parameters, std::vector<VARIANT>& passed, std::size_t step) {
    auto kept = std::make_shared<Arguments>();
    for (UINT i = 0; i < parameters.cArgs; ++i) {
        passed.push_back(parameters.rgvarg[i]);
        const bool object = passed[i].vt == VT_DISPATCH && passed[i].pdispVal;
        kept->slots.push_back(object ? SlotOf(passed[i], step) : noSlot);
        VARIANT value = passed[i];
        if (!object) {
            VariantInit(&value);
            VariantCopy(&value, &passed[i]);
        }
        kept->values.push_back(value);
    }
    kept->hasName = parameters.cNamedArgs == 1;
    if (kept->hasName) kept->named = parameters.rgdispidNamedArgs[0];
    if (parameters.cNamedArgs > 1) recording->whole = false;
    return kept;
}

void FreeTexts(const EXCEPINFO& exception) {
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
}

// --- connection points

class SinkTap final : public WithoutNames<IDispatch> {
  public:
    SinkTap(IUnknown* real, int number) : number_(number) {
        real->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&real_));
    }
    ~SinkTap() override { real_->Release(); }
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        void* theirs = nullptr;
        *object = nullptr;
        if (FAILED(real_->QueryInterface(id, &theirs))) return E_NOINTERFACE;
        real_->Release();
        *object = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID event, REFIID id, LCID locale, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override;

  private:
    int number_;
    IDispatch* real_ = nullptr;
};

class PointTap final : public Tapped<IConnectionPoint> {
  public:
    using Tapped::Tapped;
    STDMETHODIMP QueryInterface(REFIID id, void** object) override { return real_->QueryInterface(id, object); }
    STDMETHODIMP GetConnectionInterface(IID* id) override { return real_->GetConnectionInterface(id); }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer**) override { return E_NOTIMPL; }
    STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override {
        const std::size_t step = recording->Begin(Step::Kind::HostCall);
        const int number = recording->tape.sinks++, kept = recording->NewCookie();
        auto* tapped = new SinkTap(sink, number);
        const HRESULT status = real_->Advise(tapped, cookie);
        tapped->Release();
        cookies_[*cookie] = kept;
        recording->End(step, [slot = slot_, number, kept, status](Slots& slots) {
            DWORD again = 0;
            auto* point = static_cast<IConnectionPoint*>(slots.objects[static_cast<std::size_t>(slot)]);
            const HRESULT answer = point->Advise(slots.sinks[static_cast<std::size_t>(number)], &again);
            Bench::Keep(slots.cookies, kept, again);
            return answer == status;
        });
        return status;
    }
    STDMETHODIMP Unadvise(DWORD cookie) override {
        const std::size_t step = recording->Begin(Step::Kind::HostCall);
        const HRESULT status = real_->Unadvise(cookie);
        recording->End(step, [slot = slot_, kept = cookies_[cookie], status](Slots& slots) {
            auto* point = static_cast<IConnectionPoint*>(slots.objects[static_cast<std::size_t>(slot)]);
            return point->Unadvise(slots.cookies[static_cast<std::size_t>(kept)]) == status;
        });
        return status;
    }

  private:
    std::map<DWORD, int> cookies_;
};

class ContainerTap final : public Tapped<IConnectionPointContainer> {
  public:
    using Tapped::Tapped;
    STDMETHODIMP QueryInterface(REFIID id, void** object) override { return real_->QueryInterface(id, object); }
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        const std::size_t step = recording->Begin(Step::Kind::HostCall);
        IConnectionPoint* found = nullptr;
        const HRESULT status = real_->FindConnectionPoint(id, &found);
        const int result = found ? recording->NewObject() : noSlot;
        *point = found ? new PointTap(found, result) : nullptr;
        recording->End(step, [slot = slot_, events = id, result, status](Slots& slots) {
            IConnectionPoint* again = nullptr;
            auto* container = static_cast<IConnectionPointContainer*>(slots.objects[static_cast<std::size_t>(slot)]);
            const HRESULT answer = container->FindConnectionPoint(events, &again);
            if (again) Bench::Keep<IUnknown*>(slots.objects, result, again);
            return answer == status && (again != nullptr) == (result != noSlot);
        });
        return status;
    }
};

// --- objects

STDMETHODIMP TappedObject::QueryInterface(REFIID id, void** object) {
    if (id == IID_IDispatch) {
        AddRef();
        *object = static_cast<IDispatch*>(this);
        return S_OK;
    }
    if (id != IID_IConnectionPointContainer) return real_->QueryInterface(id, object);  // identity is the host's
    const std::size_t step = recording->Begin(Step::Kind::HostCall);
    IConnectionPointContainer* container = nullptr;
    const HRESULT status = real_->QueryInterface(id, reinterpret_cast<void**>(&container));
    const int result = container ? recording->NewObject() : noSlot;
    *object = container ? static_cast<IConnectionPointContainer*>(new ContainerTap(container, result)) : nullptr;
    recording->End(step, [slot = slot_, result, status](Slots& slots) {
        IConnectionPointContainer* again = nullptr;
        const HRESULT answer =
            slots.Object(slot)->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&again));
        if (again) Bench::Keep<IUnknown*>(slots.objects, result, again);
        return answer == status && (again != nullptr) == (result != noSlot);
    });
    return status;
}

STDMETHODIMP TappedObject::GetIDsOfNames(REFIID id, OLECHAR** names, UINT count, LCID locale, DISPID* ids) {
    const std::size_t step = recording->Begin(Step::Kind::HostCall);
    const HRESULT status = real_->GetIDsOfNames(id, names, count, locale, ids);
    if (count != 1) recording->whole = false;
    recording->End(step, [slot = slot_, name = std::wstring(names[0]), status](Slots& slots) {
        DISPID found = DISPID_UNKNOWN;
        auto* text = const_cast<OLECHAR*>(name.c_str());
        return slots.Object(slot)->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &found) == status;
    });
    return status;
}

STDMETHODIMP TappedObject::Invoke(DISPID id, REFIID, LCID locale, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                                  EXCEPINFO* exception, UINT* badArgument) {
    const std::size_t step = recording->Begin(Step::Kind::HostCall);
    std::vector<VARIANT> passed;
    const std::shared_ptr<Arguments> arguments = Keep(*parameters, passed, step);
    DISPPARAMS theirs = *parameters;
    theirs.rgvarg = passed.data();
    const HRESULT status = real_->Invoke(id, IID_NULL, locale, kind, &theirs, result, exception, badArgument);
    int object = noSlot;
    if (result && result->vt == VT_UNKNOWN) recording->whole = false;
    if (result && result->vt == VT_DISPATCH && result->pdispVal) {
        TappedObject* const tapped = Tap(result->pdispVal);
        object = tapped->Slot();
        result->pdispVal = tapped;
    }
    recording->End(step, [slot = slot_, id, kind, arguments, asked = result != nullptr, object, status](Slots& slots) {
        DISPPARAMS again = arguments->Parameters(slots);
        VARIANT value;
        VariantInit(&value);
        EXCEPINFO failure{};
        UINT wrong = 0;
        const HRESULT answer = slots.Object(slot)->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &again,
                                                          asked ? &value : nullptr, &failure, &wrong);
        if (answer == DISP_E_EXCEPTION) FreeTexts(failure);
        const bool isObject = value.vt == VT_DISPATCH && value.pdispVal;
        if (isObject && object != noSlot) {
            Bench::Keep<IUnknown*>(slots.objects, object, value.pdispVal);
        } else {
            VariantClear(&value);
        }
        return answer == status && isObject == (object != noSlot);
    });
    return status;
}

// --- the host's calls of the add-in

// The objects among the arguments as the add-in gets them, wrapped for the length of the call.
class Wrapped {
  public:
    explicit Wrapped(const DISPPARAMS& parameters) : values_(parameters.rgvarg, parameters.rgvarg + parameters.cArgs) {
        for (std::size_t place = values_.size(); place-- > 0;) {
            VARIANT& value = values_[place];
            if (value.vt != VT_DISPATCH || !value.pdispVal) continue;
            value.pdispVal->AddRef();
            TappedObject* const tapped = Tap(value.pdispVal);
            value.pdispVal = tapped;
            objects_.push_back(tapped);
            slots_.push_back(tapped->Slot());
        }
    }
    ~Wrapped() {
        for (TappedObject* object : objects_) object->Release();
    }
    Wrapped(const Wrapped&) = delete;
    Wrapped& operator=(const Wrapped&) = delete;
    [[nodiscard]] std::vector<VARIANT>& Values() { return values_; }
    [[nodiscard]] const std::vector<int>& Slots() const { return slots_; }

  private:
    std::vector<VARIANT> values_;
    std::vector<TappedObject*> objects_;
    std::vector<int> slots_;
};

// `call` gets the wrapped arguments, reversed as they came.
template <class Call>
HRESULT CallIn(const Door& door, const DISPPARAMS& parameters, Call&& call) {
    HRESULT status = S_OK;
    {
        Wrapped wrapped(parameters);
        recording->Enter(door, wrapped.Slots());
        status = call(wrapped.Values());
    }
    recording->Leave();
    return status;
}

STDMETHODIMP SinkTap::Invoke(DISPID event, REFIID id, LCID locale, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                             EXCEPINFO* exception, UINT* badArgument) {
    return CallIn({Door::Kind::Event, number_, event}, *parameters, [&](std::vector<VARIANT>& values) {
        DISPPARAMS theirs = *parameters;
        theirs.rgvarg = values.data();
        return real_->Invoke(event, id, locale, kind, &theirs, result, exception, badArgument);
    });
}

class TappedAddIn final : public WithoutNames<standin::Extensibility> {
  public:
    explicit TappedAddIn(IUnknown* made) {
        made->QueryInterface(standin::iidExtensibility, reinterpret_cast<void**>(&real_));
        made->QueryInterface(ribbonExtensibilityId, reinterpret_cast<void**>(&ribbon_));
        made->Release();
    }
    ~TappedAddIn() override {
        In(Door::Kind::End, [this] {
            if (ribbon_) ribbon_->Release();
            real_->Release();
            return S_OK;
        });
    }
    STDMETHODIMP QueryInterface(REFIID id, void** object) override;
    STDMETHODIMP OnConnection(IDispatch* application, int mode, IDispatch* addIn, SAFEARRAY** custom) override {
        VARIANT reversed[] = {ObjectArgument(addIn), ObjectArgument(application)};
        return CallIn({Door::Kind::Connection}, {reversed, nullptr, 2, 0}, [&](std::vector<VARIANT>& values) {
            return real_->OnConnection(values[1].pdispVal, mode, values[0].pdispVal, custom);
        });
    }
    STDMETHODIMP OnDisconnection(int mode, SAFEARRAY** custom) override {
        return In(Door::Kind::Disconnection, [&] { return real_->OnDisconnection(mode, custom); });
    }
    STDMETHODIMP OnAddInsUpdate(SAFEARRAY** custom) override {
        return In(Door::Kind::AddInsUpdate, [&] { return real_->OnAddInsUpdate(custom); });
    }
    STDMETHODIMP OnStartupComplete(SAFEARRAY** custom) override {
        return In(Door::Kind::StartupComplete, [&] { return real_->OnStartupComplete(custom); });
    }
    STDMETHODIMP OnBeginShutdown(SAFEARRAY** custom) override {
        return In(Door::Kind::BeginShutdown, [&] { return real_->OnBeginShutdown(custom); });
    }
    HRESULT CustomUI(BSTR ribbonId, BSTR* xml) {
        recording->Enter({Door::Kind::CustomUI});
        const HRESULT status = ribbon_->GetCustomUI(ribbonId, xml);
        recording->Leave(*xml ? std::wstring(*xml, SysStringLen(*xml)) : std::wstring());
        return status;
    }

  private:
    template <class Call>
    HRESULT In(Door::Kind kind, Call&& call) {
        return CallIn({kind}, {}, [&](std::vector<VARIANT>&) { return call(); });
    }
    standin::Extensibility* real_ = nullptr;
    standin::RibbonExtensibility* ribbon_ = nullptr;
};

class TappedRibbon final : public WithoutNames<standin::RibbonExtensibility> {
  public:
    explicit TappedRibbon(TappedAddIn& addIn) : addIn_(addIn) { addIn_.AddRef(); }
    ~TappedRibbon() override { addIn_.Release(); }
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (id == IID_IDispatch || id == ribbonExtensibilityId) {
            *object = static_cast<standin::RibbonExtensibility*>(this);
            AddRef();
            return S_OK;
        }
        return addIn_.QueryInterface(id, object);
    }
    STDMETHODIMP GetCustomUI(BSTR ribbonId, BSTR* xml) override { return addIn_.CustomUI(ribbonId, xml); }

  private:
    TappedAddIn& addIn_;
};

STDMETHODIMP TappedAddIn::QueryInterface(REFIID id, void** object) {
    if (id == ribbonExtensibilityId && ribbon_) {
        *object = static_cast<standin::RibbonExtensibility*>(new TappedRibbon(*this));
        return S_OK;
    }
    const bool known = id == IID_IUnknown || id == IID_IDispatch || id == standin::iidExtensibility;
    *object = known ? static_cast<standin::Extensibility*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
}

IUnknown* MadeBy(IUnknown* factory) {
    IUnknown* made = nullptr;
    static_cast<IClassFactory*>(factory)->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&made));
    return new TappedAddIn(made);
}

}  // namespace

struct Recorder::AtWork {
    AtWork(HMODULE library, IUnknown* real) : factory([real] { return MadeBy(real); }) {
        recording = &tape;
        imports.Replace(library, recordedCalls);
    }
    ~AtWork() { recording = nullptr; }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

    Recording tape;
    ImportPatch imports;
    FactoryOf factory;
};

Recorder::Recorder(HMODULE library, IUnknown* factory) : atWork_(std::make_unique<AtWork>(library, factory)) {}
Recorder::~Recorder() = default;

IUnknown* Recorder::Factory() const { return &atWork_->factory; }
bool Recorder::Whole() const { return atWork_->tape.whole; }

std::shared_ptr<const Tape> Recorder::Finish() {
    atWork_->tape.LetPicturesGo();
    return std::make_shared<const Tape>(std::move(atWork_->tape.tape));
}

}  // namespace Bench
