#pragma once

#include <windows.h>

#include <optional>

#include "platform/clock.h"

namespace platform {

// The system counts tenths of microseconds since 1601.
inline constexpr std::int64_t ticksPerSecond = 10'000'000;
inline constexpr std::int64_t secondsBefore1970 = 11'644'473'600;

[[nodiscard]] inline Seconds secondsOf(const LARGE_INTEGER& ticks) noexcept {
    return ticks.QuadPart / ticksPerSecond - secondsBefore1970;
}

[[nodiscard]] inline Seconds secondsOf(const FILETIME& time) noexcept {
    LARGE_INTEGER ticks;
    ticks.QuadPart = static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    return secondsOf(ticks);
}

// Nothing if the system cannot express the moment.
[[nodiscard]] inline std::optional<FILETIME> fileTimeOf(Seconds moment) noexcept {
    constexpr Seconds last = INT64_MAX / ticksPerSecond - secondsBefore1970;
    if (moment < -secondsBefore1970 || moment > last) {
        return std::nullopt;
    }
    const std::int64_t ticks = (moment + secondsBefore1970) * ticksPerSecond;
    return FILETIME{static_cast<DWORD>(ticks & 0xFFFFFFFF), static_cast<DWORD>(ticks >> 32)};
}

} // namespace platform
