#include "platform/com/Sink.h"

#include <utility>

#include "platform/Err.h"
#include "platform/Guard.h"
#include "platform/Module.h"
#include "platform/SystemError.h"
#include "platform/com/Com.h"

namespace platform {
namespace {

static_assert(sizeof(InterfaceId) == sizeof(GUID));

IID AsIid(const InterfaceId& id) {
    return {id.data1,
            id.data2,
            id.data3,
            {id.data4[0], id.data4[1], id.data4[2], id.data4[3], id.data4[4], id.data4[5], id.data4[6], id.data4[7]}};
}

IConnectionPoint* Point(void* point) { return static_cast<IConnectionPoint*>(point); }

}  // namespace

// One object that a source calls; lives as long as anybody holds it, but passes nothing on once cut.
class EventSink final : public IDispatch {
  public:
    EventSink(const IID& events, Connection::Receiver receiver)
        : events_(events), receiver_(std::make_shared<Connection::Receiver>(std::move(receiver))) {}

    void Cut() noexcept { receiver_.reset(); }

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (!object) return E_POINTER;
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch) || IsEqualIID(id, events_);
        *object = known ? static_cast<IDispatch*>(this) : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count) *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** information) override {
        if (information) *information = nullptr;
        return DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        const std::shared_ptr<Connection::Receiver> receiver = receiver_;  // the event may end the connection
        if (!receiver || !parameters) return S_OK;
        RunGuarded([&] { (*receiver)(event, EventArguments(*parameters)); });
        return S_OK;
    }

  private:
    ~EventSink() = default;

    KeepLoaded keepLoaded_;  // a host that refuses to let go of the sink may still call it
    ULONG references_ = 1;
    IID events_;
    std::shared_ptr<Connection::Receiver> receiver_;
};

std::size_t EventArguments::Count() const noexcept { return parameters_.cArgs; }

Dispatch EventArguments::Object(std::size_t number) const noexcept {
    if (number >= Count() || !parameters_.rgvarg) return {};
    const VARIANTARG& argument = parameters_.rgvarg[Count() - 1 - number];  // the last one stands first
    if (argument.vt == VT_DISPATCH) return Dispatch::Copy(argument.pdispVal);
    if (argument.vt == (VT_DISPATCH | VT_BYREF) && argument.ppdispVal) return Dispatch::Copy(*argument.ppdispVal);
    if (argument.vt == VT_UNKNOWN && argument.punkVal) {
        const auto object = ComPtr<IUnknown>::Copy(argument.punkVal);
        return Dispatch::Attach(object.As<IDispatch>(IID_IDispatch).Detach());
    }
    return {};
}

Connection::Connection(const Dispatch& source, const InterfaceId& events, Receiver receiver) {
    if (!source) return;
    const IID id = AsIid(events);
    const auto object = ComPtr<IDispatch>::Copy(source.Get());
    ComPtr<IConnectionPointContainer> container;
    HRESULT status = object->QueryInterface(IID_IConnectionPointContainer, container.PutVoid());
    if (SUCCEEDED(status) && !container) status = E_NOINTERFACE;
    ComPtr<IConnectionPoint> point;
    if (SUCCEEDED(status)) status = container->FindConnectionPoint(id, point.Put());
    if (SUCCEEDED(status) && !point) status = CONNECT_E_NOCONNECTION;
    if (FAILED(status)) {
        RecordStatus(static_cast<std::int32_t>(status));
        return;
    }

    auto* sink = new EventSink(id, std::move(receiver));
    DWORD cookie = 0;
    status = point->Advise(sink, &cookie);
    if (SUCCEEDED(status) && cookie == 0) status = CONNECT_E_CANNOTCONNECT;
    if (FAILED(status)) {
        sink->Cut();
        sink->Release();
        RecordStatus(static_cast<std::int32_t>(status));
        return;
    }
    sink_ = sink;
    point_ = point.Detach();
    cookie_ = cookie;
}

Connection::Connection(Connection&& other) noexcept
    : point_(std::exchange(other.point_, nullptr)),
      sink_(std::exchange(other.sink_, nullptr)),
      cookie_(std::exchange(other.cookie_, 0u)) {}

Connection& Connection::operator=(Connection&& other) noexcept {
    if (this == &other) return *this;
    End();
    point_ = std::exchange(other.point_, nullptr);
    sink_ = std::exchange(other.sink_, nullptr);
    cookie_ = std::exchange(other.cookie_, 0u);
    return *this;
}

Connection::~Connection() { End(); }

void Connection::End() noexcept {
    EventSink* sink = std::exchange(sink_, nullptr);
    if (!sink) return;
    const DWORD lastError = GetLastError();
    sink->Cut();
    const auto point = ComPtr<IConnectionPoint>::Attach(Point(std::exchange(point_, nullptr)));
    point->Unadvise(cookie_);
    sink->Release();
    SetLastError(lastError);
}

}  // namespace platform
