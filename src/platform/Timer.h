// platform/Timer.h: a timer whose event comes on the thread that made it, between that thread's other messages.
//
// Shapes  Periods are milliseconds; Windows rounds them up to its own steps (10 to 16 ms).
// Errors  a timer that cannot be started records the pending error and does not fire; the next Start tries again.
// Owns    a hidden window while it exists; the library stays loaded as long.
// Effects the event is guarded and may end its own timer.
#pragma once
#include <cstdint>
#include <functional>

#include "platform/Module.h"

struct HWND__;

namespace platform {

class Timer {
  public:
    using Event = std::function<void()>;

    explicit Timer(Event event);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // Fires every `milliseconds` until it is stopped; a running one begins anew.
    bool Start(std::uint32_t milliseconds) noexcept;
    void Stop() noexcept;
    [[nodiscard]] bool Running() const noexcept { return running_; }

    // Called by the window procedure. A message of an earlier arming, still waiting when the timer was stopped or
    // started anew, is not its event any more.
    void Fire(std::uint32_t arming) noexcept;

  private:
    void MakeWindow() noexcept;

    KeepLoaded keepLoaded_;
    Event event_;
    HWND__* window_ = nullptr;
    std::uint32_t arming_ = 0;
    bool running_ = false;
};

}  // namespace platform
