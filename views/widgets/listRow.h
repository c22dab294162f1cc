#pragma once

#include <QString>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

// What a cell carries beside its text: nothing, a raw number, or a text. A text is not owned.
using CellTag = std::variant<std::monostate, double, std::string_view>;

// The number that a tag is, or that its text reads as; nothing when it is none.
[[nodiscard]] std::optional<double> numberOf(const CellTag& tag);

// One cell: what is shown (UTF-8), and its tag. Refers to texts of others.
struct ListCell {
    std::string_view text;
    CellTag tag = {};
};

// One row of a report list, its texts packed into one piece of memory: a folder of 200,000 files is a list of
// as many rows. What its readers return refers to the row and is good until the row is changed or moved.
class ListRow {
public:
    // `tag` says what kind of row it is ("FOLDER", "FILE"); it may be empty, as may all texts.
    ListRow(std::string_view key, std::string_view tag, std::span<const ListCell> cells);

    [[nodiscard]] std::string_view key() const;
    [[nodiscard]] std::string_view tag() const;
    // Columns count from 0; one that the row was not given has no text and no tag.
    [[nodiscard]] ListCell cell(int column) const;

    [[nodiscard]] bool operator==(const ListRow& other) const = default;

    // The key of the small icon in the list's image list; empty while it was not fetched.
    QString icon;

private:
    [[nodiscard]] std::string_view field(std::size_t index) const;

    std::string bytes_;
};
