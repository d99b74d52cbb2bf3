#include "addin/WatchedWindow.h"

#include <utility>

#include "addin/Names.h"
#include "addin/cOlExplorer.h"
#include "addin/cOlItem.h"

WatchedWindow::WatchedWindow(std::weak_ptr<cOlExplorer> wrapper) : isExplorer_(true), explorer_(std::move(wrapper)) {}

WatchedWindow::WatchedWindow(std::int32_t itemClass, std::weak_ptr<cOlItem> wrapper)
    : isExplorer_(false), itemClass_(itemClass), item_(std::move(wrapper)) {}

bool WatchedWindow::Watch(const platform::Dispatch& window, std::weak_ptr<WindowListener> listener) {
    static constexpr platform::EventHandler<WatchedWindow> handlers[] = {
        {Events::Activate, &WatchedWindow::OnActivate},
        {Events::Close, &WatchedWindow::OnClose},
    };
    const platform::InterfaceId& events = isExplorer_ ? Events::Explorer : Events::Inspector;
    listener_ = std::move(listener);
    for (int attempt = 0; attempt < 2 && !window_.Connected(); ++attempt) {
        window_.Attach(window, events, shared_from_this(), handlers);
    }
    if (!window_.Connected()) Release();
    return window_.Connected();
}

void WatchedWindow::OnActivate(const platform::EventArguments&) {
    if (const auto item = item_.lock()) item->WindowActivated();
}

void WatchedWindow::OnClose(const platform::EventArguments&) {
    Release();
    if (const auto explorer = explorer_.lock(); explorer && explorer->InUse()) explorer->objExplorer_Close();
    if (const auto item = item_.lock()) item->WindowClosed();
    if (const auto listener = listener_.lock()) listener->WindowClosed(shared_from_this());
}
