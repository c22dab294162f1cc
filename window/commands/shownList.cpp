#include "window/commands/shownList.h"

#include <cmath>

namespace {

using Kind = modExport::ListTable::Kind;

Kind kindOf(std::string_view tag) {
    return tag == "SIZE"       ? Kind::bytes
           : tag == "NUMBER"   ? Kind::count
           : tag == "DATETIME" ? Kind::date
                               : Kind::text;
}

} // namespace

ShownList::ShownList(const ListModel& rows) : rows_(rows) {
    for (const ListColumn& column : rows.columns()) {
        columns_.push_back({column.header, kindOf(column.tag)});
    }
}

std::size_t ShownList::rowCount() const {
    return static_cast<std::size_t>(rows_.rowCount());
}

std::string_view ShownList::text(std::size_t row, std::size_t column) const {
    text_ = rows_.text(static_cast<int>(row), static_cast<int>(column));
    return text_;
}

std::optional<double> ShownList::number(std::size_t row, std::size_t column) const {
    const Kind kind = columns_[column].kind;
    if (kind != Kind::bytes && kind != Kind::count) {
        return {};
    }
    const auto number = numberOf(cell(row, column).tag);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

ListCell ShownList::cell(std::size_t row, std::size_t column) const {
    return rows_.row(static_cast<int>(row)).cell(static_cast<int>(column));
}
