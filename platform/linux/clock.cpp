#include "platform/clock.h"

#include <ctime>

namespace platform {

Seconds now() {
    return static_cast<Seconds>(::time(nullptr));
}

LocalTime localTime(Seconds moment) {
    const time_t time = moment;
    tm parts{};
    if (::localtime_r(&time, &parts) == nullptr) {
        return {};
    }
    return {parts.tm_year + 1900LL, parts.tm_mon + 1, parts.tm_mday,
            parts.tm_hour,          parts.tm_min,     parts.tm_sec};
}

std::int64_t tickCount() {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::int64_t>(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

std::chrono::microseconds threadProcessorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_nsec / 1000);
}

} // namespace platform
