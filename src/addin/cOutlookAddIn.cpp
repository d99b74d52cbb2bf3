#include "addin/cOutlookAddIn.h"

#include <algorithm>
#include <utility>

#include "addin/Members.h"
#include "addin/Names.h"
#include "addin/Slots.h"
#include "bridge/OlVersion.h"
#include "platform/Err.h"
#include "platform/Guard.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using platform::Dispatch;

namespace {

// Classes of the items that get a wrapper.
constexpr std::int32_t appointmentClass = 26;
constexpr std::int32_t contactClass = 40;
constexpr std::int32_t taskClass = 48;

bool IsFreeItem(const std::shared_ptr<cOlItem>& wrapper) { return !wrapper || !wrapper->IsUsed; }

bool IsFreeExplorer(const std::shared_ptr<cOlExplorer>& wrapper) { return !wrapper || !wrapper->InUse(); }

}  // namespace

std::int32_t cOutlookAddIn::VersionOf(const Dispatch& application) {
    return platform::ValLong(application.Text(Members::Outlook::Version).substr(0, 2));
}

cOutlookAddIn::~cOutlookAddIn() { UnInitHandler({}); }

// Leaves it empty where the host's application has no events.
void cOutlookAddIn::AttachApplication(const Dispatch& application) {
    static constexpr platform::EventHandler<cOutlookAddIn> applicationEvents[] = {
        {Events::Quit, &cOutlookAddIn::OnQuit}};
    myolapp_.Attach(application, Events::Application, shared_from_this(), applicationEvents);
    if (!myolapp_.Connected()) myolapp_.Release();
    platform::Err().Clear();
}

void cOutlookAddIn::InitWithoutWindows(const Dispatch& application) {
    const Debug::Trace trace("InitWithoutWindows");
    AttachApplication(application);
}

void cOutlookAddIn::InitHandler(const Dispatch& application, const std::string& progId) {
    const Debug::Trace trace("InitHandler");
    ReleaseEvents();
    OlVersion = VersionOf(application);
    progId_ = progId;
    ribbon_ = std::make_shared<RibbonUi>(OlVersion);
    windows_.clear();
    explorers_.assign(1, nullptr);
    contacts_.assign(1, nullptr);
    tasks_.assign(1, nullptr);
    appointments_.assign(1, nullptr);

    // The collections of the object whose events we have, then those of the object that was handed over: the only one
    // where there are no events (Outlook 2000). What cannot be had the second time is kept from the first.
    platform::Attempt([&] {
        AttachApplication(application);
        if (myolapp_.Object()) AttachCollections(myolapp_.Object());
        application_ = application;
        AttachCollections(application_);
        OpenFirstExplorer();
    });
    platform::Attempt([&] { WrapOpenWindows(); });
    // Of a session none of whose windows can be watched, nothing may be held: nobody would tell when to let go.
    if (windows_.empty()) ReleaseEverything();
}

// Outlook 2000, whose application has not these events (host quirk 7), gets its menus at once and no events of the
// Explorer.
void cOutlookAddIn::OpenFirstExplorer() {
    const bool outlook2000 = !myolapp_.Object();
    const Dispatch explorer = FirstExplorer();
    std::shared_ptr<cOlExplorer> first = WrapperOf(explorer);  // one that opened meanwhile has it already
    if (!first) {
        first = std::make_shared<cOlExplorer>(ribbon_);
        if (!Watch(explorer, std::make_shared<WatchedWindow>(first))) return;
        Slots::FirstFree(explorers_, IsFreeExplorer) = first;
        if (!outlook2000) first->OpenItem(explorer, progId_, Names::WrapperParameter);
    }
    if (outlook2000) {
        first->OpenItemOl20(explorer, progId_, Names::WrapperParameter);
    } else {
        if (!ribbon_->Offered()) first->SetMenus({});
    }
}

std::shared_ptr<cOlExplorer> cOutlookAddIn::WrapperOf(const Dispatch& explorer) const {
    const auto isWatched = [&](const auto& window) { return window->IsOf(explorer); };
    const auto watched = std::find_if(windows_.begin(), windows_.end(), isWatched);
    return watched == windows_.end() ? nullptr : (*watched)->Explorer();
}

// The active one for Outlook 2000, else the first; each stands in for the other where the host refuses it.
Dispatch cOutlookAddIn::FirstExplorer() const {
    const auto active = [this] { return application_.Object(Members::Outlook::ActiveExplorer); };
    const auto first = [this] {
        return application_.Object(Members::Outlook::Explorers).Object(Members::Collection::Item, 1);
    };
    const bool outlook2000 = !myolapp_.Object();
    Dispatch explorer = outlook2000 ? active() : first();
    if (explorer) return explorer;
    return outlook2000 ? first() : active();
}

void cOutlookAddIn::AttachCollections(const Dispatch& application) {
    static constexpr platform::EventHandler<cOutlookAddIn> explorersEvents[] = {
        {Events::NewExplorer, &cOutlookAddIn::OnNewExplorer}};
    static constexpr platform::EventHandler<cOutlookAddIn> inspectorsEvents[] = {
        {Events::NewInspector, &cOutlookAddIn::OnNewInspector}};
    colExpl_.Attach(application.Object(Members::Outlook::Explorers), Events::Explorers, shared_from_this(),
                    explorersEvents);
    colInsp_.Attach(application.Object(Members::Outlook::Inspectors), Events::Inspectors, shared_from_this(),
                    inspectorsEvents);
}

// Windows that were open before the add-in was loaded bring no event of their own; one that opened meanwhile did.
void cOutlookAddIn::WrapOpenWindows() {
    const bool outlook2000 = !myolapp_.Object();  // there the active Explorer is served already, else the first
    const Dispatch explorers = application_.Object(Members::Outlook::Explorers);
    std::int32_t count = explorers.Long(Members::Collection::Count);
    for (std::int32_t number = outlook2000 ? 1 : 2; number <= count; ++number) {
        if (const Dispatch explorer = explorers.Object(Members::Collection::Item, number))
            colExpl_NewExplorer(explorer);
    }
    const Dispatch inspectors = application_.Object(Members::Outlook::Inspectors);
    count = inspectors.Long(Members::Collection::Count);
    for (std::int32_t number = 1; number <= count; ++number) {
        if (const Dispatch inspector = inspectors.Object(Members::Collection::Item, number))
            colInsp_NewInspector(inspector);
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
    const auto wrapper = std::make_shared<cOlExplorer>(ribbon_);
    if (!Watch(explorer, std::make_shared<WatchedWindow>(wrapper))) return;
    Slots::FirstFree(explorers_, IsFreeExplorer) = wrapper;
    wrapper->OpenItem(explorer, progId_, Names::WrapperParameter);
}

void cOutlookAddIn::colInsp_NewInspector(const Dispatch& inspector) {
    const Debug::Trace trace("colInsp_NewInspector");
    const Dispatch item = inspector.Object(Members::Window::CurrentItem);
    const std::int32_t itemClass = item.Long(Members::Class);
    const std::shared_ptr<cOlItem> wrapper = WrapperFor(itemClass);
    if (!Watch(inspector, std::make_shared<WatchedWindow>(itemClass, wrapper)) || !wrapper) return;
    Slots::FirstFree(WrappersOf(itemClass), IsFreeItem) = wrapper;
    wrapper->OpenItem(inspector, item, progId_, Names::WrapperParameter);
}

std::shared_ptr<cOlItem> cOutlookAddIn::WrapperFor(std::int32_t itemClass) const {
    if (itemClass == appointmentClass) return std::make_shared<cOlAppointmentItem>(ribbon_);
    if (itemClass == contactClass) return std::make_shared<cOlContactItem>(ribbon_);
    if (itemClass == taskClass) return std::make_shared<cOlTaskItem>(ribbon_);
    return nullptr;
}

cOutlookAddIn::ItemWrappers& cOutlookAddIn::WrappersOf(std::int32_t itemClass) {
    if (itemClass == appointmentClass) return appointments_;
    return itemClass == contactClass ? contacts_ : tasks_;
}

cOutlookAddIn::ItemWrappers& cOutlookAddIn::WrappersOf(RibbonXml::Kind kind) {
    if (kind == RibbonXml::Kind::Appointment) return appointments_;
    return kind == RibbonXml::Kind::Contact ? contacts_ : tasks_;
}

void cOutlookAddIn::RibbonLoaded(RibbonXml::Kind kind, const Dispatch& ui) {
    ribbon_->Loaded(kind, ui);
    if (kind == RibbonXml::Kind::Explorer) {
        const std::vector<std::shared_ptr<cOlExplorer>> wrappers = explorers_;  // an event meanwhile may add one
        for (const auto& wrapper : wrappers) {
            if (wrapper) wrapper->RibbonLoaded();
        }
        return;
    }
    const ItemWrappers wrappers = WrappersOf(kind);
    for (const auto& wrapper : wrappers) {
        if (wrapper) wrapper->RibbonLoaded();
    }
}

bool cOutlookAddIn::Watch(const Dispatch& window, const std::shared_ptr<WatchedWindow>& watched) {
    const auto isWatched = [&](const auto& other) { return other->IsOf(window); };
    if (!window || std::any_of(windows_.begin(), windows_.end(), isWatched)) return false;
    if (!watched->Watch(window, weak_from_this())) return false;
    windows_.push_back(watched);
    return true;
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
    ribbon_->Release();
    ReleaseEvents();
    application_.Reset();
    RegEdit::DeleteRegValue(platform::Root::CurrentUser, RegistryKeys::AddIn, Names::Active);
}

void cOutlookAddIn::ReleaseEvents() {
    colInsp_.Release();
    colExpl_.Release();
    myolapp_.Release();
}

void cOutlookAddIn::myolapp_Quit() { UnInitHandler({}); }

std::string cOutlookAddIn::GetApplPath() const { return platform::WithBackslash(Files::AppFolder()); }

void cOutlookAddIn::WindowClosed(const std::shared_ptr<WatchedWindow>& window) {
    std::erase(windows_, window);
    if (ServesAnyWindow()) return;
    bool last = windows_.empty();  // where memory runs out over the question
    platform::Attempt([&] { last = WasLast(*window); });
    if (last) return ReleaseWindows();
    // Another window is open. Where none is watched, its coming was not heard, but its end must be.
    if (windows_.empty()) platform::Attempt([&] { WatchUnknownWindows(); });
    if (windows_.empty()) ReleaseWindows();
}

// Outlook 2000 to 2003 end only when nobody holds an object of theirs, and tell it to nobody before (host quirk 2).
// Later versions end whatever is held. Where another program keeps them in memory, a window may open again; to hear of
// that, the application and its collections are kept, until Quit.
void cOutlookAddIn::ReleaseWindows() {
    if (OlVersion < Outlook2007 || !myolapp_.Connected()) return ReleaseEverything();
    CloseExplorerWrappers();
    UnInitHandler(application_);
}

void cOutlookAddIn::WatchUnknownWindows() {
    const auto watchAll = [this](const Dispatch& windows, const auto& makeWatched) {
        for (std::int32_t number = windows.Long(Members::Collection::Count); number >= 1; --number) {
            static_cast<void>(Watch(windows.Object(Members::Collection::Item, number), makeWatched()));
        }
    };
    watchAll(application_.Object(Members::Outlook::Explorers),
             [] { return std::make_shared<WatchedWindow>(std::weak_ptr<cOlExplorer>()); });
    watchAll(application_.Object(Members::Outlook::Inspectors),
             [] { return std::make_shared<WatchedWindow>(0, std::weak_ptr<cOlItem>()); });
}

void cOutlookAddIn::ReleaseEverything() {
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

// The host may count the closing window or not (host quirk 4). Where one Inspector is left to decide
// it, another kind of item in it than the closing one's means that it is another window; one of the
// same kind would be served by a wrapper.
bool cOutlookAddIn::WasLast(const WatchedWindow& window) const {
    const std::int32_t explorers = application_.Object(Members::Outlook::Explorers).Long(Members::Collection::Count);
    const Dispatch inspectors = application_.Object(Members::Outlook::Inspectors);
    const std::int32_t count = inspectors.Long(Members::Collection::Count);
    if (window.IsExplorer()) return explorers <= 1 && count == 0;
    if (explorers != 0 || count > 1) return false;
    if (count == 0) return true;
    const std::int32_t left =
        inspectors.Object(Members::Collection::Item, 1).Object(Members::Window::CurrentItem).Long(Members::Class);
    return left == 0 || window.ItemClass() == 0 || left == window.ItemClass();
}
