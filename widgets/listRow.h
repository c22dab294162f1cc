#pragma once

#include <QString>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

// The extra value of a cell: nothing, a number, or a text that is not owned.
using CellTag = std::variant<std::monostate, double, std::string_view>;

// The number in a tag, or the one that its text reads as; nothing if there is none.
[[nodiscard]] std::optional<double> numberOf(const CellTag& tag);

// One cell: its text (UTF-8) and its tag. Refers to texts owned by others.
struct ListCell {
    std::string_view text;
    CellTag tag = {};
};

// One row of a report list, with its texts packed into one block of memory, because a folder of 200,000 files
// makes as many rows. What its readers return refers to the row and is valid until the row is changed or
// moved.
class ListRow {
public:
    // `tag` is the kind of row ("FOLDER", "FILE"); like all the texts, it may be empty.
    ListRow(std::string_view key, std::string_view tag, std::span<const ListCell> cells);

    [[nodiscard]] std::string_view key() const;
    [[nodiscard]] std::string_view tag() const;
    // Columns are counted from 0; a column that the row does not have has no text and no tag.
    [[nodiscard]] ListCell cell(int column) const;

    [[nodiscard]] bool operator==(const ListRow& other) const = default;

    // The key of the small icon in the list's image list; empty until it is fetched.
    QString icon;

private:
    [[nodiscard]] std::string_view field(std::size_t index) const;

    std::string bytes_;
};
