#include "outlook/Session.h"

#include <algorithm>

#include "outlook/ApplicationObjects.h"
#include "outlook/BarObjects.h"
#include "outlook/BuiltInBars.h"
#include "outlook/Words.h"

namespace standin {

Session::Session(const Options& given)
    : options(given), gate(std::make_shared<Gate>(this, given.version)), saved(std::make_shared<SavedBars>()) {
    if (given.savedBars) *saved = *given.savedBars;
    gate->onReturn = [this] { Settle(); };
    gate->failuresAsExceptions = given.failures == Failures::AsExceptions;
    application_ = Make<ApplicationObject>(gate);
    nameSpace_ = Make<NameSpaceObject>(gate);
    explorers = Make<ExplorersObject>(gate);
    inspectors = Make<InspectorsObject>(gate);
    store.Fill(gate);
    addIns = std::make_unique<AddInList>(*this, gate);
    ribbon = std::make_unique<RibbonHost>(*this, gate);
}

Session::~Session() {
    EndProcess(RPC_E_DISCONNECTED);
    store.Clear();
    gate->onLine = gate->onReturn = nullptr;
    gate->Forget();
}

Result Session::Application() { return application_; }
Result Session::NameSpace() { return nameSpace_; }

// --- start and end ---

void Session::Start() {
    if (started_) return;
    gate->Action("start Outlook " + std::to_string(options.version));
    if (options.startedBy == StartedBy::User) NewExplorer(store.Get(options.startFolder));
    if (readRegistry) addIns->ReadRegistry();
    started_ = starting_ = true;
    addIns->LoadAtStart();
    const bool windowless = windows_.empty();
    if (options.ribbon.asked == RibbonAsked::BeforeStartupComplete && !windowless) ribbon->AskForExplorer();
    addIns->TellStartupComplete();
    if (options.ribbon.asked == RibbonAsked::AfterStartupComplete && !windowless) ribbon->AskForExplorer();
    application_->Raise(events::Startup);
    application_->Raise(events::LogonComplete);
    starting_ = false;
    if (options.startedBy == StartedBy::User && !windows_.empty()) Show(*windows_.front());
}

Ending Session::Quit() {
    if (!Running() || quitting_) return ending_;
    gate->Action("quit");
    quitting_ = true;
    const std::vector<Ref<WindowObject>> all(windows_.rbegin(), windows_.rend());
    for (const Ref<WindowObject>& window : all) {
        if (Close(*window, SaveMode::Prompt)) continue;
        quitting_ = false;
        return ending_;
    }
    EndSession();
    return ending_;
}

// A procedure that closed the last window runs to its end first.
void Session::Settle() {
    if (turns_ == 0 && !gate->Inside() && std::exchange(quitWanted_, false) && Running()) Quit();
}

bool Session::EndsFast() const {
    if (options.shutdownCalls != ShutdownCalls::ByVersion) return options.shutdownCalls == ShutdownCalls::None;
    return options.version >= 14;
}

// Every window has raised its Close event. What is held now decides in the versions that wait for references.
void Session::EndSession() {
    quitting_ = true;
    const bool held = !gate->Held().empty();
    application_->Raise(events::Quit);
    if (EndsFast()) {
        addIns->Shutdown(true);
        ending_ = Ending::AddInsNotTold;
    } else if (options.version >= 12 || !held) {  // host quirk 2
        addIns->Shutdown(false);
        ending_ = Ending::AddInsTold;
    } else if (gate->Held().empty()) {
        ending_ = Ending::AddInsNotTold;
    } else {
        ending_ = Ending::StaysInMemory;
        gate->Action("stays in memory");
        return;
    }
    EndProcess(E_UNEXPECTED);
}

Ending Session::LookAgain() {
    if (ending_ != Ending::StaysInMemory || !gate->Held().empty()) return ending_;
    ending_ = Ending::AddInsNotTold;
    EndProcess(E_UNEXPECTED);
    return ending_;
}

void Session::EndProcess(HRESULT answer) {
    if (gate->Over() != S_OK) return;
    gate->Action("the process ends");
    gate->End(answer);
    if (ending_ == Ending::StillRunning || ending_ == Ending::StaysInMemory) ending_ = Ending::AddInsNotTold;
    ribbon->RemoveAll();
    addIns->ReleaseAll();
    std::vector<Ref<Object>> objects;
    for (const auto& [serial, counted] : gate->Objects())
        if (auto* object = dynamic_cast<Object*>(counted)) objects.emplace_back(object);
    for (const Ref<Object>& object : objects) object->DropSinks();
    for (const Ref<WindowObject>& window : windows_) {
        SaveBars(*window);
        window->bars.MarkGone();
        window->gone = true;
    }
    windows_.clear();
    order_.clear();
    active_ = 0;
}

// --- windows ---

WindowObject* Session::FindWindow(int number) const {
    for (const Ref<WindowObject>& window : windows_)
        if (window->Number() == number) return window.get();
    return nullptr;
}

template <class T, class... Arguments>
Ref<T> Session::AddWindow(const std::vector<BarPointer>& bars, Arguments&&... arguments) {
    Ref<T> window = Make<T>(gate, ++lastWindow_, std::forward<Arguments>(arguments)...);
    window->bars.bars = bars;
    windows_.push_back(window);
    RestoreBars(*window);
    return window;
}

Ref<ExplorerObject> Session::NewExplorer(FolderObject* folder) {
    const Turn turn(*this);
    Ref<ExplorerObject> explorer =
        AddWindow<ExplorerObject>(ExplorerBars(options.version, [this] { return NextInstance(); }), folder);
    explorers->Raise(events::NewExplorer, {EventArgument(explorer.get())});
    return explorer;
}

InspectorObject* Session::InspectorOf(const ItemObject* item) const {
    for (const Ref<WindowObject>& window : windows_) {
        auto* inspector = dynamic_cast<InspectorObject*>(window.get());
        if (inspector && inspector->item.get() == item) return inspector;
    }
    return nullptr;
}

Ref<InspectorObject> Session::InspectorFor(ItemObject* item) {
    const Turn turn(*this);
    if (InspectorObject* known = InspectorOf(item)) return known;
    Ref<InspectorObject> inspector =
        AddWindow<InspectorObject>(InspectorBars(item->Kind().itemClass, [this] { return NextInstance(); }), item);
    inspectors->Raise(events::NewInspector, {EventArgument(inspector.get())});
    return inspector;
}

Ref<InspectorObject> Session::Open(ItemObject* item) {
    const Turn turn(*this);
    const Ref<InspectorObject> inspector = InspectorFor(item);
    if (!inspector->shown && item->AskOpen() == Cancelled::Yes) {
        TakeOff(*inspector);
        return {};
    }
    Show(*inspector);
    return inspector->gone ? Ref<InspectorObject>() : inspector;
}

void Session::Show(WindowObject& window) {
    const Turn turn(*this);
    const Ref<WindowObject> alive(&window);
    if (window.gone) return;
    const RibbonAsked asked = options.ribbon.asked;
    if (asked == RibbonAsked::BeforeStartupComplete || asked == RibbonAsked::AfterStartupComplete)
        ribbon->WindowShows(window);
    if (window.gone) return;
    if (!window.shown) {
        window.shown = true;
        order_.push_back(window.Number());
        if (watcher) watcher->WindowShown({window.Number()});
    }
    Activate(window);
    if (asked == RibbonAsked::AfterActivate && !window.gone) ribbon->WindowShows(window);
}

void Session::Activate(WindowObject& window) {
    const Turn turn(*this);
    const Ref<WindowObject> alive(&window);
    if (window.gone || !window.shown || active_ == window.Number()) return;
    if (WindowObject* former = FindWindow(active_)) Deactivate(*former);
    if (window.gone) return;
    active_ = window.Number();
    std::erase(order_, active_);
    order_.push_back(active_);
    if (watcher) watcher->WindowActivated({active_});
    window.Raise(events::Activate);
}

void Session::Deactivate(WindowObject& window) {
    const Turn turn(*this);
    if (active_ != window.Number()) return;
    active_ = 0;
    window.Raise(events::Deactivate);
}

bool Session::SettleChanges(ItemObject& item, SaveMode mode) {
    const Turn turn(*this);
    if (mode == SaveMode::Prompt) {
        if (item.IsSaved()) return true;
        if (options.prompted == Prompted::Cancel) return false;
        mode = options.prompted == Prompted::Yes ? SaveMode::Save : SaveMode::Discard;
    }
    if (mode == SaveMode::Discard)
        item.Revert();
    else if (!item.IsSaved() || item.EntryId().empty())
        return item.Save() == Cancelled::No;
    return true;
}

bool Session::Close(WindowObject& window, SaveMode mode) {
    const Turn turn(*this);
    const Ref<WindowObject> alive(&window);
    if (window.gone || window.closing) return true;
    window.closing = true;
    auto* inspector = dynamic_cast<InspectorObject*>(&window);
    if (inspector && (!SettleChanges(*inspector->item, mode) || inspector->item->AskClose() == Cancelled::Yes)) {
        window.closing = false;
        return false;
    }
    if (inspector) inspector->item->inClose = true;
    if (options.closingWindow == ClosingWindow::NotCounted)
        std::erase_if(windows_, [&](const auto& held) { return held.get() == &window; });
    if (window.shown && !(inspector && inspector->sentInOld)) window.Raise(events::Close);
    if (inspector) inspector->item->inClose = false;
    TakeOff(window);
    EndWithoutWindows();
    return true;
}

// A client of another process keeps the session without a window; windows may open in it later.
void Session::EndWithoutWindows() {
    if (Running() && !quitting_ && !AnyShown() && !options.heldByClient) QuitSoon();
}

void Session::ClientLetsGo() {
    const Turn turn(*this);
    options.heldByClient = false;
    EndWithoutWindows();
}

void Session::TakeOff(WindowObject& window) {
    std::erase_if(windows_, [&](const auto& held) { return held.get() == &window; });
    std::erase(order_, window.Number());
    SaveBars(window);
    window.bars.MarkGone();
    window.gone = true;
    ribbon->WindowGone(window.Number());
    if (watcher) watcher->WindowClosed({window.Number()});
    if (active_ != window.Number()) return;
    active_ = 0;
    if (order_.empty() || quitting_) return;
    if (WindowObject* next = FindWindow(order_.back())) Activate(*next);
}

bool Session::Send(WindowObject& window) {
    const Turn turn(*this);
    const Ref<WindowObject> alive(&window);
    auto* inspector = dynamic_cast<InspectorObject*>(&window);
    if (!inspector || inspector->item->AskSend() == Cancelled::Yes) return false;
    inspector->item->MarkSaved(FolderKind::SentMail);
    inspector->sentInOld = options.version == 9;  // host quirk 14
    return Close(window, SaveMode::Save);
}

bool Session::ShowOther(InspectorObject& inspector, ItemObject& item) {
    const Turn turn(*this);
    const Ref<WindowObject> alive(&inspector);
    const Ref<ItemObject> next(&item);
    if (inspector.gone || inspector.closing || InspectorOf(&item)) return false;
    if (!SettleChanges(*inspector.item, SaveMode::Prompt) || inspector.item->AskClose() == Cancelled::Yes) return false;
    if (inspector.gone || next->AskOpen() == Cancelled::Yes) return false;
    inspector.item = next;
    ContentsChanged();
    return !inspector.gone;
}

bool Session::AnyShown() const {
    return std::any_of(windows_.begin(), windows_.end(), [](const auto& window) { return window->shown; });
}

Result Session::TopWindow(WindowKind kind) const {
    const auto fits = [kind](const WindowObject& window) {
        return kind == WindowKind::Any || window.IsExplorer() == (kind == WindowKind::Explorer);
    };
    for (auto number = order_.rbegin(); number != order_.rend(); ++number) {
        WindowObject* window = FindWindow(*number);
        if (window && fits(*window)) return window;
    }
    for (const Ref<WindowObject>& window : windows_)  // the first Explorer, before it shows
        if (starting_ && fits(*window)) return window;
    return {};
}

Result Session::CommandBarsOf(WindowObject& window) {
    if (!window.commandBars) window.commandBars = Make<CommandBarsObject>(window);
    return window.commandBars;
}

bool Session::CloseWindowOf(ItemObject& item, SaveMode mode) {
    WindowObject* window = InspectorOf(&item);
    if (window) Close(*window, mode);
    return window != nullptr;
}

bool Session::SendFromWindowOf(ItemObject& item) {
    WindowObject* window = InspectorOf(&item);
    if (window) Send(*window);
    return window != nullptr;
}

// --- folders and items ---

bool Session::SwitchFolder(ExplorerObject& explorer, FolderObject& folder) {
    const Turn turn(*this);
    const Ref<ExplorerObject> alive(&explorer);
    if (explorer.folder.get() == &folder) return true;
    if (!explorer.AskFolderSwitch(&folder)) return false;
    if (explorer.gone) return false;
    explorer.folder = &folder;
    explorer.SelectFirst();
    ContentsChanged();
    explorer.Raise(events::FolderSwitch);
    if (!explorer.gone && explorer.folder->HasItems()) explorer.Raise(events::SelectionChange);
    return true;
}

void Session::Select(ExplorerObject* explorer, const std::vector<Ref<ItemObject>>& items) {
    const Turn turn(*this);
    const Ref<ExplorerObject> alive(explorer);
    explorer->selection = items;
    ContentsChanged();
    explorer->Raise(events::SelectionChange);
}

ItemObject* Session::CreateItem(const ItemKind& kind) {
    const int number = ++lastItem_;
    Ref<ItemObject>& item = items_[number];
    item = Make<ItemObject>(gate, kind, number);
    return item.get();
}

ItemObject* Session::FindItem(int number) const {
    const auto found = items_.find(number);
    return found == items_.end() ? nullptr : found->second.get();
}

Result Session::ItemByEntryId(const std::wstring& entryId) const {
    for (const auto& [number, item] : items_)
        if (!item->IsDeleted() && !entryId.empty() && item->EntryId() == entryId) return item;
    return {};
}

void Session::Forget(ItemObject& item) {
    store.TakeOut(&item);
    for (const Ref<WindowObject>& window : windows_)
        if (auto* explorer = dynamic_cast<ExplorerObject*>(window.get()))
            std::erase_if(explorer->selection, [&](const auto& held) { return held.get() == &item; });
    ContentsChanged();
}

// --- bars ---

std::pair<WindowObject*, ControlPointer> Session::FindControl(int instance) const {
    for (const Ref<WindowObject>& window : windows_) {
        ControlPointer found;
        for (const BarPointer& bar : window->bars.bars)
            ForEach(
                *bar,
                [&](const ControlPointer& control, const BarPointer&) {
                    if (control->instance == instance) found = control;
                },
                bar);
        if (found) return {window.get(), found};
    }
    return {nullptr, nullptr};
}

ClickResult Session::Click(WindowObject& window, const ControlPointer& control) {
    const Turn turn(*this);
    ClickResult result;
    if (!IsReachable(*control) || !control->IsButton()) return result;
    result.reached = true;
    const Ref<WindowObject> alive(&window);
    const std::wstring& action = control->onAction;
    if (action.size() > 3 && action.starts_with(L"!<") && action.back() == L'>')
        addIns->LoadOnDemand(Ansi(action.substr(2, action.size() - 3)));
    std::vector<Ref<ControlObject>> advised;  // of all windows
    for (const auto& [serial, counted] : gate->Objects()) {
        auto* object = dynamic_cast<ControlObject*>(counted);
        if (object && object->Sinks() != 0) advised.emplace_back(object);
    }
    const ControlPointer before = std::exchange(action_, control);
    Ref<ControlObject> clicked = Make<ControlObject>(window, control);
    if (options.clicked == ClickedControl::AdvisedObject) {
        for (const Ref<ControlObject>& object : advised)
            if (object->TheControl() == control) clicked = object;
    }
    VARIANT_BOOL cancel = VARIANT_FALSE;
    const int id = control->id;
    const std::wstring tag = control->tag;
    for (const Ref<ControlObject>& object : advised) {
        const ControlModel& other = *object->TheControl();
        if (other.gone || other.id != id || other.tag != tag) continue;
        result.sinks += object->Raise(events::Click, {EventArgument(clicked.get()), EventArgument(&cancel)});
    }
    action_ = before;
    result.cancelled = cancel != VARIANT_FALSE;
    result.defaultRuns = control->builtIn && control->onAction.empty() && !result.cancelled;
    return result;
}

namespace {

// Bars that persistent controls may sit on, each with a name of its own: "Standard", "Menu Bar/Tools".
void ForEachKeeper(const BarPointer& bar, const std::wstring& path,
                   const std::function<void(const BarPointer&, const std::wstring&)>& visit) {
    visit(bar, path);
    for (const ControlPointer& control : bar->controls)
        if (control->builtIn && control->menu) ForEachKeeper(control->menu, path + L"/" + control->menu->name, visit);
}

}  // namespace

void Session::SaveBars(const WindowObject& window) {
    const auto next = [this] { return NextInstance(); };
    std::erase_if(saved->controls,
                  [&](const SavedControl& control) { return control.explorer == window.IsExplorer(); });
    const auto keep = [&](const BarPointer& bar, const std::wstring& path) {
        for (const ControlPointer& control : bar->controls)
            if (!control->builtIn && !control->temporary)
                saved->controls.push_back({window.IsExplorer(), path, static_cast<std::size_t>(bar->IndexOf(*control)),
                                           CopyControl(*control, next)});
        for (const ControlPointer& control : bar->asleep)
            saved->controls.push_back({window.IsExplorer(), path, 0, CopyControl(*control, next)});
    };
    for (const BarPointer& bar : window.bars.bars)
        if (bar->builtIn) ForEachKeeper(bar, bar->name, keep);
}

void Session::RestoreBars(WindowObject& window) {
    const auto next = [this] { return NextInstance(); };
    const auto restore = [&](const BarPointer& bar, const std::wstring& path) {
        for (const SavedControl& control : saved->controls)
            if (control.explorer == window.IsExplorer() && control.bar == path)
                Insert(bar, CopyControl(*control.control, next), control.position);
    };
    for (const BarPointer& bar : window.bars.bars) ForEachKeeper(bar, bar->name, restore);
}

}  // namespace standin
