#pragma once

#include <span>
#include <string>
#include <vector>

#include "export/listTable.h"
#include "views/findQuery.h"

// What was found, with the columns of the window's list and names as on the disk. For a file, with the bytes
// of each item in a column of their own, unless the size is a number anyway, as in a workbook.
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
