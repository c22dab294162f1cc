#include "collect/collectedTable.h"

#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"

namespace modCollected {

namespace {

enum class Cell {
    table,
    host,
    name,
    scanned,
    since,
    files,
    folders,
    bytes,
    size,
    before,
    changed,
    change,
    remark
};

using Kind = modExport::ListTable::Kind;

// In the order of Cell.
constexpr std::array<modExport::ListTable::Column, 13> allColumns{{{"Table", Kind::text},
                                                                   {"Host", Kind::text},
                                                                   {"Name", Kind::text},
                                                                   {"Scanned", Kind::date},
                                                                   {"Since", Kind::date},
                                                                   {"Files", Kind::count},
                                                                   {"Folders", Kind::count},
                                                                   {"Size (Bytes)", Kind::bytes},
                                                                   {"Size", Kind::bytes},
                                                                   {"Before (Bytes)", Kind::bytes},
                                                                   {"Change (Bytes)", Kind::bytes},
                                                                   {"Change", Kind::bytes},
                                                                   {"Remark", Kind::text}}};

Cell cellAt(const modExport::ListTable::Column& column) {
    std::size_t cell = 0;
    while (allColumns.at(cell).header != column.header) {
        ++cell;
    }
    return static_cast<Cell>(cell);
}

std::optional<double> numberOf(const Row& row, Cell cell) {
    switch (cell) {
    case Cell::files:
        return row.files;
    case Cell::folders:
        return row.folders;
    case Cell::bytes:
    case Cell::size:
        return row.size;
    case Cell::before:
        return row.before;
    case Cell::changed:
    case Cell::change:
        return row.change();
    default:
        return {};
    }
}

std::string dateText(std::optional<platform::Seconds> moment) {
    return moment ? modFormat::formatDate(platform::localTime(*moment), modFormat::storedDatePicture)
                  : std::string();
}

std::string textOf(Table table, const Row& row, Cell cell) {
    switch (cell) {
    case Cell::table:
        return std::string(captionOf(table));
    case Cell::host:
        return row.host;
    case Cell::name:
        return row.name;
    case Cell::scanned:
        return dateText(row.scanned);
    case Cell::since:
        return dateText(row.since);
    case Cell::remark:
        return remarkOf(row);
    default:
        break;
    }
    const auto number = numberOf(row, cell);
    std::string text;
    if (number && cell == Cell::size) {
        text = modLvw::formatSize(*number);
    } else if (number && cell == Cell::change) {
        text = modLvw::formatChange(*number);
    } else if (number) {
        modFormat::appendNumber(text, *number);
    }
    return text;
}

} // namespace

CollectedTable::CollectedTable(const Figures& figures, bool forPeople)
    : columns_(allColumns.begin(), allColumns.end()) {
    if (!forPeople) {
        std::erase_if(columns_, [](const Column& column) {
            return cellAt(column) == Cell::size || cellAt(column) == Cell::change;
        });
    }
    for (std::size_t table = 0; table < tables; ++table) {
        for (const Row& row : figures.rows.at(table)) {
            rows_.emplace_back(static_cast<Table>(table), &row);
        }
    }
}

std::string_view CollectedTable::text(std::size_t row, std::size_t column) const {
    const auto& [table, values] = rows_[row];
    text_ = textOf(table, *values, cellAt(columns_[column]));
    return text_;
}

std::optional<double> CollectedTable::number(std::size_t row, std::size_t column) const {
    const bool isNumber = columns_[column].kind == Kind::bytes || columns_[column].kind == Kind::count;
    return isNumber ? numberOf(*rows_[row].second, cellAt(columns_[column])) : std::nullopt;
}

} // namespace modCollected
