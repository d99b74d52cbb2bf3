// platform/Clock.h: the local time of day and date, and waiting.
#pragma once
#include <cstdint>

namespace platform {

struct Date {
    std::int32_t year;   // with the century
    std::int32_t month;  // 1 to 12
    std::int32_t day;    // 1 to 31
};

// Local time, in seconds since midnight with their fraction: 0 up to 86400.
[[nodiscard]] float SecondsSinceMidnight() noexcept;

[[nodiscard]] Date Today() noexcept;

// Waits without handling messages.
void Pause(std::uint32_t milliseconds) noexcept;

}  // namespace platform
