#include "db/values.h"

#include "app/errorLog.h"

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
        std::string text = valueText(value);
        switch (kind) {
        case 1:
        case 6:
            return text.empty() ? Value() : value;
        case 3:
            return text.empty() ? Value() : Value(text);
        case 4:
            return text;
        case 5:
            return value;
        default:
            return std::string();
        }
    });
}
