// addin/cOutlookAddIn.h: the one object that follows Outlook's windows and keeps a wrapper for each.
//
// Shapes  Wrappers stand in slots counted from 0, which are reused after their windows close.
// Errors  what the host refuses is skipped. An application without the events of 2002 is Outlook 2000.
// Owns    the wrappers and the watches until the last window closes; Outlook's application and collections with their
//         events until UnInitHandler with an empty application: at Quit, at disconnection, and before Outlook 2007 when
//         the last window closes.
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "addin/EventSource.h"
#include "addin/RibbonUi.h"
#include "addin/WatchedWindow.h"
#include "addin/cOlExplorer.h"
#include "addin/cOlItem.h"
#include "platform/com/Dispatch.h"

class cOutlookAddIn final : public WindowListener, public std::enable_shared_from_this<cOutlookAddIn> {
  public:
    ~cOutlookAddIn();

    // Outlook's major version, 0 where the host does not tell.
    [[nodiscard]] static std::int32_t VersionOf(const platform::Dispatch& application);

    // Attaches to the application's events and serves the windows that are open; may be called again.
    void InitHandler(const platform::Dispatch& application, const std::string& progId);
    // Instead, for a session that began without a window: hears of its end, and of nothing else.
    void InitWithoutWindows(const platform::Dispatch& application);
    void CloseExplorerWrappers();
    // With an application it is kept, and only what serves windows goes.
    void UnInitHandler(const platform::Dispatch& application);
    // Both: the handler has nothing of the host's any more.
    void ReleaseEverything();

    // The host's events: a window opens (it is not shown yet), or the last one has closed.
    void colExpl_NewExplorer(const platform::Dispatch& explorer);
    void colInsp_NewInspector(const platform::Dispatch& inspector);
    void myolapp_Quit();

    // The ribbon of this session; offers nothing before InitHandler and after UnInitHandler.
    [[nodiscard]] const std::shared_ptr<RibbonUi>& Ribbon() const { return ribbon_; }
    // The host has taken that ribbon: command bars of ours in such windows go.
    void RibbonLoaded(RibbonXml::Kind kind, const platform::Dispatch& ui);
    // A new wrapper for an item of that class; none where such items get no button.
    [[nodiscard]] std::shared_ptr<cOlItem> WrapperFor(std::int32_t itemClass) const;

    // The add-in's own folder with a trailing backslash.
    [[nodiscard]] std::string GetApplPath() const;

  private:
    using ItemWrappers = std::vector<std::shared_ptr<cOlItem>>;

    void OnNewExplorer(const platform::EventArguments& arguments);
    void OnNewInspector(const platform::EventArguments& arguments);
    void OnQuit(const platform::EventArguments& arguments);

    void AttachApplication(const platform::Dispatch& application);
    void AttachCollections(const platform::Dispatch& application);
    void ReleaseEvents();
    void WrapOpenWindows();
    [[nodiscard]] ItemWrappers& WrappersOf(std::int32_t itemClass);
    [[nodiscard]] ItemWrappers& WrappersOf(RibbonXml::Kind kind);
    // False, too, where that window is watched already.
    [[nodiscard]] bool Watch(const platform::Dispatch& window, const std::shared_ptr<WatchedWindow>& watched);
    void OpenFirstExplorer();
    [[nodiscard]] platform::Dispatch FirstExplorer() const;
    // Of a window that is watched already; null: none.
    [[nodiscard]] std::shared_ptr<cOlExplorer> WrapperOf(const platform::Dispatch& explorer) const;
    void ReleaseWindows();
    void WatchUnknownWindows();

    void WindowClosed(const std::shared_ptr<WatchedWindow>& window) override;
    [[nodiscard]] bool ServesAnyWindow() const;
    [[nodiscard]] bool WasLast(const WatchedWindow& window) const;

    EventSource myolapp_;  // empty in the Outlook 2000 mode
    EventSource colExpl_;
    EventSource colInsp_;
    platform::Dispatch application_;
    std::string progId_;
    std::shared_ptr<RibbonUi> ribbon_ = std::make_shared<RibbonUi>(0);
    std::vector<std::shared_ptr<cOlExplorer>> explorers_;
    ItemWrappers contacts_;
    ItemWrappers tasks_;
    ItemWrappers appointments_;
    std::vector<std::shared_ptr<WatchedWindow>> windows_;
};
