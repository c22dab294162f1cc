#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "collect/collectedFigures.h"
#include "export/listTable.h"

namespace modCollected {

// All that a server tells as one list, whose first column says of which table a row is. For people, with
// sizes also in larger units.
class CollectedTable final : public modExport::ListTable {
public:
    // The figures must outlive this.
    CollectedTable(const Figures& figures, bool forPeople);

    [[nodiscard]] std::span<const Column> columns() const override { return columns_; }
    [[nodiscard]] std::size_t rowCount() const override { return rows_.size(); }
    [[nodiscard]] std::string_view text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::optional<double> number(std::size_t row, std::size_t column) const override;
    [[nodiscard]] bool hasTotals() const override { return false; } // the tables tell of the same bytes
    [[nodiscard]] bool mayBeEmpty() const override { return true; }

private:
    std::vector<std::pair<Table, const Row*>> rows_;
    std::vector<Column> columns_;
    mutable std::string text_; // the last one requested
};

} // namespace modCollected
