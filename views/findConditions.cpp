#include "views/findConditions.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "base/dateFormat.h"
#include "db/jetLike.h"
#include "db/values.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

using platform::LocalTime;

constexpr std::string_view wildcards = "*?";
constexpr double secondsPerDay = 24.0 * 60 * 60;
constexpr double mostDays = 365.0 * 1000;
constexpr double mostBytes = 0x1p63;

// Takes a number, which is not negative, from the beginning of the text.
std::optional<double> takeNumber(std::string_view& text) {
    std::string plain(text);
    const std::string& point = platform::numberSeparators().decimal;
    if (const std::size_t at = plain.find(point); at != std::string::npos && point.size() == 1) {
        plain[at] = '.';
    }
    double number = 0;
    const char* const begin = plain.data();
    const auto [end, error] = std::from_chars(begin, begin + plain.size(), number, std::chars_format::fixed);
    if (error != std::errc() || !std::isfinite(number) || number < 0) {
        return {};
    }
    text = platform::trimmed(text.substr(static_cast<std::size_t>(end - begin)));
    return number;
}

// By which power of 1,024 a unit is more than a byte: "K", "KB" and "KiB" mean the same. -1 if it is no unit.
int powerOf(std::string_view unit) {
    constexpr std::string_view letters = "kmgtp";
    const auto is = [&](std::string_view name) { return platform::equalIgnoringAsciiCase(unit, name); };
    if (unit.empty() || is("b") || is("byte") || is("bytes")) {
        return 0;
    }
    const std::size_t letter = letters.find(platform::asciiLower(unit.front()));
    unit.remove_prefix(1);
    return letter == std::string_view::npos || !(unit.empty() || is("b") || is("ib"))
               ? -1
               : static_cast<int>(letter) + 1;
}

// "(column is null or column="")", for rows that have none.
std::string noneIn(const std::string& column) {
    return "(" + column + " is null or " + column + "=\"\")";
}

std::string textCondition(const std::string& column, std::string_view typed, modFind::Form form) {
    if (typed == modFind::none) {
        return noneIn(column);
    }
    if (modFind::isPattern(typed)) {
        return column + " Like " + modGlobal::quoted(modFind::likePattern(typed, form));
    }
    const std::string stored =
        form == modFind::Form::name ? platform::internalName(typed) : std::string(typed);
    return column + "=" + modGlobal::quoted(stored);
}

} // namespace

std::optional<double> modFind::parseSize(std::string_view text) {
    constexpr double unitStep = 1024;
    std::string_view rest = platform::trimmed(text);
    const std::optional<double> number = takeNumber(rest);
    const int power = number ? powerOf(rest) : -1;
    const double bytes = power < 0 ? -1 : std::round(*number * std::pow(unitStep, power));
    return bytes < 0 || bytes > mostBytes ? std::nullopt : std::optional(bytes);
}

std::optional<LocalTime> modFind::daysBefore(double days, platform::Seconds now) {
    if (!(days >= 0 && days <= mostDays)) {
        return {};
    }
    const LocalTime time = platform::localTime(now - static_cast<platform::Seconds>(days * secondsPerDay));
    return time.month == 0 ? std::nullopt : std::optional(time);
}

std::optional<LocalTime> modFind::parseMoment(std::string_view text, platform::Seconds now) {
    constexpr std::array units{std::pair("", 1), std::pair("d", 1), std::pair("w", 7), std::pair("m", 30),
                               std::pair("y", 365)};
    std::string_view rest = platform::trimmed(text);
    if (const auto day = modFormat::parseDate(std::string(rest) + " 12:00:00 AM")) {
        return day;
    }
    const std::optional<double> number = takeNumber(rest);
    for (const auto& [unit, days] : units) {
        if (number && platform::equalIgnoringAsciiCase(rest, unit)) {
            return daysBefore(*number * days, now);
        }
    }
    return {};
}

bool modFind::isPattern(std::string_view typed) noexcept {
    return typed.find_first_of(wildcards) != std::string_view::npos;
}

std::string modFind::likePattern(std::string_view typed, Form form) {
    std::string pattern;
    while (!typed.empty()) {
        const std::string_view literal = typed.substr(0, typed.find_first_of(wildcards));
        pattern += jetLiteral(form == Form::name ? platform::internalName(literal) : std::string(literal));
        typed.remove_prefix(literal.size());
        if (!typed.empty()) {
            pattern += typed.front();
            typed.remove_prefix(1);
        }
    }
    return pattern;
}

std::string modFind::textConditions(const Conditions& conditions) {
    std::string result;
    std::string_view extension = conditions.extension;
    extension.remove_prefix(extension.starts_with('.') ? 1 : 0);
    if (!extension.empty()) {
        const std::string as = textCondition("extension", extension, Form::name);
        const std::string lower = textCondition("extension", platform::lowerCase(extension), Form::name);
        result += conditions.tellsCaseOfExtensions || as == lower ? " and " + as
                                                                  : " and (" + as + " or " + lower + ")";
    }
    if (!conditions.owner.empty()) {
        result += " and " + textCondition("owner", conditions.owner, Form::plain);
    }
    return result;
}
