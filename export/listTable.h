#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace modExport {

// What is said of a list that has no rows to copy or export.
inline constexpr std::string_view emptyListMessage = "The list is empty.";

// A report list as it is copied and exported: columns in their logical order, rows in the order in which they
// are shown, both counted from 0. Reads the live list; whoever hands one out sees to it that the list's rows
// stay as they are meanwhile.
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

    // The cell as it is shown; good until the next call.
    [[nodiscard]] virtual std::string_view text(std::size_t row, std::size_t column) const = 0;
    // The bytes or the count that the cell stands for; nothing when it stands for none.
    [[nodiscard]] virtual std::optional<double> number(std::size_t row, std::size_t column) const = 0;
};

} // namespace modExport
