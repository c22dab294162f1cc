#pragma once

#include <chrono>
#include <cstdint>

// The time, and its parts in the user's time zone.
namespace platform {

// Seconds since 1970-01-01 00:00 UTC.
using Seconds = std::int64_t;

struct LocalTime {
    long long year = 0; // the full year: 2026
    int month = 0;      // 1 to 12
    int day = 0;        // 1 to 31
    int hour = 0;       // 0 to 23
    int minute = 0;
    int second = 0;

    bool operator==(const LocalTime&) const = default;
};

[[nodiscard]] Seconds now();

// The parts of a moment in local time; all zero if the system cannot express that moment.
[[nodiscard]] LocalTime localTime(Seconds moment);

// Milliseconds since some fixed moment; never runs backwards.
[[nodiscard]] std::int64_t tickCount();

// How long the calling thread has used a processor.
[[nodiscard]] std::chrono::microseconds threadProcessorTime();

} // namespace platform
