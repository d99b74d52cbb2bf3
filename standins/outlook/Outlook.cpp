#include "outlook/Outlook.h"

#include <objbase.h>

#include <algorithm>
#include <stdexcept>

#include "outlook/BuiltInBars.h"
#include "outlook/Session.h"
#include "outlook/UserObjects.h"
#include "outlook/Words.h"

namespace standin {

namespace {

WindowObject& WindowOf(const Session& session, Window window) {
    WindowObject* found = session.FindWindow(window.number);
    if (!found) throw std::out_of_range("no such window: " + std::to_string(window.number));
    return *found;
}

ExplorerObject& ExplorerOf(const Session& session, Window window) {
    auto* found = dynamic_cast<ExplorerObject*>(&WindowOf(session, window));
    if (!found) throw std::out_of_range("no Explorer: " + std::to_string(window.number));
    return *found;
}

ItemObject& ItemOf(const Session& session, Item item) {
    ItemObject* found = session.FindItem(item.number);
    if (!found) throw std::out_of_range("no such item: " + std::to_string(item.number));
    return *found;
}

void MustRun(const Session& session) {
    if (!session.Started() || session.HowItEnded() != Ending::StillRunning)
        throw std::logic_error("the host is not running");
}

// Fields that a test or a user writes: a wrong name or text is the caller's mistake.
void Fill(ItemObject& item, const Fields& fields) {
    for (const auto& [name, value] : fields) {
        try {
            item.SetFieldText(name, Wide(value));
        } catch (const Failure&) {
            throw std::out_of_range(item.Name().append(" does not take ").append(name).append(" = ").append(value));
        }
    }
}

ControlView FindView(const WindowObject& window, const std::function<bool(const ControlModel&)>& fits) {
    ControlView view;
    for (const BarPointer& bar : window.bars.bars) {
        ForEach(
            *bar,
            [&](const ControlPointer& control, const BarPointer& parent) {
                if (!view && fits(*control)) view = ViewOf(*control, parent->IndexOf(*control));
            },
            bar);
    }
    return view;
}

// The visible controls of a bar that are not Office's own, those in Office's menus included.
void AppendCustom(const Bar& bar, std::vector<ControlView>& views) {
    for (const ControlPointer& control : bar.controls) {
        if (!control->visible) continue;
        if (!control->builtIn) {
            views.push_back(ViewOf(*control, bar.IndexOf(*control)));
        } else if (control->menu) {
            AppendCustom(*control->menu, views);
        }
    }
}

}  // namespace

Outlook::Outlook(const Options& options) {
    OleInitialize(nullptr);
    session_ = std::make_unique<Session>(options);
}

Outlook::~Outlook() {
    session_.reset();
    OleUninitialize();
}

// --- add-ins and the life of the session ---

void Outlook::UseAddIn(const std::string& progId, IUnknown* object, int loadBehavior) {
    session_->addIns->Use(progId, object, loadBehavior);
}
void Outlook::IgnoreRegistry() { session_->readRegistry = false; }
void Outlook::Start() { session_->Start(); }

bool Outlook::LoadAddIn(const std::string& progId) {
    MustRun(*session_);
    session_->gate->Action("load add-in " + progId);
    return session_->addIns->LoadByUser(progId);
}

bool Outlook::UnloadAddIn(const std::string& progId) {
    MustRun(*session_);
    session_->gate->Action("unload add-in " + progId);
    return session_->addIns->UnloadByUser(progId);
}

void Outlook::ConnectAgain(const std::string& progId) {
    MustRun(*session_);
    session_->gate->Action("connect " + progId + " again");
    session_->addIns->ConnectAgain(progId);
}

std::vector<AddInView> Outlook::AddIns() const {
    std::vector<AddInView> views;
    for (const auto& addIn : session_->addIns->All())
        views.push_back({addIn->progId, addIn->friendlyName, addIn->description, addIn->loadBehavior,
                         static_cast<bool>(addIn->loaded), static_cast<bool>(addIn->published)});
    return views;
}

Ending Outlook::Quit() {
    if (!session_->Started()) throw std::logic_error("the host was not started");
    return session_->Quit();
}

void Outlook::ClientLetsGo() {
    MustRun(*session_);
    session_->gate->Action("the other program lets go");
    session_->ClientLetsGo();
}

Ending Outlook::LookAgain() { return session_->LookAgain(); }
void Outlook::EndProcess() { session_->EndProcess(RPC_E_DISCONNECTED); }
Ending Outlook::HowItEnded() const { return session_->HowItEnded(); }
int Outlook::Version() const { return session_->options.version; }

IDispatch* Outlook::Application() {
    const Result application = session_->Application();
    application->AddRef();
    return application.get();
}

IDispatch* Outlook::User() {
    const Ref<UserObject> user = Make<UserObject>(session_->gate);
    user->AddRef();
    return user.get();
}

// --- windows ---

Window Outlook::OpenExplorer(FolderKind folder) {
    MustRun(*session_);
    session_->gate->Action("open an Explorer");
    const Ref<ExplorerObject> explorer = session_->NewExplorer(session_->store.Get(folder));
    session_->Show(*explorer);
    return {explorer->Number()};
}

Window Outlook::OpenInspector(Item item) {
    MustRun(*session_);
    ItemObject& opened = ItemOf(*session_, item);
    session_->gate->Action("open " + opened.Name());
    const Ref<InspectorObject> inspector = session_->Open(&opened);
    return {inspector ? inspector->Number() : 0};
}

void Outlook::Activate(Window window) {
    session_->gate->Action("activate " + WindowOf(*session_, window).Name());
    session_->Activate(WindowOf(*session_, window));
}

void Outlook::Deactivate(Window window) {
    session_->gate->Action("deactivate " + WindowOf(*session_, window).Name());
    session_->Deactivate(WindowOf(*session_, window));
}

bool Outlook::CloseWindow(Window window, SaveMode mode) {
    session_->gate->Action("close " + WindowOf(*session_, window).Name());
    return session_->Close(WindowOf(*session_, window), mode);
}

bool Outlook::ShowOther(Window inspector, Item item) {
    auto* found = dynamic_cast<InspectorObject*>(&WindowOf(*session_, inspector));
    if (!found) throw std::out_of_range("no Inspector: " + std::to_string(inspector.number));
    session_->gate->Action(found->Name() + " goes on to " + ItemOf(*session_, item).Name());
    return session_->ShowOther(*found, ItemOf(*session_, item));
}

bool Outlook::SendMail(Window window) {
    session_->gate->Action("send from " + WindowOf(*session_, window).Name());
    return session_->Send(WindowOf(*session_, window));
}

std::vector<Window> Outlook::Windows() const {
    std::vector<Window> windows;
    for (const Ref<WindowObject>& window : session_->Windows()) windows.push_back({window->Number()});
    return windows;
}

WindowView Outlook::View(Window window) const {
    WindowObject& found = WindowOf(*session_, window);
    WindowView view{window, found.IsExplorer(), found.shown, Ansi(found.GetCaption()), FolderKind::Inbox, {}, {}};
    if (const auto* explorer = dynamic_cast<ExplorerObject*>(&found)) {
        view.folder = explorer->folder->Kind();
        for (const Ref<ItemObject>& item : explorer->selection) view.selection.push_back({item->Number()});
    }
    if (const auto* inspector = dynamic_cast<InspectorObject*>(&found)) view.item = {inspector->item->Number()};
    return view;
}

Window Outlook::ActiveWindow() const { return {session_->ActiveNumber()}; }
bool Outlook::Exists(Window window) const { return session_->FindWindow(window.number) != nullptr; }
void Outlook::SetFrame(Window window, HWND frame) { WindowOf(*session_, window).frame = frame; }

// --- folders and items ---

bool Outlook::SwitchFolder(Window explorer, FolderKind folder) {
    FolderObject* next = session_->store.Get(folder);
    session_->gate->Action("switch to " + next->Name());
    return session_->SwitchFolder(ExplorerOf(*session_, explorer), *next);
}

void Outlook::Select(Window explorer, const std::vector<Item>& items) {
    ExplorerObject& selecting = ExplorerOf(*session_, explorer);
    std::vector<Ref<ItemObject>> selection;
    selection.reserve(items.size());
    for (const Item item : items) selection.emplace_back(&ItemOf(*session_, item));
    session_->gate->Action("select " + std::to_string(items.size()) + " items");
    session_->Select(&selecting, selection);
}

Item Outlook::AddItem(FolderKind folder, const Fields& fields) {
    return AddItem(folder, session_->store.Get(folder)->DefaultClass(), fields);
}

Item Outlook::AddItem(FolderKind folder, ItemClass itemClass, const Fields& fields) {
    const Item item = NewItem(itemClass, fields);
    ItemOf(*session_, item).MarkSaved(folder);
    session_->ContentsChanged();
    return item;
}

Item Outlook::NewItem(ItemClass itemClass, const Fields& fields) {
    ItemObject* item = session_->CreateItem(KindOf(itemClass));
    Fill(*item, fields);
    return {item->Number()};
}

std::vector<Item> Outlook::ItemsIn(FolderKind folder) const {
    std::vector<Item> items;
    for (const Ref<ItemObject>& item : session_->store.Get(folder)->Contents()) items.push_back({item->Number()});
    return items;
}

std::string Outlook::Field(Item item, const std::string& name) const {
    return Ansi(ItemOf(*session_, item).FieldText(name));
}
bool Outlook::HasField(Item item, const std::string& name) const {
    return ItemOf(*session_, item).FieldNamed(name) != nullptr;
}
void Outlook::SetField(Item item, const std::string& name, const std::string& value) {
    Fill(ItemOf(*session_, item), {{name, value}});
}
ItemClass Outlook::ClassOf(Item item) const { return ItemOf(*session_, item).Kind().itemClass; }
std::string Outlook::EntryId(Item item) const { return Ansi(ItemOf(*session_, item).EntryId()); }
bool Outlook::IsSaved(Item item) const { return ItemOf(*session_, item).IsSaved(); }
bool Outlook::IsDeleted(Item item) const { return ItemOf(*session_, item).IsDeleted(); }
bool Outlook::SaveItem(Item item) { return ItemOf(*session_, item).Save() == Cancelled::No; }
void Outlook::DeleteItem(Item item) { ItemOf(*session_, item).Delete(); }

// --- command bars ---

std::vector<BarView> Outlook::Bars(Window window) const {
    std::vector<BarView> views;
    for (const BarPointer& bar : WindowOf(*session_, window).bars.bars) views.push_back(ViewOf(*bar));
    return views;
}

std::vector<ControlView> Outlook::Controls(Window window, const std::string& bar) const {
    const BarPointer found = WindowOf(*session_, window).bars.Named(Wide(bar));
    if (!found) throw std::out_of_range("no such bar: " + bar);
    return ViewOf(*found).controls;
}

ControlView Outlook::FindTag(Window window, const std::string& tag) const {
    const std::wstring wanted = Wide(tag);
    return FindView(WindowOf(*session_, window), [&](const ControlModel& control) { return control.tag == wanted; });
}

ControlView Outlook::FindCaption(Window window, const std::string& caption) const {
    const std::wstring wanted = Readable(Wide(caption));
    return FindView(WindowOf(*session_, window),
                    [&](const ControlModel& control) { return Readable(control.caption) == wanted; });
}

ControlView Outlook::Control(int instance) const {
    const auto [window, control] = session_->FindControl(instance);
    if (!control) return {};
    const BarPointer bar = control->parent.lock();
    return ViewOf(*control, bar ? bar->IndexOf(*control) : 0);
}

ClickResult Outlook::Click(int instance) {
    MustRun(*session_);
    const auto [window, control] = session_->FindControl(instance);
    if (!control) return {};
    session_->gate->Action("click " + Quote(Ansi(Readable(control->caption))));
    return session_->Click(*window, control);
}

ControlView Outlook::AddCustomButton(Window window, const std::string& bar, const std::string& caption,
                                     const std::string& tag, const std::string& onAction, bool temporary) {
    WindowObject& found = WindowOf(*session_, window);
    const BarPointer target = found.bars.Named(Wide(bar));
    if (!target) throw std::out_of_range("no such bar: " + bar);
    const ControlPointer control = MakeControl(session_->NextInstance(), 1, TypeButton);
    control->caption = Wide(caption);
    control->tag = Wide(tag);
    control->onAction = Wide(onAction);
    control->temporary = temporary;
    Insert(target, control, 0);
    session_->BarsChanged(found);
    return ViewOf(*control, target->IndexOf(*control));
}

Pixels Outlook::FaceOf(int instance) const {
    const ControlPointer control = session_->FindControl(instance).second;
    if (!control) return {};
    if (control->picture) return PixelsOf(BitmapOf(control->picture.get()));
    return PixelsOf(static_cast<HBITMAP>(control->face.bitmap.get()));
}

Pixels Outlook::MaskOf(int instance) const {
    const ControlPointer control = session_->FindControl(instance).second;
    if (!control) return {};
    if (control->mask) return PixelsOf(BitmapOf(control->mask.get()));
    return PixelsOf(static_cast<HBITMAP>(control->face.mask.get()));
}

std::vector<BarView> Outlook::AddInsTab(Window window) const {
    if (Version() < 14) return {};
    std::vector<BarView> groups(3);
    groups[0].name = "Menu Commands";
    groups[1].name = "Toolbar Commands";
    groups[2].name = "Custom Toolbars";
    for (const BarPointer& bar : WindowOf(*session_, window).bars.bars) {
        const std::size_t builtInGroup = bar->type == BarMenu ? 0 : 1;
        AppendCustom(*bar, groups[bar->builtIn ? builtInGroup : 2].controls);
    }
    std::erase_if(groups, [](const BarView& group) { return group.controls.empty(); });
    return groups;
}

std::shared_ptr<SavedBars> Outlook::Saved() const { return session_->saved; }

// --- ribbon ---

std::vector<RibbonTabView> Outlook::Ribbon(Window window) const {
    const Session::Turn turn(*session_);
    return session_->ribbon->Tabs(WindowOf(*session_, window));
}

std::vector<RibbonControlView> Outlook::ContextMenu(Window explorer) const {
    const Session::Turn turn(*session_);
    return session_->ribbon->ContextMenu(ExplorerOf(*session_, explorer));
}

RibbonControlView Outlook::FindRibbon(Window window, const std::string& id) const {
    return FindControl(Ribbon(window), id);
}

bool Outlook::ClickRibbon(Window window, const std::string& id) {
    MustRun(*session_);
    session_->gate->Action("click " + id + " on the ribbon of " + WindowOf(*session_, window).Name());
    const Session::Turn turn(*session_);
    return session_->ribbon->Click(WindowOf(*session_, window), Wide(id));
}

bool Outlook::ClickContextMenu(Window explorer, const std::string& id) {
    MustRun(*session_);
    session_->gate->Action("click " + id + " in the context menu of " + WindowOf(*session_, explorer).Name());
    const Session::Turn turn(*session_);
    return session_->ribbon->ClickInContextMenu(ExplorerOf(*session_, explorer), Wide(id));
}

std::string Outlook::CustomUI(const std::string& progId, const std::string& ribbonId) const {
    return Ansi(session_->ribbon->AskAgain(progId, ribbonId));
}

IDispatch* Outlook::RibbonCallbacks(const std::string& progId) const {
    IDispatch* callbacks = session_->ribbon->CallbacksOf(progId);
    if (callbacks) callbacks->AddRef();
    return callbacks;
}

std::vector<std::string> Outlook::RibbonsAsked() const { return session_->ribbon->Asked(); }
std::vector<std::string> Outlook::RibbonErrors() const { return session_->ribbon->Errors(); }

// --- the gate ---

int Outlook::Calls() const { return session_->gate->calls; }
void Outlook::ResetCalls() { session_->gate->calls = 0; }
void Outlook::FailCall(int number, Fault fault) { session_->gate->faultsByNumber[number] = fault; }
void Outlook::FailMember(const std::string& member, Fault fault, int times) {
    session_->gate->faultsByMember[member] = {fault, times};
}

void Outlook::ClearFaults() {
    session_->gate->faultsByNumber.clear();
    session_->gate->faultsByMember.clear();
}

int Outlook::FaultsHit() const { return session_->gate->faultsHit; }

int Outlook::References() const {
    int count = 0;
    for (const Counted* held : session_->gate->Held()) count += static_cast<int>(held->Outside());
    return count;
}

std::vector<std::string> Outlook::ReferenceList() const {
    std::vector<std::string> list;
    for (const Counted* held : session_->gate->Held())
        list.push_back(held->Name() + ": " + std::to_string(held->Outside()));
    return list;
}

int Outlook::Advises() const { return static_cast<int>(AdviseList().size()); }

std::vector<std::string> Outlook::AdviseList() const {
    std::vector<std::string> list;
    for (const auto& [serial, counted] : session_->gate->Objects()) {
        const auto* object = dynamic_cast<const Object*>(counted);
        if (!object) continue;
        const std::vector<std::string> names = object->AdviseNames();
        list.insert(list.end(), names.begin(), names.end());
    }
    return list;
}

std::vector<std::string> Outlook::Complaints() const { return session_->gate->complaints; }
void Outlook::Record(Detail detail) { session_->gate->Record(detail); }
std::vector<std::string> Outlook::Transcript() const { return session_->gate->lines; }
void Outlook::ClearTranscript() { session_->gate->lines.clear(); }

void Outlook::Watch(Watcher* watcher) {
    session_->watcher = watcher;
    session_->gate->onLine = watcher ? std::function<void()>([watcher] { watcher->LineWritten(); }) : nullptr;
}

}  // namespace standin
