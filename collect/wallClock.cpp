#include "collect/wallClock.h"

#include <chrono>

#include "base/dateFormat.h"

namespace {

using std::chrono::sys_days;

constexpr std::uint32_t secondsPerDay = 86400;
constexpr std::uint32_t secondsPerHour = 3600;
constexpr std::uint32_t secondsPerMinute = 60;

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Of the digits at a place; a negative number if there is anything else.
constexpr int numberAt(std::string_view text, std::size_t at, std::size_t count) {
    int number = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (!isDigit(text[i])) {
            return -1;
        }
        number = 10 * number + (text[i] - '0');
    }
    return number;
}

} // namespace

// "03/14/2004 09:05:07 PM"
std::optional<std::uint32_t> modWallClock::secondsOf(std::string_view stored) {
    constexpr std::string_view form = "mm/dd/yyyy hh:nn:ss AM";
    constexpr int firstYear = 1970;
    constexpr int lastYear = 2105;
    constexpr int noon = 12;
    if (stored.size() != form.size() || stored[2] != '/' || stored[5] != '/' || stored[10] != ' ' ||
        stored[13] != ':' || stored[16] != ':' || stored[19] != ' ' || stored[21] != 'M' ||
        (stored[20] != 'A' && stored[20] != 'P')) {
        return {};
    }
    const int month = numberAt(stored, 0, 2);
    const int day = numberAt(stored, 3, 2);
    const int year = numberAt(stored, 6, 4);
    const int hour = numberAt(stored, 11, 2);
    const int minute = numberAt(stored, 14, 2);
    const int second = numberAt(stored, 17, 2);
    const std::chrono::year_month_day date{std::chrono::year{year},
                                           std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(day)}};
    if (month < 0 || day < 0 || year < firstYear || year > lastYear || !date.ok() || hour < 1 ||
        hour > noon || minute < 0 || minute > 59 || second < 0 || second > 59) {
        return {};
    }
    const auto days = static_cast<std::uint32_t>(sys_days(date).time_since_epoch().count());
    const auto hours = static_cast<std::uint32_t>(hour % noon + (stored[20] == 'P' ? noon : 0));
    const std::uint32_t seconds = days * secondsPerDay + hours * secondsPerHour +
                                  static_cast<std::uint32_t>(minute) * secondsPerMinute +
                                  static_cast<std::uint32_t>(second);
    return seconds == 0 ? std::nullopt : std::optional(seconds);
}

std::string modWallClock::storedText(std::uint32_t seconds) {
    if (seconds == 0) {
        return {};
    }
    const std::uint32_t days = seconds / secondsPerDay;
    const std::uint32_t rest = seconds % secondsPerDay;
    const std::chrono::year_month_day date{sys_days(std::chrono::days(days))};
    return modFormat::formatDate({.year = static_cast<int>(date.year()),
                                  .month = static_cast<int>(static_cast<unsigned>(date.month())),
                                  .day = static_cast<int>(static_cast<unsigned>(date.day())),
                                  .hour = static_cast<int>(rest / secondsPerHour),
                                  .minute = static_cast<int>(rest % secondsPerHour / secondsPerMinute),
                                  .second = static_cast<int>(rest % secondsPerMinute)},
                                 modFormat::storedDatePicture);
}
