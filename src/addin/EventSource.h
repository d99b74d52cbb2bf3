// addin/EventSource.h: an object of the host together with the events that one listener gets from it.
//
// Errors  an object whose events cannot be connected is kept without them, but an earlier connection is not given up
//         for it.
// Owns    the object and the connection; Release() ends the events first.
#pragma once
#include <memory>
#include <utility>

#include "platform/com/Dispatch.h"
#include "platform/com/Sink.h"

class EventSource {
  public:
    // Holds `object` and brings its events to the listener, in place of what it held.
    template <class Listener, std::size_t count>
    void Attach(platform::Dispatch object, const platform::InterfaceId& events,
                const std::shared_ptr<Listener>& listener, const platform::EventHandler<Listener> (&handlers)[count]) {
        platform::Connection connection = platform::ConnectEvents(object, events, listener, handlers);
        if (!connection && connection_) return;
        connection_ = std::move(connection);
        object_ = std::move(object);
    }
    void Release() noexcept {
        connection_.End();
        object_.Reset();
    }
    // Empty while nothing is attached. Not connected: the object is held without its events.
    [[nodiscard]] const platform::Dispatch& Object() const noexcept { return object_; }
    [[nodiscard]] bool Connected() const noexcept { return static_cast<bool>(connection_); }

  private:
    platform::Dispatch object_;
    platform::Connection connection_;
};
