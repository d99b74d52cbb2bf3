#include "platform/forms/Resolution.h"

#include "platform/Desktop.h"

namespace platform {
namespace {

constexpr int eachScreensOwn = 2;  // DPI_AWARENESS_PER_MONITOR_AWARE

// A function that Windows has since 10; none before.
template <class Function>
Function Newer(const char* name) {
    const HMODULE user = GetModuleHandleA("user32.dll");
    return user ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(user, name))) : nullptr;
}

bool CountsEachScreen(HWND window) {
    using ContextOf = void*(WINAPI*)(HWND);
    using AwarenessOf = int(WINAPI*)(void*);
    const auto contextOf = Newer<ContextOf>("GetWindowDpiAwarenessContext");
    const auto awarenessOf = Newer<AwarenessOf>("GetAwarenessFromDpiAwarenessContext");
    return contextOf && awarenessOf && awarenessOf(contextOf(window)) == eachScreensOwn;
}

}  // namespace

std::int32_t DotsAnInchOf(HWND window) {
    using DotsOf = UINT(WINAPI*)(HWND);
    const auto dotsOf = Newer<DotsOf>("GetDpiForWindow");
    const UINT dots = dotsOf && CountsEachScreen(window) ? dotsOf(window) : 0;
    return dots != 0 ? static_cast<std::int32_t>(dots) : DotsPerInch();
}

Rect Rescaled(const Rect& place, std::int32_t dotsBefore, std::int32_t dotsNow) {
    const auto scaled = [&](std::int32_t length) { return MulDiv(length, dotsNow, dotsBefore); };
    const Rect now{scaled(place.left), scaled(place.top), 0, 0};
    return {now.left, now.top, scaled(place.Right()) - now.left, scaled(place.Bottom()) - now.top};
}

}  // namespace platform
