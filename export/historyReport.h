#pragma once

#include <string>
#include <string_view>

#include "export/folderHistory.h"
#include "export/listTable.h"
#include "export/reportFormats.h"

class clsUserInterface;

namespace modExport {

// A history as a list. For people, with sizes also in larger units.
class HistoryTable final : public ListTable {
public:
    // The history must outlive this.
    HistoryTable(const FolderHistory& history, bool forPeople);

    [[nodiscard]] std::span<const Column> columns() const override { return columns_; }
    [[nodiscard]] std::size_t rowCount() const override { return history_.points.size(); }
    [[nodiscard]] std::string_view text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::optional<double> number(std::size_t row, std::size_t column) const override;
    [[nodiscard]] bool hasTotals() const override { return false; } // sums of sizes would mean nothing

private:
    const FolderHistory& history_;
    std::vector<Column> columns_;
    mutable std::string text_; // the last one requested
};

// The sizes as a curve over time: an inline SVG, which takes nothing from outside. Empty for fewer than two.
[[nodiscard]] std::string historyCurve(const FolderHistory& history);

// Writes it as text (RFC 4180), as a page with the curve, or as a workbook with a chart. The file is replaced
// as a whole; errors are logged and leave it unchanged. True if it was written.
bool exportHistory(ReportFormat format, const FolderHistory& history, clsUserInterface& userInterface,
                   std::string_view fileName);

} // namespace modExport
