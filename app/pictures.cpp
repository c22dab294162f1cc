#include "app/pictures.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>

#include "platform/locale.h"

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

struct NumberPicture {
    std::string_view prefix;
    std::string_view suffix;
    bool grouping = false;
    std::size_t requiredDigits = 0;
    std::size_t decimals = 0;
    std::size_t requiredDecimals = 0;
};

NumberPicture parsePicture(std::string_view picture) {
    constexpr std::string_view pictureCharacters = "#0,.";
    NumberPicture result;
    const std::size_t first = std::min(picture.find_first_of(pictureCharacters), picture.size());
    const std::size_t last = std::min(picture.find_first_not_of(pictureCharacters, first), picture.size());
    result.prefix = picture.substr(0, first);
    result.suffix = picture.substr(last);
    bool behindPoint = false;
    for (const char c : picture.substr(first, last - first)) {
        if (c == '.') {
            behindPoint = true;
        } else if (c == ',') {
            result.grouping = result.grouping || !behindPoint;
        } else if (behindPoint) {
            ++result.decimals;
            result.requiredDecimals = c == '0' ? result.decimals : result.requiredDecimals;
        } else if (c == '0' || result.requiredDigits > 0) {
            ++result.requiredDigits;
        }
    }
    return result;
}

// The digits of a number that is not negative, rounded to so many decimals.
class Digits {
public:
    Digits(double number, std::size_t decimals) {
        first_ = text_.data() + 1; // the first place is for a carry
        last_ = std::to_chars(first_, text_.data() + text_.size(), number, std::chars_format::fixed).ptr;
        point_ = std::find(first_, last_, '.');
        if (static_cast<std::size_t>(last_ - point_) > decimals + 1) {
            last_ = point_ + 1 + decimals;
            if (*last_ >= '5') {
                carry();
            }
        }
    }

    Digits(const Digits&) = delete;
    Digits& operator=(const Digits&) = delete;

    [[nodiscard]] std::string_view whole() const { return {first_, point_}; }
    [[nodiscard]] std::string_view fraction() const { return {point_ == last_ ? last_ : point_ + 1, last_}; }
    [[nodiscard]] bool isZero() const {
        return std::none_of(first_, last_, [](char c) { return c > '0'; });
    }

private:
    void carry() {
        char* digit = last_;
        do {
            digit -= digit - 1 == point_ ? 2 : 1;
            if (digit < first_) {
                first_ = digit;
                *digit = '0';
            }
            *digit = *digit == '9' ? '0' : static_cast<char>(*digit + 1);
        } while (*digit == '0');
    }

    std::array<char, 400> text_; // a double in plain digits: 309 before the point, or about 340 behind it
    char* first_;
    char* point_;
    char* last_;
};

void appendWhole(std::string& result, std::string_view digits, const NumberPicture& picture) {
    if (digits == "0") {
        digits = {};
    }
    const std::string& separator = platform::numberSeparators().grouping;
    const std::size_t padding = picture.requiredDigits - std::min(picture.requiredDigits, digits.size());
    const std::size_t total = padding + digits.size();
    for (std::size_t i = 0; i < total; ++i) {
        if (picture.grouping && i > 0 && (total - i) % 3 == 0) {
            result.append(separator);
        }
        result.push_back(i < padding ? '0' : digits[i - padding]);
    }
}

void appendFraction(std::string& result, std::string_view digits, const NumberPicture& picture) {
    while (digits.size() > picture.requiredDecimals && digits.back() == '0') {
        digits.remove_suffix(1);
    }
    const std::size_t length = std::max(digits.size(), picture.requiredDecimals);
    if (length > 0) {
        result.append(platform::numberSeparators().decimal);
        result.append(digits);
        result.append(length - digits.size(), '0');
    }
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

void appendFormattedNumber(std::string& result, double number, std::string_view picture) {
    if (std::isnan(number)) {
        return;
    }
    const NumberPicture parsed = parsePicture(picture);
    if (std::isinf(number)) {
        result.append(number < 0 ? "-" : "").append(parsed.prefix).append("inf").append(parsed.suffix);
        return;
    }
    const Digits digits(std::fabs(number), parsed.decimals);
    if (number < 0 && !digits.isZero()) {
        result.push_back('-');
    }
    result.append(parsed.prefix);
    appendWhole(result, digits.whole(), parsed);
    appendFraction(result, digits.fraction(), parsed);
    result.append(parsed.suffix);
}

std::string formatNumber(double number, std::string_view picture) {
    std::string result;
    appendFormattedNumber(result, number, picture);
    return result;
}

} // namespace modFormat
