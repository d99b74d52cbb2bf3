#include "platform/Timer.h"

#include <windows.h>

#include <utility>

#include "platform/Guard.h"
#include "platform/LastError.h"
#include "platform/SystemError.h"

namespace platform {
namespace {

constexpr const char* className = "CorvellaTimer";
int timers = 0;

LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto timer = reinterpret_cast<Timer*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message != WM_TIMER || timer == nullptr) return DefWindowProcA(window, message, wParam, lParam);
    timer->Fire(static_cast<std::uint32_t>(wParam));
    return 0;
}

void RegisterWindowClass() {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = Receive;
    windowClass.hInstance = ModuleHandle();
    windowClass.lpszClassName = className;
    if (RegisterClassA(&windowClass) || GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return;
    // Windows keeps the classes of a library that was unloaded, so an earlier load may have left its own.
    if (timers == 1 && UnregisterClassA(className, ModuleHandle())) RegisterClassA(&windowClass);
}

}  // namespace

Timer::Timer(Event event) : event_(std::move(event)) {
    ++timers;
    MakeWindow();
}

void Timer::MakeWindow() noexcept {
    RegisterWindowClass();
    window_ = CreateWindowExA(0, className, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, ModuleHandle(), nullptr);
    if (window_ == nullptr) {
        RecordLastError();
    } else {
        SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
}

Timer::~Timer() {
    const LastErrorScope lastError;
    if (window_ != nullptr) {
        Stop();
        SetWindowLongPtrA(window_, GWLP_USERDATA, 0);
        DestroyWindow(window_);
    }
    if (--timers == 0) UnregisterClassA(className, ModuleHandle());
}

bool Timer::Start(std::uint32_t milliseconds) noexcept {
    if (window_ == nullptr) MakeWindow();
    if (window_ == nullptr) return false;
    Stop();
    ++arming_;
    running_ = SetTimer(window_, arming_, milliseconds, nullptr) != 0;
    if (!running_) RecordLastError();
    return running_;
}

void Timer::Stop() noexcept {
    if (!running_) return;
    KillTimer(window_, arming_);
    running_ = false;
}

void Timer::Fire(std::uint32_t arming) noexcept {
    if (!running_ || arming != arming_) return;
    RunGuarded([this] {
        const Event event = event_;  // the event may end this timer, and its own function with it
        event();
    });
}

}  // namespace platform
