#include "base/numberFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "platform/locale.h"

namespace modFormat {

namespace {

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

// The digits of a non-negative number, rounded to this many decimals.
class Digits {
public:
    Digits(double number, std::size_t decimals) {
        first_ = text_.data() + 1; // the first place is reserved for a carry
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

    std::array<char, 400> text_; // a double in plain digits: 309 before the point, or about 340 after it
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

void appendNumber(std::string& result, double number) {
    constexpr double exactlyWhole = 9007199254740992.0 * 512; // beyond 2^53, all values are whole numbers
    char digits[32];                                          // NOLINT: to_chars wants an array
    std::to_chars_result end{};
    if (std::abs(number) < exactlyWhole && number == std::trunc(number)) {
        end = std::to_chars(digits, digits + sizeof digits, static_cast<std::int64_t>(number));
    } else {
        end = std::to_chars(digits, digits + sizeof digits, number);
    }
    result.append(digits, end.ptr);
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

std::string countText(double count) {
    return formatNumber(count, "#,##0");
}

std::string countedText(double count, std::string_view one, std::string_view several) {
    return countText(count).append(" ").append(count == 1 ? one : several);
}

} // namespace modFormat
