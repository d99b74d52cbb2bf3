#include "outlook/AddIns.h"

#include <algorithm>

#include "outlook/ClassLookup.h"
#include "outlook/Enumerator.h"
#include "outlook/Handlers.h"
#include "outlook/Host.h"
#include "outlook/RibbonHost.h"
#include "outlook/SwitchedOff.h"
#include "outlook/Words.h"

namespace standin {

namespace {

constexpr char addInsKey[] = "Software\\Microsoft\\Office\\Outlook\\Addins";

constexpr Member addInHead[] = {Get<&Object::GetApplication>("Application", 0x60020000)};
constexpr Member addInMembers[] = {
    Get<&AddInObject::GetDescription>("Description", 0), Put<&AddInObject::PutDescription>("Description", 0),
    Get<&AddInObject::GetProgId>("ProgId", 3),           Get<&AddInObject::GetGuid>("Guid", 4),
    Get<&AddInObject::GetConnect>("Connect", 6),         Put<&AddInObject::PutConnect>("Connect", 6),
    Get<&AddInObject::GetObject_>("Object", 7),          Put<&AddInObject::PutObject>("Object", 7),
    PutRef<&AddInObject::PutObject>("Object", 7),        Get<&AddInObject::GetParent>("Parent", 8),
};
constexpr Member addInsMembers[] = {
    Method<&AddInsObject::CallItem>("Item", 0, "Index"),
    Get<&AddInsObject::GetCount>("Count", 1),
    Get<&AddInsObject::GetEnumerator>("_NewEnum", DISPID_NEWENUM),
    Method<&AddInsObject::CallUpdate>("Update", 2),
    Get<&Object::GetApplication>("Parent", 3),
    Method<&AddInsObject::CallSetAppModal>("SetAppModal", 4, "varfModal"),
};

class Key {
  public:
    Key(HKEY root, const std::string& path, REGSAM access) { RegOpenKeyExA(root, path.c_str(), 0, access, &key_); }
    ~Key() {
        if (key_) RegCloseKey(key_);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    [[nodiscard]] std::string Text(const char* name) const {
        char text[1024] = "";
        DWORD size = sizeof text - 1, type = 0;
        if (!key_ ||
            RegQueryValueExA(key_, name, nullptr, &type, reinterpret_cast<BYTE*>(text), &size) != ERROR_SUCCESS)
            return {};
        return type == REG_SZ ? text : "";
    }
    [[nodiscard]] int Number(const char* name) const {
        DWORD number = 0, size = sizeof number, type = 0;
        if (!key_ ||
            RegQueryValueExA(key_, name, nullptr, &type, reinterpret_cast<BYTE*>(&number), &size) != ERROR_SUCCESS)
            return 0;
        return type == REG_DWORD ? static_cast<int>(number) : 0;
    }
    void SetNumber(const char* name, int value) const {
        const DWORD number = static_cast<DWORD>(value);
        if (key_) RegSetValueExA(key_, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
    }
    [[nodiscard]] std::vector<std::string> SubKeys() const {
        std::vector<std::string> names;
        char name[256];
        for (DWORD i = 0; key_ && RegEnumKeyA(key_, i, name, sizeof name) == ERROR_SUCCESS; ++i)
            names.emplace_back(name);
        return names;
    }

  private:
    HKEY key_ = nullptr;
};

std::string PathOf(const std::string& progId) { return std::string(addInsKey) + "\\" + progId; }

// The `custom` array of one call, in the shape that the options ask for.
class Custom {
  public:
    Custom(CustomArray shape, long first, bool filled) : shape_(shape) {
        if (shape != CustomArray::AsDocumented) return;
        SAFEARRAYBOUND bound{filled ? 1U : 0U, 1};
        array_ = SafeArrayCreate(VT_VARIANT, 1, &bound);
        if (!filled) return;
        LONG index = 1;
        Value value = Value::OfLong(first);
        SafeArrayPutElement(array_, &index, &value);
    }
    ~Custom() {
        if (array_) SafeArrayDestroy(array_);
    }
    Custom(const Custom&) = delete;
    Custom& operator=(const Custom&) = delete;
    [[nodiscard]] SAFEARRAY** Get() { return shape_ == CustomArray::NullPointer ? nullptr : &array_; }

  private:
    CustomArray shape_;
    SAFEARRAY* array_ = nullptr;
};

}  // namespace

AddInList::AddInList(Host& host, std::shared_ptr<Gate> gate) : host_(host), gate_(std::move(gate)) {
    list_ = Make<AddInsObject>(gate_);
}
AddInList::~AddInList() = default;

void AddInList::Use(const std::string& progId, IUnknown* source, int loadBehavior) {
    AddIn* addIn = Find(progId);
    if (!addIn) addIn = addIns_.emplace_back(std::make_shared<AddIn>()).get();
    addIn->progId = progId;
    addIn->loadBehavior = loadBehavior;
    addIn->source = Theirs<IUnknown>(source);
}

void AddInList::ReadRegistry() {
    // The user's own entry hides the machine's of the same name.
    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
        for (const std::string& progId : Key(root, addInsKey, KEY_READ).SubKeys())
            if (!Find(progId)) ReadOne(root, progId);
}

void AddInList::ReadOne(HKEY root, const std::string& progId) {
    const Key key(root, PathOf(progId), KEY_READ);
    auto addIn = std::make_shared<AddIn>();
    addIn->progId = progId;
    addIn->friendlyName = key.Text("FriendlyName");
    addIn->description = key.Text("Description");
    addIn->loadBehavior = key.Number("LoadBehavior");
    addIn->wantsShutdown = key.Number("RequireShutdownNotification") == 1;
    addIn->registered = true;
    addIns_.push_back(std::move(addIn));
}

void AddInList::LoadAtStart() {
    for (const auto& addIn : addIns_) {
        const bool bootLoad = (addIn->loadBehavior & 3) == 3, firstTime = addIn->loadBehavior == 16;
        if (!bootLoad && !firstTime) continue;
        if (addIn->registered && IsSwitchedOff(host_.TheOptions().version, addIn->progId)) continue;
        const bool loaded = Load(*addIn, ConnectMode::Startup);
        if (loaded && firstTime) SetLoadBehavior(*addIn, 9);
        if (!loaded && bootLoad) SetLoadBehavior(*addIn, addIn->loadBehavior & ~1);
    }
    TellUpdate();
}

Theirs<Extensibility> AddInList::Create(const AddIn& addIn) const {
    Theirs<IUnknown> object = addIn.source ? addIn.source : CreateByProgId(addIn.progId);
    Theirs<IClassFactory> factory;
    if (object && SUCCEEDED(object->QueryInterface(IID_IClassFactory, factory.put())))
        factory->CreateInstance(nullptr, IID_IUnknown, object.put());
    Theirs<Extensibility> created;
    if (object) object->QueryInterface(iidExtensibility, created.put());
    return created;
}

bool AddInList::Tell(AddIn& addIn, const std::string& what, const std::function<HRESULT(Extensibility&)>& call) {
    const Theirs<Extensibility> alive = addIn.loaded;
    const Gate::Outward outward(*gate_, [&] { return addIn.progId + ": " + what; });
    const HRESULT answer = call(*alive.get());
    if (FAILED(answer))
        gate_->Complain(addIn.progId + ": " + what + " answers " + Hex(static_cast<unsigned long>(answer)));
    return SUCCEEDED(answer);
}

bool AddInList::Load(AddIn& addIn, ConnectMode mode) {
    if (addIn.loaded) return false;
    addIn.loaded = Create(addIn);
    if (!addIn.loaded) {
        gate_->Complain(addIn.progId + " could not be created");
        return false;
    }
    const bool accepted = Connect(addIn, mode);
    if (accepted && addIn.loaded) {
        host_.Ribbons().Add(addIn.progId, addIn.loaded.get(), mode == ConnectMode::AfterStartup);
    } else {
        addIn.published = {};
        addIn.loaded = {};
    }
    return accepted;
}

bool AddInList::Connect(AddIn& addIn, ConnectMode mode) {
    const long startedBy = host_.TheOptions().startedBy == StartedBy::User ? 1 : 3;
    Custom custom(host_.TheOptions().customArray, startedBy, true);
    const Ref<standin::Object> self = ObjectOf(addIn);
    return Tell(addIn, mode == ConnectMode::Startup ? "OnConnection(Startup)" : "OnConnection(AfterStartup)",
                [&](Extensibility& object) {
                    return object.OnConnection(host_.Application().get(), static_cast<int>(mode), self.get(),
                                               custom.Get());
                });
}

void AddInList::ConnectAgain(const std::string& progId) {
    AddIn* addIn = Find(progId);
    if (addIn && addIn->loaded) Connect(*addIn, ConnectMode::AfterStartup);
}

bool AddInList::Unload(AddIn& addIn, DisconnectMode mode) {
    if (!addIn.loaded) return false;
    Custom custom(host_.TheOptions().customArray, 0, false);
    Tell(addIn, mode == DisconnectMode::UserClosed ? "OnDisconnection(UserClosed)" : "OnDisconnection(HostShutdown)",
         [&](Extensibility& object) { return object.OnDisconnection(static_cast<int>(mode), custom.Get()); });
    host_.Ribbons().Remove(addIn.progId);
    addIn.published = {};
    addIn.loaded = {};
    return true;
}

bool AddInList::LoadByUser(const std::string& progId) {
    if (!Find(progId)) ReadRegistry();
    AddIn* addIn = Find(progId);
    if (!addIn || !Load(*addIn, ConnectMode::AfterStartup)) return false;
    SetLoadBehavior(*addIn, addIn->loadBehavior | 1);
    TellUpdate();
    return true;
}

bool AddInList::UnloadByUser(const std::string& progId) {
    AddIn* addIn = Find(progId);
    if (!addIn || !Unload(*addIn, DisconnectMode::UserClosed)) return false;
    SetLoadBehavior(*addIn, addIn->loadBehavior & ~1);
    TellUpdate();
    return true;
}

void AddInList::LoadOnDemand(const std::string& progId) {
    AddIn* addIn = Find(progId);
    if (!addIn || addIn->loaded || !Load(*addIn, ConnectMode::AfterStartup)) return;
    if (addIn->loadBehavior == 8) SetLoadBehavior(*addIn, 9);
    TellUpdate();
}

void AddInList::TellUpdate() {
    for (const auto& addIn : addIns_) {
        if (!addIn->loaded) continue;
        Custom custom(host_.TheOptions().customArray, 0, false);
        Tell(*addIn, "OnAddInsUpdate", [&](Extensibility& object) { return object.OnAddInsUpdate(custom.Get()); });
    }
    host_.ContentsChanged();
}

void AddInList::TellStartupComplete() {
    for (const auto& addIn : addIns_) {
        if (!addIn->loaded) continue;
        Custom custom(host_.TheOptions().customArray, 0, false);
        Tell(*addIn, "OnStartupComplete",
             [&](Extensibility& object) { return object.OnStartupComplete(custom.Get()); });
    }
}

void AddInList::Shutdown(bool onlyThoseAsking) {
    const auto told = [&](const AddIn& addIn) { return addIn.loaded && (!onlyThoseAsking || addIn.wantsShutdown); };
    for (const auto& addIn : addIns_) {
        if (!told(*addIn)) continue;
        Custom custom(host_.TheOptions().customArray, 0, false);
        Tell(*addIn, "OnBeginShutdown", [&](Extensibility& object) { return object.OnBeginShutdown(custom.Get()); });
    }
    for (const auto& addIn : addIns_)
        if (told(*addIn)) Unload(*addIn, DisconnectMode::HostShutdown);
}

void AddInList::ReleaseAll() {
    for (const auto& addIn : addIns_) {
        addIn->published = {};
        addIn->loaded = {};
    }
}

void AddInList::SetLoadBehavior(AddIn& addIn, int value) {
    addIn.loadBehavior = value;
    if (addIn.registered) Key(HKEY_CURRENT_USER, PathOf(addIn.progId), KEY_SET_VALUE).SetNumber("LoadBehavior", value);
}

AddIn* AddInList::Find(const std::string& progId) const {
    for (const auto& addIn : addIns_)
        if (SameText(Wide(addIn->progId), Wide(progId))) return addIn.get();
    return nullptr;
}

Result AddInList::Object() { return list_; }

Result AddInList::ObjectOf(AddIn& addIn) {
    Ref<AddInObject>& object = objects_[&addIn];
    if (object) return object;
    for (const auto& known : addIns_)
        if (known.get() == &addIn) object = Make<AddInObject>(gate_, known);
    return object;
}

// --- COMAddIn ---

const TypeDescription& AddInObject::Type() const {
    static const TypeDescription type{"COMAddIn", OfficeGuid(0x000C033A), {addInHead, addInMembers}};
    return type;
}

std::wstring AddInObject::GetDescription() { return Wide(addIn_->description); }
void AddInObject::PutDescription(const std::wstring& description) { addIn_->description = Ansi(description); }
std::wstring AddInObject::GetProgId() { return Wide(addIn_->progId); }

std::wstring AddInObject::GetGuid() {
    CLSID classId;
    wchar_t text[64] = L"";
    if (FindClassId(addIn_->progId, classId)) StringFromGUID2(classId, text, 64);
    return text;
}

void AddInObject::PutConnect(bool connect) {
    if (connect == GetConnect()) return;
    const bool done =
        connect ? TheHost().AddIns().LoadByUser(addIn_->progId) : TheHost().AddIns().UnloadByUser(addIn_->progId);
    if (!done) Refuse(E_FAIL);
}

void AddInObject::PutObject(IDispatch* object) {
    addIn_->published = Theirs<IDispatch>(object);
    TheHost().ContentsChanged();
}

Result AddInObject::GetParent() { return TheHost().AddIns().Object(); }

// --- COMAddIns ---

const TypeDescription& AddInsObject::Type() const {
    static const TypeDescription type{"COMAddIns", OfficeGuid(0x000C0339), {addInHead, addInsMembers}};
    return type;
}

Result AddInsObject::CallItem(Call& call) {
    AddInList& list = TheHost().AddIns();
    if (call.IsText(0)) {
        AddIn* addIn = list.Find(Ansi(call.Text(0)));
        if (!addIn) Refuse(E_INVALIDARG);
        return list.ObjectOf(*addIn);
    }
    const long index = call.Long(0);
    if (index < 1 || index > GetCount()) Refuse(DISP_E_BADINDEX);
    return list.ObjectOf(*list.All()[static_cast<std::size_t>(index - 1)]);
}

long AddInsObject::GetCount() { return static_cast<long>(TheHost().AddIns().All().size()); }

void AddInsObject::GetEnumerator(Call& call) {
    std::vector<Result> objects;
    for (const auto& addIn : TheHost().AddIns().All()) objects.push_back(TheHost().AddIns().ObjectOf(*addIn));
    ReturnEnumerator(call, *this, objects);
}

}  // namespace standin
