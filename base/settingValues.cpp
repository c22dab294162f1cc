#include "base/settingValues.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

// Nothing if the text is not a decimal number. Throws 6 if the number is too large for a double.
std::optional<double> toNumber(std::string_view text) {
    text = platform::trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc::result_out_of_range && stop == end) {
        throw RuntimeError(errorNumber::overflow);
    }
    if (error != std::errc{} || stop != end || !std::isfinite(number)) {
        return {};
    }
    return number;
}

} // namespace

bool modSettings::flagOf(std::string_view text) {
    for (const bool value : {false, true}) {
        if (platform::equalIgnoringAsciiCase(platform::trimmed(text), value ? "true" : "false")) {
            return value;
        }
    }
    const auto number = toNumber(text);
    if (!number) {
        throw RuntimeError(errorNumber::typeMismatch);
    }
    return *number != 0;
}

std::int16_t modSettings::numberOf(std::string_view text) {
    const auto number = toNumber(text);
    if (!number) {
        throw RuntimeError(errorNumber::typeMismatch);
    }
    const double rounded = std::nearbyint(*number); // halves are rounded to even
    using Range = std::numeric_limits<std::int16_t>;
    if (rounded < Range::min() || rounded > Range::max()) {
        throw RuntimeError(errorNumber::overflow);
    }
    return static_cast<std::int16_t>(rounded);
}

std::string modSettings::asWritten(const std::string& value) {
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return quoted || platform::trimmed(value) != value ? '"' + value + '"' : value;
}
