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
    constexpr std::string_view form = "00/00/0000 00:00:00 ?M";
    if (text.size() != form.size()) {
        return {};
    }
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool fits = form[i] == '0'   ? isDigit(text[i])
                          : form[i] == '?' ? text[i] == 'A' || text[i] == 'P'
                                           : text[i] == form[i];
        if (!fits) {
            return {};
        }
    }
    const auto pair = [text](std::size_t position) {
        return (text[position] - '0') * 10 + (text[position + 1] - '0');
    };
    const int year = pair(6) * 100 + pair(8);
    const int hour = pair(11);
    const bool afternoon = text[20] == 'P';
    const platform::LocalTime time{year,     pair(0), pair(3), hour % 12 + (afternoon ? 12 : 0),
                                   pair(14), pair(17)};
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(time.month)),
                                           std::chrono::day(static_cast<unsigned>(time.day))};
    if (!date.ok() || hour < 1 || hour > 12 || time.minute > 59 || time.second > 59) {
        return {};
    }
    return time;
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
