#include "window/commands/shownList.h"

#include <cmath>
#include <utility>

namespace {

using Kind = modExport::ListTable::Kind;

Kind kindOf(std::string_view tag) {
    return tag == "SIZE" || tag == "CHANGE" ? Kind::bytes
           : tag == "NUMBER"                ? Kind::count
           : tag == "DATETIME"              ? Kind::date
                                            : Kind::text;
}

} // namespace

ShownList::ShownList(const ListModel& rows, std::optional<std::vector<int>> chosen)
    : rows_(rows), chosen_(std::move(chosen)) {
    for (const ListColumn& column : rows.columns()) {
        if (column.tag == "BALANCE") { // the last one, a picture
            break;
        }
        columns_.push_back({column.header, kindOf(column.tag)});
    }
}

std::size_t ShownList::rowCount() const {
    return chosen_ ? chosen_->size() : static_cast<std::size_t>(rows_.rowCount());
}

int ShownList::rowOf(std::size_t row) const {
    return chosen_ ? chosen_->at(row) : static_cast<int>(row);
}

std::string_view ShownList::text(std::size_t row, std::size_t column) const {
    text_ = rows_.text(rowOf(row), static_cast<int>(column));
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
    return rows_.row(rowOf(row)).cell(static_cast<int>(column));
}
