// bridge/FormOlAddInTimer.h: the hidden form whose timer starts the main application after a hand-off.
//
// Shapes  Intervals are milliseconds, 0 to 65535; with 0 an enabled timer does not fire.
// Errors  every one is ignored and nothing is logged; what could not be handed over is, at the next firing.
// Owns    one form, made by its first use and unloaded by its own event. The library stays loaded as long.
// Effects the event reads the changed-items lists and starts the main application with "update".
#pragma once
#include <cstdint>

#include "platform/Timer.h"

class FormOlAddInTimer {
  public:
    class TimerControl {
      public:
        explicit TimerControl(platform::Timer::Event event) : timer_(std::move(event)) {}

        // Enabling begins the countdown anew, and so does another interval while it runs. False where Windows has no
        // timer left for a countdown.
        bool Enable() noexcept;
        void Disable() noexcept;
        [[nodiscard]] bool Enabled() const noexcept { return enabled_; }
        [[nodiscard]] std::int32_t Interval() const noexcept { return interval_; }
        // False, and the interval as it was, where the timer does not take it.
        bool SetInterval(std::int32_t milliseconds) noexcept;

      private:
        bool Restart() noexcept;

        platform::Timer timer_;
        std::int32_t interval_ = 0;
        bool enabled_ = false;
    };

    // The loaded form, which is loaded when it is not.
    [[nodiscard]] static FormOlAddInTimer& Load();
    [[nodiscard]] static bool IsLoaded() noexcept;
    static void Unload() noexcept;

    TimerControl TimerUpdate;

    FormOlAddInTimer(const FormOlAddInTimer&) = delete;
    FormOlAddInTimer& operator=(const FormOlAddInTimer&) = delete;

  private:
    FormOlAddInTimer();
    ~FormOlAddInTimer() = default;
    void TimerUpdate_Timer();

    static FormOlAddInTimer* loaded;
};
