// addin/WatchedWindow.h: one open window of the host, whatever it shows: hears when it is activated and closed.
//
// The wrappers serve the windows that carry buttons of ours; every window is watched, because the host leaves
// memory only when nobody holds an object of it, and a mail window may be the last to close (host quirk 3).
//
// Errors  a window whose events cannot be connected, tried twice, is not watched, which Watch says and the handler
//         must heed: it would never hear of that window's end.
// Owns    the window and its connection, until it closes or Release(); its wrapper, if it has one, is the handler's.
#pragma once
#include <cstdint>
#include <memory>

#include "addin/EventSource.h"
#include "platform/com/Dispatch.h"

class cOlExplorer;
class cOlItem;
class WatchedWindow;

class WindowListener {
  public:
    // Comes while the host still closes the window, which is released already.
    virtual void WindowClosed(const std::shared_ptr<WatchedWindow>& window) = 0;

  protected:
    ~WindowListener() = default;
};

class WatchedWindow final : public std::enable_shared_from_this<WatchedWindow> {
  public:
    // An Explorer, or an Inspector of an item of that class; the wrapper may be none.
    explicit WatchedWindow(std::weak_ptr<cOlExplorer> wrapper);
    WatchedWindow(std::int32_t itemClass, std::weak_ptr<cOlItem> wrapper);

    // Holds the window and tells the listener of its end; false: its events could not be had, and nothing is held.
    [[nodiscard]] bool Watch(const platform::Dispatch& window, std::weak_ptr<WindowListener> listener);
    // Hears of nothing more, and holds nothing.
    void Release() noexcept { window_.Release(); }

    // False, too, where the host does not say which object it is.
    [[nodiscard]] bool IsOf(const platform::Dispatch& window) const {
        return platform::Compare(window_.Object(), window) == platform::Identity::Same;
    }
    [[nodiscard]] std::shared_ptr<cOlExplorer> Explorer() const { return explorer_.lock(); }  // null: has no wrapper
    [[nodiscard]] bool IsExplorer() const { return isExplorer_; }
    [[nodiscard]] std::int32_t ItemClass() const { return itemClass_; }  // of what an Inspector showed when it opened

  private:
    void OnActivate(const platform::EventArguments& arguments);
    void OnClose(const platform::EventArguments& arguments);

    bool isExplorer_;
    std::int32_t itemClass_ = 0;
    std::weak_ptr<cOlExplorer> explorer_;
    std::weak_ptr<cOlItem> item_;
    std::weak_ptr<WindowListener> listener_;
    EventSource window_;
};
