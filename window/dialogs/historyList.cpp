#include "window/dialogs/historyList.h"

#include <algorithm>
#include <array>
#include <string>

#include "export/historyReport.h"

namespace {

// Their headers are those of modExport::HistoryTable.
constexpr std::array<ListColumn, 8> listColumns{{
    {"Date", "DATETIME", false, "12/28/2028 10:58:58 AM  "},
    {"Size", "SIZE", true, "1,023 bytes "},
    {"Change", "CHANGE", true, "+1,023 bytes "},
    {"Files", "NUMBER", true, "1234567 "},
    {"Folders", "NUMBER", true, "1234567 "},
    {"Remark", "", false, "cancelled  "},
    {"Host", "", false, "a machine"},
    {"Saved Scan", "", false, "/home/somebody/kept/vm-home-me-0123456789ab-20261122T031500Z.mdb"},
}};

} // namespace

std::span<const ListColumn> modHistoryList::columns() noexcept {
    return listColumns;
}

std::vector<ListRow> modHistoryList::rows(const modExport::FolderHistory& history) {
    const modExport::HistoryTable table(history, true);
    std::array<std::size_t, listColumns.size()> places{};
    for (std::size_t i = 0; i < listColumns.size(); ++i) {
        const auto found =
            std::find_if(table.columns().begin(), table.columns().end(),
                         [&](const auto& column) { return column.header == listColumns[i].header; });
        places[i] = static_cast<std::size_t>(found - table.columns().begin());
    }
    std::vector<ListRow> rows;
    rows.reserve(table.rowCount());
    std::array<std::string, listColumns.size()> texts;
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        std::array<ListCell, listColumns.size()> cells;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            texts[i] = table.text(row, places[i]);
            cells[i].text = texts[i];
            if (const auto number = table.number(row, places[i])) {
                cells[i].tag = *number;
            }
        }
        rows.emplace_back(std::to_string(row), "", cells);
    }
    return rows;
}
