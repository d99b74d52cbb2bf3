#include "addin/cOutlookAddIn.h"

#include <algorithm>
#include <utility>

#include "addin/Names.h"
#include "bridge/OlVersion.h"
#include "bridge/RegEdit.h"
#include "platform/Err.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"

using platform::Dispatch;

namespace {

// Classes of the items that get a wrapper.
constexpr std::int32_t appointmentClass = 26;
constexpr std::int32_t contactClass = 40;
constexpr std::int32_t taskClass = 48;

// The first slot that nobody uses, a new one at the end where there is none.
template <class Slots, class IsFree>
auto& FreeSlot(Slots& slots, IsFree isFree) {
    const auto free = std::find_if(slots.begin(), slots.end(), isFree);
    return free != slots.end() ? *free : slots.emplace_back();
}

template <class Wrapper>
bool IsFreeItem(const std::shared_ptr<Wrapper>& wrapper) {
    return !wrapper || !wrapper->IsUsed;
}

bool IsFreeExplorer(const std::shared_ptr<cOlExplorer>& wrapper) { return !wrapper || !wrapper->InUse(); }

}  // namespace

cOutlookAddIn::~cOutlookAddIn() { UnInitHandler({}); }

void cOutlookAddIn::InitHandler(const Dispatch& application, const std::string& progId) {
    const Debug::Trace trace("InitHandler");
    static constexpr platform::EventHandler<cOutlookAddIn> applicationEvents[] = {
        {Events::Quit, &cOutlookAddIn::OnQuit}};

    OlVersion = platform::ValLong(application.Text("Version").substr(0, 2));
    myolapp_.Attach(application, Events::Application, shared_from_this(), applicationEvents);
    if (!myolapp_.Connected()) myolapp_.Release();
    platform::Err().Clear();
    if (myolapp_.Object()) AttachCollections(myolapp_.Object());
    application_ = application;
    AttachCollections(application_);

    progId_ = progId;
    windows_.clear();
    explorers_.assign(1, std::make_shared<cOlExplorer>());
    contacts_.assign(1, nullptr);
    tasks_.assign(1, nullptr);
    appointments_.assign(1, nullptr);

    const std::shared_ptr<cOlExplorer> first = explorers_.front();
    if (!myolapp_.Object()) {
        const Dispatch active = application_.Object("ActiveExplorer");
        first->OpenItemOl20(active, progId_, Names::WrapperParameter);
        Watch(active, std::make_shared<WatchedWindow>(first));
    } else {
        const Dispatch explorer = application_.Object("Explorers").Object("Item", 1);
        first->OpenItem(explorer, progId_, Names::WrapperParameter);
        Watch(explorer, std::make_shared<WatchedWindow>(first));
        first->SetMenus({});
    }
    WrapOpenWindows();
}

void cOutlookAddIn::AttachCollections(const Dispatch& application) {
    static constexpr platform::EventHandler<cOutlookAddIn> explorersEvents[] = {
        {Events::NewExplorer, &cOutlookAddIn::OnNewExplorer}};
    static constexpr platform::EventHandler<cOutlookAddIn> inspectorsEvents[] = {
        {Events::NewInspector, &cOutlookAddIn::OnNewInspector}};
    colExpl_.Attach(application.Object("Explorers"), Events::Explorers, shared_from_this(), explorersEvents);
    colInsp_.Attach(application.Object("Inspectors"), Events::Inspectors, shared_from_this(), inspectorsEvents);
}

// Windows that were open before the add-in was loaded, the first Explorer excepted, bring no event of their own.
void cOutlookAddIn::WrapOpenWindows() {
    const Dispatch explorers = colExpl_.Object();
    if (myolapp_.Object()) {
        const std::int32_t count = explorers.Long("Count");
        for (std::int32_t number = 2; number <= count; ++number) {
            if (const Dispatch explorer = explorers.Object("Item", number)) colExpl_NewExplorer(explorer);
        }
    }
    const Dispatch inspectors = colInsp_.Object();
    const std::int32_t count = inspectors.Long("Count");
    for (std::int32_t number = 1; number <= count; ++number) {
        if (const Dispatch inspector = inspectors.Object("Item", number)) colInsp_NewInspector(inspector);
    }
}

void cOutlookAddIn::OnNewExplorer(const platform::EventArguments& arguments) {
    colExpl_NewExplorer(arguments.Object(0));
}

void cOutlookAddIn::OnNewInspector(const platform::EventArguments& arguments) {
    colInsp_NewInspector(arguments.Object(0));
}

void cOutlookAddIn::OnQuit(const platform::EventArguments&) { myolapp_Quit(); }

void cOutlookAddIn::colExpl_NewExplorer(const Dispatch& explorer) {
    const auto wrapper = std::make_shared<cOlExplorer>();
    FreeSlot(explorers_, IsFreeExplorer) = wrapper;
    wrapper->OpenItem(explorer, progId_, Names::WrapperParameter);
    Watch(explorer, std::make_shared<WatchedWindow>(wrapper));
}

void cOutlookAddIn::colInsp_NewInspector(const Dispatch& inspector) {
    const Debug::Trace trace("colInsp_NewInspector");
    const Dispatch item = inspector.Object("CurrentItem");
    const std::int32_t itemClass = item.Long("Class");
    std::shared_ptr<cOlItem> wrapper;
    if (itemClass == appointmentClass) wrapper = Wrap<cOlAppointmentItem>(appointments_, inspector, item);
    if (itemClass == contactClass) wrapper = Wrap<cOlContactItem>(contacts_, inspector, item);
    if (itemClass == taskClass) wrapper = Wrap<cOlTaskItem>(tasks_, inspector, item);
    Watch(inspector, std::make_shared<WatchedWindow>(itemClass, wrapper));
}

template <class Wrapper>
std::shared_ptr<cOlItem> cOutlookAddIn::Wrap(ItemWrappers& wrappers, const Dispatch& inspector, const Dispatch& item) {
    const auto wrapper = std::make_shared<Wrapper>();
    FreeSlot(wrappers, IsFreeItem<cOlItem>) = wrapper;
    wrapper->OpenItem(inspector, item, progId_, Names::WrapperParameter);
    return wrapper;
}

void cOutlookAddIn::Watch(const Dispatch& window, const std::shared_ptr<WatchedWindow>& watched) {
    if (!window) return;
    windows_.push_back(watched);
    watched->Watch(window, weak_from_this());
}

void cOutlookAddIn::CloseExplorerWrappers() {
    for (std::size_t slot = 0; slot < explorers_.size(); ++slot) {  // an event meanwhile may add one
        const std::shared_ptr<cOlExplorer> wrapper = explorers_[slot];
        if (wrapper) wrapper->objExplorer_Close();
        if (slot < explorers_.size()) explorers_[slot] = nullptr;
    }
    explorers_.clear();
}

void cOutlookAddIn::UnInitHandler(const Dispatch& application) {
    const Debug::Trace trace("UnInitHandler");
    explorers_.clear();
    contacts_.clear();
    tasks_.clear();
    appointments_.clear();
    windows_.clear();
    if (application) return;
    colInsp_.Release();
    colExpl_.Release();
    myolapp_.Release();
    application_.Reset();
    RegEdit::DeleteRegValue(platform::Root::CurrentUser, Names::AddInKey, Names::Active);
}

void cOutlookAddIn::myolapp_Quit() { UnInitHandler({}); }

std::string cOutlookAddIn::GetApplPath() const { return platform::WithBackslash(Files::AppFolder()); }

// Outlook 2000 to 2003 end only when nobody holds an object of theirs, and tell it to nobody before (host quirk 2).
void cOutlookAddIn::WindowClosed(const std::shared_ptr<WatchedWindow>& window) {
    std::erase(windows_, window);
    if (ServesAnyWindow() || !WasLast(*window)) return;
    CloseExplorerWrappers();
    UnInitHandler({});
}

bool cOutlookAddIn::ServesAnyWindow() const {
    const auto serves = [](const std::shared_ptr<cOlItem>& wrapper) { return !IsFreeItem(wrapper); };
    return std::any_of(explorers_.begin(), explorers_.end(),
                       [](const auto& wrapper) { return !IsFreeExplorer(wrapper); }) ||
           std::any_of(contacts_.begin(), contacts_.end(), serves) ||
           std::any_of(tasks_.begin(), tasks_.end(), serves) ||
           std::any_of(appointments_.begin(), appointments_.end(), serves);
}

// The host may count the closing window or not. Where one Inspector is left to decide it, another kind of item in it
// than the closing one's means that it is another window; that of the same kind would be served by a wrapper.
bool cOutlookAddIn::WasLast(const WatchedWindow& window) const {
    const std::int32_t explorers = application_.Object("Explorers").Long("Count");
    const Dispatch inspectors = application_.Object("Inspectors");
    const std::int32_t count = inspectors.Long("Count");
    if (window.IsExplorer()) return explorers <= 1 && count == 0;
    if (explorers != 0 || count > 1) return false;
    if (count == 0) return true;
    const std::int32_t left = inspectors.Object("Item", 1).Object("CurrentItem").Long("Class");
    return left == 0 || left == window.ItemClass();
}
