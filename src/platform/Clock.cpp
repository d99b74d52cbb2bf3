#include "platform/Clock.h"

#include <windows.h>

namespace platform {
namespace {

SYSTEMTIME LocalTime() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return now;
}

}  // namespace

float SecondsSinceMidnight() noexcept {
    const SYSTEMTIME now = LocalTime();
    const std::int32_t seconds = (now.wHour * 60 + now.wMinute) * 60 + now.wSecond;
    return static_cast<float>(seconds + now.wMilliseconds / 1000.0);
}

Date Today() noexcept {
    const SYSTEMTIME now = LocalTime();
    return {now.wYear, now.wMonth, now.wDay};
}

void Pause(std::uint32_t milliseconds) noexcept { Sleep(milliseconds); }

}  // namespace platform
