#include "base/dateFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>

namespace modFormat {

namespace {

void appendPadded(std::string& result, long long number, std::size_t width) {
    std::array<char, 24> digits;
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    const auto length = static_cast<std::size_t>(end - digits.data());
    result.append(width > length ? width - length : 0, '0');
    result.append(digits.data(), length);
}

int twelveHour(int hour) {
    return hour % 12 == 0 ? 12 : hour % 12;
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// 0 in the form stands for any digit, ? for A or P.
bool hasForm(std::string_view text, std::string_view form) {
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char letter, char wanted) {
        return wanted == '0'   ? isDigit(letter)
               : wanted == '?' ? letter == 'A' || letter == 'P'
                               : letter == wanted;
    });
}

int pairOfDigits(std::string_view text, std::size_t position) {
    return (text[position] - '0') * 10 + (text[position + 1] - '0');
}

std::chrono::year_month_day dateOf(int year, int month, int day) {
    return {std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
            std::chrono::day(static_cast<unsigned>(day))};
}

} // namespace

void appendFormattedDate(std::string& result, const platform::LocalTime& time, std::string_view picture) {
    constexpr std::string_view halfOfDay = "AMPM";
    const bool twelveHourClock = picture.find(halfOfDay) != std::string_view::npos;
    while (!picture.empty()) {
        const char letter = picture.front();
        std::size_t length = std::min(picture.find_first_not_of(letter), picture.size());
        if (letter == 'y' && length >= 2) {
            length = length >= 4 ? 4 : 2;
            appendPadded(result, length == 4 ? time.year : time.year % 100, length);
        } else if (letter == 'm') {
            appendPadded(result, time.month, 2);
        } else if (letter == 'd') {
            appendPadded(result, time.day, 2);
        } else if (letter == 'h') {
            appendPadded(result, twelveHourClock ? twelveHour(time.hour) : time.hour, 2);
        } else if (letter == 'n') {
            appendPadded(result, time.minute, 2);
        } else if (letter == 's') {
            appendPadded(result, time.second, 2);
        } else if (picture.starts_with(halfOfDay)) {
            length = halfOfDay.size();
            result.append(time.hour < 12 ? "AM" : "PM");
        } else {
            result.append(length, letter);
        }
        picture.remove_prefix(length);
    }
}

std::string formatDate(const platform::LocalTime& time, std::string_view picture) {
    std::string result;
    appendFormattedDate(result, time, picture);
    return result;
}

std::optional<platform::LocalTime> parseDate(std::string_view text) {
    if (!hasForm(text, "00/00/0000 00:00:00 ?M")) {
        return {};
    }
    const auto pair = [text](std::size_t position) { return pairOfDigits(text, position); };
    const int year = pair(6) * 100 + pair(8);
    const int hour = pair(11);
    const bool afternoon = text[20] == 'P';
    const platform::LocalTime time{year,     pair(0), pair(3), hour % 12 + (afternoon ? 12 : 0),
                                   pair(14), pair(17)};
    const std::chrono::year_month_day date = dateOf(year, time.month, time.day);
    if (!date.ok() || hour < 1 || hour > 12 || time.minute > 59 || time.second > 59) {
        return {};
    }
    return time;
}

std::string utcText(platform::Seconds moment) {
    const std::chrono::sys_seconds time{std::chrono::seconds(moment)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss clock{time - day};
    return formatDate({static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
                       static_cast<int>(static_cast<unsigned>(date.day())),
                       static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                       static_cast<int>(clock.seconds().count())},
                      "yyyy-mm-dd hh:nn:ss");
}

std::optional<platform::Seconds> parseUtc(std::string_view text) {
    if (!hasForm(text, "0000-00-00 00:00:00")) {
        return {};
    }
    const auto pair = [text](std::size_t position) { return pairOfDigits(text, position); };
    const std::chrono::year_month_day date = dateOf(pair(0) * 100 + pair(2), pair(5), pair(8));
    if (!date.ok() || pair(11) > 23 || pair(14) > 59 || pair(17) > 59) {
        return {};
    }
    const std::chrono::sys_seconds time = std::chrono::sys_days(date) + std::chrono::hours(pair(11)) +
                                          std::chrono::minutes(pair(14)) + std::chrono::seconds(pair(17));
    return time.time_since_epoch().count();
}

void appendReformattedDate(std::string& result, std::string_view stored, std::string_view picture) {
    if (const auto time = parseDate(stored)) {
        appendFormattedDate(result, *time, picture);
    } else {
        result.append(stored);
    }
}

} // namespace modFormat

double modFormat::momentKey(const platform::LocalTime& time) noexcept {
    constexpr double mostMonths = 13;
    constexpr double mostDaysOfMonth = 32;
    constexpr double hours = 24;
    constexpr double sixty = 60;
    const double day =
        (static_cast<double>(time.year) * mostMonths + time.month) * mostDaysOfMonth + time.day;
    return ((day * hours + time.hour) * sixty + time.minute) * sixty + time.second;
}
