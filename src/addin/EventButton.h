// addin/EventButton.h: a command bar button whose clicks one listener gets.
//
// The host calls the sinks of every control that has the clicked one's id and tag: the same button in another
// window, and all entries of a menu, which have no tag. A click is passed on only when the clicked control is
// this one (host quirk 1): by COM identity or InstanceId; where neither tells, the click counts as its own.
//
// Errors  a button whose events cannot be connected is kept without them; everything on no button does nothing.
// Owns    the button and its connection.
#pragma once
#include <functional>
#include <memory>

#include "platform/com/Dispatch.h"
#include "platform/com/Sink.h"

class EventButton {
  public:
    using Handler = std::function<void(const platform::Dispatch& clicked)>;

    // `click`, a member of the listener or a function of it and the clicked control, is called for as long as
    // `listener` lives and this button is bound.
    template <class Listener, class Click>
    void Bind(const platform::Dispatch& button, const std::shared_ptr<Listener>& listener, Click click) {
        Connect(button, [weak = std::weak_ptr<Listener>(listener), click](const platform::Dispatch& clicked) {
            if (const std::shared_ptr<Listener> kept = weak.lock()) std::invoke(click, *kept, clicked);
        });
    }

    void Release() noexcept;
    void Delete();  // from its bar, then Release()
    [[nodiscard]] const platform::Dispatch& Object() const noexcept { return button_; }
    explicit operator bool() const noexcept { return static_cast<bool>(button_); }

  private:
    void Connect(const platform::Dispatch& button, Handler click);

    platform::Dispatch button_;
    platform::Connection connection_;
};
