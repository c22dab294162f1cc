#include "platform/clock.h"

#include "platform/win32/fileTime.h"

namespace platform {

Seconds now() {
    FILETIME time{};
    ::GetSystemTimeAsFileTime(&time);
    return secondsOf(time);
}

LocalTime localTime(Seconds moment) {
    const std::optional<FILETIME> time = fileTimeOf(moment);
    FILETIME local{};
    SYSTEMTIME parts{};
    if (!time || ::FileTimeToLocalFileTime(&*time, &local) == 0 ||
        ::FileTimeToSystemTime(&local, &parts) == 0) {
        return {};
    }
    return {parts.wYear, parts.wMonth, parts.wDay, parts.wHour, parts.wMinute, parts.wSecond};
}

std::int64_t tickCount() {
    return static_cast<std::int64_t>(::GetTickCount64());
}

std::chrono::microseconds threadProcessorTime() {
    FILETIME created{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    if (::GetThreadTimes(::GetCurrentThread(), &created, &ended, &kernel, &user) == 0) {
        return {};
    }
    const auto microseconds = [](const FILETIME& time) {
        return ((static_cast<std::int64_t>(time.dwHighDateTime) << 32) + time.dwLowDateTime) / 10;
    };
    return std::chrono::microseconds(microseconds(kernel) + microseconds(user));
}

} // namespace platform
