// outlook/AddIns.h: the list of COM add-ins: finding, loading, telling and unloading them; COMAddIns and COMAddIn.
//
// Effects  Reads the add-ins under Software\Microsoft\Office\Outlook\Addins of the user, and of the machine where the
//          user has none of that name; writes LoadBehavior under the user's key alone.
#pragma once
#include "outlook/Extensibility.h"
#include "outlook/Object.h"

namespace standin {

class AddInObject;

struct AddIn {
    std::string progId, friendlyName, description;
    int loadBehavior = 0;
    bool registered = false;       // in the registry, and kept up to date there
    bool wantsShutdown = false;    // RequireShutdownNotification
    Theirs<IUnknown> source;       // a class factory or the add-in, when it is not to be created through COM
    Theirs<Extensibility> loaded;  // empty while it is not connected
    Theirs<IDispatch> published;   // COMAddIn.Object
};

class AddInList {
  public:
    AddInList(Host& host, std::shared_ptr<Gate> gate);
    ~AddInList();

    void Use(const std::string& progId, IUnknown* source, int loadBehavior);
    void ReadRegistry();
    void LoadAtStart();
    // False when it is loaded already, unknown, cannot be created or refuses.
    bool Load(AddIn& addIn, ConnectMode mode);
    bool Connect(AddIn& addIn, ConnectMode mode);
    bool Unload(AddIn& addIn, DisconnectMode mode);  // as the user does it
    bool LoadByUser(const std::string& progId);
    bool UnloadByUser(const std::string& progId);
    void LoadOnDemand(const std::string& progId);
    void ConnectAgain(const std::string& progId);
    void TellStartupComplete();
    // OnBeginShutdown of all, then OnDisconnection of all, and their release. `onlyThoseAsking`: see wantsShutdown.
    void Shutdown(bool onlyThoseAsking);
    void ReleaseAll();

    [[nodiscard]] AddIn* Find(const std::string& progId) const;
    [[nodiscard]] const std::vector<std::shared_ptr<AddIn>>& All() const { return addIns_; }
    Result Object();
    Result ObjectOf(AddIn& addIn);

  private:
    void ReadOne(HKEY root, const std::string& progId);
    void TellUpdate();
    void SetLoadBehavior(AddIn& addIn, int value);
    [[nodiscard]] Theirs<Extensibility> Create(const AddIn& addIn) const;
    bool Tell(AddIn& addIn, const std::string& what, const std::function<HRESULT(Extensibility&)>& call);

    Host& host_;
    std::shared_ptr<Gate> gate_;
    std::vector<std::shared_ptr<AddIn>> addIns_;
    std::map<AddIn*, Ref<AddInObject>> objects_;
    Result list_;
};

class AddInObject : public Object {
  public:
    AddInObject(std::shared_ptr<Gate> gate, std::shared_ptr<AddIn> addIn)
        : Object(std::move(gate)), addIn_(std::move(addIn)) {}
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "COMAddIn " + addIn_->progId; }

    std::wstring GetDescription();
    void PutDescription(const std::wstring& description);
    std::wstring GetProgId();
    std::wstring GetGuid();
    bool GetConnect() { return static_cast<bool>(addIn_->loaded); }
    void PutConnect(bool connect);
    void GetObject_(Call& call) { call.ReturnOutside(addIn_->published.get()); }
    void PutObject(IDispatch* object);
    Result GetParent();

  private:
    std::shared_ptr<AddIn> addIn_;
};

class AddInsObject : public Object {
  public:
    using Object::Object;
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "COMAddIns"; }

    Result CallItem(Call& call);
    long GetCount();
    void GetEnumerator(Call& call);
    void CallUpdate() {}
    void CallSetAppModal(Call&) {}
};

}  // namespace standin
