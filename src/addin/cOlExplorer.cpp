#include "addin/cOlExplorer.h"

#include <utility>

#include "addin/Members.h"
#include "addin/Names.h"
#include "addin/OlButtons.h"
#include "bridge/CVOutlAddIn.h"
#include "bridge/OlVersion.h"
#include "config/IniFile.h"
#include "language/Language.h"
#include "platform/Guard.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/RegEdit.h"

using platform::Dispatch;
using platform::Missing;

namespace {

constexpr const char* popupCaption = "C&orvella";
constexpr std::int32_t popupControl = 10;
constexpr std::int32_t synchroniseNumber = 103;
constexpr std::int32_t sendToPhoneNumber = 107;
constexpr std::int32_t appendToBar = -1;
constexpr std::int32_t sendToPhonePosition = 8;

std::string WithoutMarks(std::string_view caption) { return platform::Replace(caption, "&", ""); }

std::string OwnText(const char* key) { return Language::GetLanguageString(Names::LanguageSection, key); }

bool IsExplorer(const Dispatch& object) { return object.Long(Members::Class) == Members::explorerClass; }

Dispatch ActiveExplorerOf(const Dispatch& application) { return application.Object(Members::Outlook::ActiveExplorer); }

// The Explorer that a target names: itself, or the active one of the application; empty for an empty target.
Dispatch ExplorerOf(const Dispatch& target) {
    if (!target || IsExplorer(target)) return target;
    return target.Text(Members::Outlook::Name) == "Outlook" ? ActiveExplorerOf(target) : Dispatch();
}

// The controls of the bar of that name.
Dispatch ControlsOf(const Dispatch& explorer, const char* bar) {
    const Dispatch bars = explorer.Object(Members::Window::CommandBars);
    return bars.Object(Members::Bars::Item, bar).Object(Members::Bar::Controls);
}

bool IsOwnPopup(const Dispatch& control) {
    return control && WithoutMarks(control.Text(Members::Control::Caption)) == WithoutMarks(popupCaption);
}

// Calls `visit` with every one of the controls, last first, so that it may delete the one it is given.
template <class Visit>
void ForEach(const Dispatch& controls, Visit visit) {
    for (std::int32_t place = controls.Long(Members::Controls::Count); place >= 1; --place) {
        if (const Dispatch control = controls.Object(Members::Controls::Item, place)) visit(control);
    }
}

void DeletePopups(const Dispatch& menuBar) {
    ForEach(menuBar, [](const Dispatch& control) {
        if (IsOwnPopup(control)) control.Call(Members::Control::Delete);
    });
}

bool HoldsEntries(const Dispatch& popup) {
    bool found = false;
    ForEach(popup.Object(Members::Popup::Controls), [&](const Dispatch& entry) {
        found = found || entry.Text(Members::Control::Parameter).ends_with(".Main");
    });
    return found;
}

}  // namespace

void cOlExplorer::Open(const Dispatch& explorer, const std::string& progId, const std::string& param) {
    window_ = explorer;
    progId_ = progId;
    parameter_ = param;
    menusBuilt_ = false;
}

void cOlExplorer::OpenItem(const Dispatch& explorer, const std::string& gstrProgID_, const std::string& param_) {
    const Debug::Trace trace("OpenItem");
    static constexpr platform::EventHandler<cOlExplorer> handlers[] = {
        {Events::Activate, &cOlExplorer::OnActivate},
        {Events::FolderSwitch, &cOlExplorer::OnFolderSwitch},
        {Events::Close, &cOlExplorer::OnClose},
        {Events::SelectionChange, &cOlExplorer::OnSelectionChange},
    };
    Open(explorer, gstrProgID_, param_);
    objExplorer_.Attach(explorer, Events::Explorer, shared_from_this(), handlers);
}

void cOlExplorer::OpenItemOl20(const Dispatch& explorer, const std::string& progId, const std::string& param) {
    const Debug::Trace trace("OpenItemOl20");
    Open(explorer, progId, param);
    SetMenus(explorer);
    menusBuilt_ = true;
}

void cOlExplorer::SetMenus(const Dispatch& Application_) {
    const Debug::Trace trace("SetMenus");
    const Dispatch explorer =
        Application_ ? ExplorerOf(Application_) : ActiveExplorerOf(window_.Object(Members::Application));
    if (!explorer) return;

    const Dispatch menuBar = ControlsOf(explorer, "Menu Bar");
    DeletePopups(menuBar);
    bool entriesExist = false;
    std::int16_t count = 0;
    Dispatch popup = AdoptPopup(menuBar, entriesExist, count);
    if (!popup) popup = AddPopup(menuBar, count);
    if (!entriesExist) AddEntries(popup);
    AddSynchroniseButton(explorer);
    if (!InUse()) RemoveControls(explorer);  // closed meanwhile
}

// Counts the controls of the menu bar; a popup of ours that could not be deleted is kept in use.
Dispatch cOlExplorer::AdoptPopup(const Dispatch& menuBar, bool& entriesExist, std::int16_t& count) const {
    Dispatch popup;
    ForEach(menuBar, [&](const Dispatch& control) {
        ++count;
        if (!IsOwnPopup(control)) return;
        popup = control;
        entriesExist = HoldsEntries(popup);
    });
    return popup;
}

Dispatch cOlExplorer::AddPopup(const Dispatch& menuBar, std::int16_t before) const {
    Dispatch popup = menuBar.Object(Members::Controls::Add, popupControl, Missing, Missing, std::int32_t{before}, true);
    popup.Put(Members::Control::Caption, popupCaption);
    popup.Object(Members::Popup::CommandBar)
        .Put(Members::Bar::Name, platform::Replace(WithoutMarks(popupCaption), " ", ""));
    return popup;
}

void cOlExplorer::AddEntries(const Dispatch& popup) {
    const Dispatch controls = popup.Object(Members::Popup::Controls);
    IniFile::IniInit(false);  // the captions come from what the files say now
    for (std::size_t number = 0; number < entries_.size(); ++number) {
        const MenuEntry& entry = MenuEntries()[number];
        std::string caption = OwnText(entry.languageKey);
        if (caption.empty()) caption = entry.defaultCaption;
        const Dispatch control =
            OlButtons::AddMenuItem(controls, std::string(entry.keyWord) + ".Main", progId_, caption, entry.faceId,
                                   Names::Identification, entry.picture, entry.beginsGroup);
        Bind(entries_[number], control, entry.click);
    }
}

void cOlExplorer::AddSynchroniseButton(const Dispatch& explorer) {
    const Dispatch button = OlButtons::AddCommandBarButton(explorer, synchroniseNumber, progId_, OwnText("Buttonsync"),
                                                           std::string(Names::Identification) + ".Main", true,
                                                           Members::iconAndCaption, appendToBar);
    Bind(synchronise_, button, &cOlExplorer::SyncItButton_Click);
}

void cOlExplorer::RemoveMenus(const Dispatch& obj) {
    const Debug::Trace trace("RemoveMenus");
    const Dispatch explorer = ExplorerOf(obj);
    DeletePopups(ControlsOf(explorer, "Menu Bar"));
    // Buttons of ours carry another OnAction text, so this finds none of them: the synchronise button goes with
    // its window, or when it is made anew.
    const std::string caption = OwnText("Buttonsync");
    ForEach(ControlsOf(explorer, "Standard"), [&](const Dispatch& control) {
        if (!control.Flag(Members::Control::BuiltIn) && control.Text(Members::Control::Caption) == caption &&
            control.Text(Members::Control::OnAction) == "MainSyncBoth")
            control.Call(Members::Control::Delete);
    });
}

void cOlExplorer::OnActivate(const platform::EventArguments&) { objExplorer_Activate(); }
void cOlExplorer::OnFolderSwitch(const platform::EventArguments&) { objExplorer_FolderSwitch(); }
void cOlExplorer::OnClose(const platform::EventArguments&) { objExplorer_Close(); }
void cOlExplorer::OnSelectionChange(const platform::EventArguments&) { objExplorer_SelectionChange(); }

void cOlExplorer::objExplorer_Activate() {
    const Debug::Trace trace("objExplorer_Activate");
    if (OlVersion >= Outlook2002) BuildMenusOnce();
}

void cOlExplorer::BuildMenusOnce() {
    if (HasRibbon()) return;
    const bool first = !std::exchange(menusBuilt_, true);  // building may pump messages and activate once more
    if (!first) return;
    SetMenus(objExplorer_.Object());
    // A window that opens with a contacts folder tells of neither folder nor selection.
    ShowSendToPhoneButton();
    objExplorer_SelectionChange();
}

void cOlExplorer::objExplorer_FolderSwitch() {
    const Debug::Trace trace("objExplorer_FolderSwitch");
    if (HasRibbon()) return TellRibbon();
    if (ribbon_->Offered()) BuildMenusOnce();
    ShowSendToPhoneButton();
}

// While a contacts folder is shown, and only then.
void cOlExplorer::ShowSendToPhoneButton() {
    if (ShowsContacts(objExplorer_.Object())) {
        if (!sendToPhone_) AddSendToPhoneButton();
    } else {
        sendToPhone_.Delete();
    }
}

void cOlExplorer::AddSendToPhoneButton() {
    const Dispatch button =
        OlButtons::AddCommandBarButton(objExplorer_.Object(), sendToPhoneNumber, progId_, OwnText("ButtonSendToPhone"),
                                       parameter_, false, Members::iconOnly, sendToPhonePosition);
    Bind(sendToPhone_, button, &cOlExplorer::SendToPhone_Click);
    if (!InUse()) sendToPhone_.Delete();  // closed meanwhile
}

void cOlExplorer::objExplorer_Close() {
    const Debug::Trace trace("objExplorer_Close");
    const Dispatch explorer = std::exchange(window_, {});
    const bool untouched = ribbon_->Offered() && !menusBuilt_;
    if (!untouched) platform::Attempt([&] { RemoveControls(explorer); });
    // Also where memory ran out on the way: what is held keeps the host in memory.
    for (EventButton& entry : entries_) entry.Release();
    sendToPhone_.Release();
    synchronise_.Release();
    objExplorer_.Release();
}

void cOlExplorer::RemoveControls(const Dispatch& explorer) {
    sendToPhone_.Delete();
    RemoveMenus(explorer);
    for (EventButton& entry : entries_) entry.Release();
    synchronise_.Delete();
}

void cOlExplorer::objExplorer_SelectionChange() {
    const Debug::Trace trace("objExplorer_SelectionChange");
    if (HasRibbon()) return TellRibbon();
    if (!sendToPhone_) return;
    const std::int32_t selected =
        objExplorer_.Object().Object(Members::Window::Selection).Long(Members::Collection::Count);
    sendToPhone_.Object().Put(Members::Control::Enabled, selected != 0);
}

void cOlExplorer::Bind(EventButton& member, const Dispatch& button, Command command) {
    member.Bind(button, shared_from_this(), [command](cOlExplorer& self, const Dispatch& clicked) {
        if (self.IsOwn(clicked)) (self.*command)();
    });
}

bool cOlExplorer::IsOwn(const Dispatch& clicked) const {
    return clicked.Text(Members::Control::OnAction) == Names::OnAction(progId_);
}
