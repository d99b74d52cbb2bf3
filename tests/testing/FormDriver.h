// tests/testing/FormDriver.h: uses a modal form as a person would, while its own message loop runs.
//
// Steps run one after the other, each once the messages that the step before has posted are handled (a timer comes
// after all of them); none runs while another one still does, whatever messages that one lets through. A form that is
// still shown after the last step is closed, and Finished says so.
#pragma once
#include <windows.h>

#include <functional>
#include <utility>
#include <vector>

class FormDriver {
  public:
    using Step = std::function<void()>;

    FormDriver(std::function<bool()> shown, std::function<void()> close, std::vector<Step> steps)
        : shown_(std::move(shown)), close_(std::move(close)), steps_(std::move(steps)) {
        driver = this;
        timer_ = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &FormDriver::Tick);
    }
    FormDriver(const FormDriver&) = delete;
    FormDriver& operator=(const FormDriver&) = delete;
    ~FormDriver() {
        KillTimer(nullptr, timer_);
        driver = nullptr;
    }

    // All steps were run and the form went away by itself.
    [[nodiscard]] bool Finished() const { return next_ == steps_.size() && !forced_; }

    static void Key(HWND window, WPARAM key) {
        PostMessageA(window, WM_KEYDOWN, key, 1);
        PostMessageA(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    }
    static void Key(WPARAM key) { Key(GetFocus(), key); }
    static void Click(HWND window) {
        PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(2, 2));
    }

  private:
    static constexpr int patience = 200;  // ticks of 10 ms

    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        if (driver) driver->Advance();
    }
    void Advance() {
        if (inStep_ || !shown_()) return;
        if (next_ < steps_.size()) {
            inStep_ = true;
            steps_[next_++]();
            inStep_ = false;
            return;
        }
        if (++waited_ < patience) return;
        forced_ = true;
        close_();
    }

    inline static FormDriver* driver = nullptr;
    std::function<bool()> shown_;
    std::function<void()> close_;
    std::vector<Step> steps_;
    std::size_t next_ = 0;
    UINT_PTR timer_ = 0;
    int waited_ = 0;
    bool forced_ = false, inStep_ = false;
};
