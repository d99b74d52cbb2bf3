// outlook/Object.h: what every object of the model has in common: IDispatch over tables, connection points, and the
// way of each call through the gate.
//
// Owns    A model object is kept by the stand-in through Ref and by the outside through AddRef; it is destroyed when
//         neither is left. Handlers run only while the session does and Gone() is S_OK.
#pragma once
#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>

#include <memory>
#include <string>
#include <vector>

#include "outlook/Call.h"
#include "outlook/Gate.h"
#include "outlook/Member.h"

namespace standin {

class ConnectionPoint;

// One argument of an event, in the order of its declaration.
struct EventArgument {
    VARIANT value{};
    std::wstring words;             // of a VT_BSTR
    std::string text;               // for the transcript
    EventArgument(Object* object);  // NOLINT: meant to convert
    explicit EventArgument(const std::wstring& given);
    explicit EventArgument(VARIANT_BOOL* cancel);
};

class Object : public Counted, public IDispatch, public IConnectionPointContainer, public IOleWindow {
  public:
    explicit Object(std::shared_ptr<Gate> gate);
    ~Object() override;

    [[nodiscard]] virtual const TypeDescription& Type() const = 0;
    // S_OK, or what every member returns because the thing is no more.
    [[nodiscard]] virtual HRESULT Gone() const { return S_OK; }
    [[nodiscard]] virtual bool HasFrame() const { return false; }
    [[nodiscard]] virtual HWND Frame() const { return nullptr; }
    [[nodiscard]] Host& TheHost() const { return TheGate().TheHost(); }
    [[nodiscard]] int Version() const { return TheGate().Version(); }

    // Calls the sinks of this object, in the order in which they were advised. How many were called.
    int Raise(const Event& event, const std::vector<EventArgument>& arguments = {});
    [[nodiscard]] int Sinks() const;
    [[nodiscard]] std::vector<std::string> AdviseNames() const;
    void DropSinks();

    // Members that most objects have.
    Result GetApplication();
    Result GetSession();

    STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return AddOutside(); }
    STDMETHODIMP_(ULONG) Release() override { return ReleaseOutside(); }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** out) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override;
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** out) override;
    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** out) override;
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

  private:
    HRESULT Carry(DISPID id, WORD flags, const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                  UINT* badArgument);
    HRESULT CarryOn(const Member& member, WORD flags, const DISPPARAMS& parameters, VARIANT* result,
                    EXCEPINFO* exception, UINT* badArgument);
    HRESULT Answer(const Failure& failure, EXCEPINFO* exception, UINT* badArgument) const;
    HRESULT LookUp(LPOLESTR* names, UINT count, DISPID* ids);
    HRESULT QueryContainer(void** out);
    HRESULT FindPoint(REFIID iid, IConnectionPoint** out);
    [[nodiscard]] DISPID NumberOfParameter(DISPID id, const std::string& name) const;
    void CallSink(IDispatch* sink, const Event& event, const std::vector<EventArgument>& arguments,
                  std::vector<VARIANT>& reversed);

    std::vector<Ref<ConnectionPoint>> points_;
};

class ConnectionPoint : public Counted, public IConnectionPoint {
  public:
    ConnectionPoint(Object& owner, const EventSet& set);

    [[nodiscard]] std::string Name() const override;
    [[nodiscard]] const EventSet& Set() const { return set_; }
    struct Advised {
        DWORD cookie;
        Theirs<IDispatch> sink;
    };
    [[nodiscard]] const std::vector<Advised>& Sinks() const { return sinks_; }
    [[nodiscard]] bool Has(DWORD cookie) const;
    void DropSinks() { std::vector<Advised>().swap(sinks_); }

    STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return AddOutside(); }
    STDMETHODIMP_(ULONG) Release() override { return ReleaseOutside(); }
    STDMETHODIMP GetConnectionInterface(IID* iid) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** out) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** out) override;

  protected:
    void FirstOutside() override { owner_.Hold(); }  // whoever has the point has the object
    void LastOutside() override { owner_.Drop(); }

  private:
    HRESULT Take(IUnknown* sink, DWORD* cookie);
    HRESULT Cut(DWORD cookie);
    [[nodiscard]] Visit Through(const char* member, const std::string& arguments) const;

    Object& owner_;
    const EventSet& set_;
    std::vector<Advised> sinks_;
};

// The object of the stand-in that `pointer` is, when it is a T; null for anything else.
template <class T>
T* Ours(const Gate& gate, const IUnknown* pointer) {
    for (const auto& [serial, counted] : gate.Objects()) {
        T* object = dynamic_cast<T*>(counted);
        if (object && static_cast<IDispatch*>(object) == pointer) return object;
    }
    return nullptr;
}

// Fills `exception` (may be null) as Outlook does and returns DISP_E_EXCEPTION.
HRESULT FillException(EXCEPINFO* exception, HRESULT scode, const wchar_t* description, bool deferred);

}  // namespace standin
