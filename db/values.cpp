#include "db/values.h"

#include "base/errorTrap.h"

namespace {

bool isAbsent(const Value& value) {
    return std::holds_alternative<std::monostate>(value);
}

bool isZero(const Value& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return *whole == 0;
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return *real == 0;
    }
    const auto& text = std::get<std::string>(value);
    return text == "0" || text.empty();
}

} // namespace

std::string modGlobal::vtsSQL(const Value& value, int kind) {
    return trapped("modGlobal", "vtsSQL", [&]() -> std::string {
        const char* const null = "NULL";
        if (isAbsent(value)) {
            return null;
        }
        std::string text = valueText(value);
        switch (kind) {
        case 1:
            return text.empty() ? null : "'" + text + "'";
        case 2:
            return isZero(value) ? null : text;
        case 3:
            return text.empty() ? null : text;
        case 4:
            return text;
        case 5:
            return '"' + text + '"';
        case 6:
            return text.empty() ? null : '"' + text + '"';
        default:
            return {};
        }
    });
}

Value modGlobal::vts(const Value& value, int kind) {
    return trapped("modGlobal", "vts", [&]() -> Value {
        if (isAbsent(value)) {
            return std::monostate();
        }
        const std::string text = valueText(value);
        const auto result = vts(std::string_view(text), kind);
        if (!result) {
            return std::monostate();
        }
        const bool unchanged = kind == 1 || kind == 5 || kind == 6;
        return unchanged ? value : Value(std::string(*result));
    });
}

std::optional<std::string_view> modGlobal::vts(std::string_view text, int kind) {
    switch (kind) {
    case 1:
    case 3:
    case 6:
        return text.empty() ? std::nullopt : std::optional(text);
    case 4:
    case 5:
        return text;
    default:
        return std::string_view();
    }
}

std::string modGlobal::quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        result.append(c == '"' ? 2 : 1, c);
    }
    return result + '"';
}

std::string modGlobal::quotedOrNull(std::string_view text) {
    return text.empty() ? "NULL" : quoted(text);
}
