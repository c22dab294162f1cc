#pragma once

#include <optional>
#include <string>
#include <vector>

#include "export/listTable.h"
#include "widgets/listModel.h"

// A list of the window, for copying and exporting.
class ShownList final : public modExport::ListTable {
public:
    // The rows must outlive this. `chosen`: only these of them.
    explicit ShownList(const ListModel& rows, std::optional<std::vector<int>> chosen = {});

    [[nodiscard]] std::span<const Column> columns() const override { return columns_; }
    [[nodiscard]] std::size_t rowCount() const override;
    [[nodiscard]] std::string_view text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::optional<double> number(std::size_t row, std::size_t column) const override;

private:
    [[nodiscard]] int rowOf(std::size_t row) const;
    [[nodiscard]] ListCell cell(std::size_t row, std::size_t column) const;

    const ListModel& rows_;
    std::optional<std::vector<int>> chosen_;
    std::vector<Column> columns_;
    mutable std::string text_; // the last one requested
};
