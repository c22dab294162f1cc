#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace modExport {

// The message for a list that has no rows to copy or export.
inline constexpr std::string_view emptyListMessage = "The list is empty.";

// A report list for copying and exporting: columns in logical order, rows in the order shown, both counted
// from 0. Whoever reads it begins with the first row and does not go back. It reads the list itself, so
// whoever passes it on must keep the list's rows unchanged meanwhile.
class ListTable {
public:
    enum class Kind { text, bytes, count, date };
    struct Column {
        std::string_view header;
        Kind kind;
    };

    virtual ~ListTable() = default;

    [[nodiscard]] virtual std::span<const Column> columns() const = 0;
    [[nodiscard]] virtual std::size_t rowCount() const = 0;

    // The cell's text as shown; valid until the next call.
    [[nodiscard]] virtual std::string_view text(std::size_t row, std::size_t column) const = 0;
    // The bytes or the count shown in the cell; nothing for other cells.
    [[nodiscard]] virtual std::optional<double> number(std::size_t row, std::size_t column) const = 0;

    // Whether the sums of its numbers mean anything, and whether a file without rows does.
    [[nodiscard]] virtual bool hasTotals() const { return true; }
    [[nodiscard]] virtual bool mayBeEmpty() const { return false; }
};

} // namespace modExport
