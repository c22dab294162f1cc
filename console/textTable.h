#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text.h"

// Tables of text for a terminal.
namespace textTable {

// An internal name in the form for terminals, cut to the width of a table's first column.
[[nodiscard]] std::string shown(std::string_view internalName);

[[nodiscard]] std::string padded(const std::string& text, std::size_t width, bool toTheRight = false);

// Of so many rows, how many a table with at most `top` rows (0 for all) has, and its last line, which counts
// the others.
[[nodiscard]] std::size_t shownRows(std::size_t rows, std::size_t top);
[[nodiscard]] std::string moreLine(std::size_t rows, std::size_t top);

// Each column is as wide as its widest cell; those from `number` to before `numbersEnd` are right-aligned.
template <std::size_t columns>
std::string table(const std::vector<std::array<std::string, columns>>& rows, std::size_t number = 1,
                  std::size_t numbersEnd = columns) {
    std::array<std::size_t, columns> widths{};
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], platform::characterCount(row[i]));
        }
    }
    std::string result;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const bool isLastText = i + 1 == row.size() && i >= numbersEnd;
            result += "  " + padded(row[i], isLastText ? 0 : widths[i], i >= number && i < numbersEnd);
        }
        result += '\n';
    }
    return result;
}

} // namespace textTable
