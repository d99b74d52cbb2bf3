// addin/cOlExplorer.h: the wrapper of one Explorer window: its menu, its toolbar buttons and what each click does.
// Where the host has taken our ribbon, the window has no menu and no buttons of ours.
//
// Shapes  A target is an Explorer, the Outlook application, or empty.
// Errors  what the host refuses is skipped; each operation reports its entry and exit to the debug log.
// Owns    the window, its events and every control made in it, until objExplorer_Close.
// Effects host calls, which may pump messages and bring other events.
#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "addin/EventButton.h"
#include "addin/EventSource.h"
#include "addin/MenuEntries.h"
#include "addin/RibbonUi.h"
#include "platform/com/Dispatch.h"

class cOlExplorer final : public std::enable_shared_from_this<cOlExplorer> {
  public:
    // Serves no window yet. Where the ribbon serves Explorers, no command bar is touched.
    explicit cOlExplorer(std::shared_ptr<RibbonUi> ribbon) : ribbon_(std::move(ribbon)) {}

    // Sinks the window's events; the menus follow at its first activation.
    void OpenItem(const platform::Dispatch& explorer, const std::string& gstrProgID_, const std::string& param_);
    // For Outlook 2000: sinks nothing and builds the menus at once.
    void OpenItemOl20(const platform::Dispatch& explorer, const std::string& progId, const std::string& param);

    // Builds what is missing of the menu and the buttons; RemoveMenus takes all of ours away that the window has.
    void SetMenus(const platform::Dispatch& Application_);
    void RemoveMenus(const platform::Dispatch& obj);

    // The window's events.
    void objExplorer_Activate();
    void objExplorer_FolderSwitch();
    void objExplorer_Close();
    void objExplorer_SelectionChange();

    // Whether it serves a window: else its place is free for the next one.
    [[nodiscard]] bool InUse() const { return static_cast<bool>(window_); }

    // The host has taken the ribbon after all: what was put into the command bars goes.
    void RibbonLoaded();
    // For a wrapper that is made for one click on the ribbon and serves no window: the control is in `explorer`.
    void ClickedIn(const platform::Dispatch& explorer) { window_ = explorer; }
    // Whether that Explorer shows a folder of contacts.
    [[nodiscard]] static bool ShowsContacts(const platform::Dispatch& explorer);
    static void SendToPhone(const platform::Dispatch& selection);

    // The commands, whatever was clicked for them.
    void SyncIt_Click();
    void SyncItBoth_Click();
    void SyncItButton_Click();
    void SyncItContacts_Click();
    void SyncItCalendar_Click();
    void ButtonSMSNew_Click();
    void SyncItSettings_Click();
    void MenuOptions_Click();
    void SyncItLogFile_Click();
    void ButtonInfo_Click();
    void SendToPhone_Click();

  private:
    using Command = void (cOlExplorer::*)();

    void Open(const platform::Dispatch& explorer, const std::string& progId, const std::string& param);
    [[nodiscard]] platform::Dispatch AdoptPopup(const platform::Dispatch& menuBar, bool& entriesExist,
                                                std::int16_t& count) const;
    [[nodiscard]] platform::Dispatch AddPopup(const platform::Dispatch& menuBar, std::int16_t before) const;
    void AddEntries(const platform::Dispatch& popup);
    void AddSynchroniseButton(const platform::Dispatch& explorer);
    void ShowSendToPhoneButton();
    void AddSendToPhoneButton();
    // Runs `command` at a click on `button`, if the clicked control carries the add-in's own mark.
    void Bind(EventButton& member, const platform::Dispatch& button, Command command);
    [[nodiscard]] bool IsOwn(const platform::Dispatch& clicked) const;
    [[nodiscard]] bool HasRibbon() const;
    void BuildMenusOnce();
    void RemoveControls(const platform::Dispatch& explorer);
    void TellRibbon();

    void OnActivate(const platform::EventArguments& arguments);
    void OnFolderSwitch(const platform::EventArguments& arguments);
    void OnClose(const platform::EventArguments& arguments);
    void OnSelectionChange(const platform::EventArguments& arguments);

    EventSource objExplorer_;    // without events in the Outlook 2000 mode
    platform::Dispatch window_;  // the Explorer, in both modes
    bool menusBuilt_ = false;
    std::string progId_;
    std::string parameter_;
    std::vector<EventButton> entries_{MenuEntries().size()};
    EventButton synchronise_;
    EventButton sendToPhone_;

    struct Shown {  // of the ribbon's send-to-phone button
        bool visible;
        bool enabled;
        bool operator==(const Shown&) const = default;
    };
    std::shared_ptr<RibbonUi> ribbon_;
    std::optional<Shown> shown_;
};
