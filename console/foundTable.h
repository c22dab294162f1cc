#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include "export/listTable.h"
#include "views/findQuery.h"

// What was found, for a file: as the window's list, and with the bytes of each item in a column of their own
// unless the size is a number anyway, as in a workbook.
class FoundTable final : public modExport::ListTable {
public:
    // The items must outlive this.
    FoundTable(std::span<const modFind::Item> items, bool withBytes);

    [[nodiscard]] std::span<const Column> columns() const override { return columns_; }
    [[nodiscard]] std::size_t rowCount() const override { return items_.size(); }
    [[nodiscard]] std::string_view text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::optional<double> number(std::size_t row, std::size_t column) const override;

private:
    std::span<const modFind::Item> items_;
    std::vector<Column> columns_;
    mutable std::string text_; // the last one requested
};

// The cells of an item in the list's order: Name, Folder, Size, Owner, Modified, Accessed; with names as on
// the disk.
[[nodiscard]] std::array<std::string, 6> foundCells(const modFind::Item& item);
