#include "widgets/listModel.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/paths.h"
#include "widgets/qtText.h"
#include "widgets/systemIcons.h"

namespace {

QVariant alignment(const ListColumn& column) {
    return QVariant::fromValue(
        Qt::Alignment(Qt::AlignVCenter | (column.isNumber ? Qt::AlignRight : Qt::AlignLeft)));
}

} // namespace

ListModel::ListModel(std::span<const ListColumn> columns, const ImageList* images)
    : columns_(columns.begin(), columns.end()), images_(images) {}

void ListModel::setFurtherColumns(std::size_t first, std::span<const ListColumn> columns) {
    const auto begin = static_cast<int>(first);
    if (begin < columnCount()) {
        beginRemoveColumns({}, begin, columnCount() - 1);
        columns_.resize(first);
        endRemoveColumns();
    }
    if (!columns.empty()) {
        beginInsertColumns({}, begin, begin + static_cast<int>(columns.size()) - 1);
        columns_.insert(columns_.end(), columns.begin(), columns.end());
        endInsertColumns();
    }
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const ListRow& row = this->row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return modQt::shownText(text(index.row(), index.column()));
    case Qt::TextAlignmentRole:
        return alignment(columns_[static_cast<std::size_t>(index.column())]);
    case Qt::DecorationRole:
        return images_ && index.column() == 0 && !row.icon.isEmpty() ? images_->image(row.icon) : QVariant();
    case Qt::ToolTipRole:
        return images_ ? modQt::tip(modQt::shownPath(row.key())) : QVariant();
    default:
        return {};
    }
}

std::string ListModel::text(int row, int column) const {
    return text(this->row(row), column);
}

std::string ListModel::text(const ListRow& row, int column) const {
    const std::string_view text = row.cell(column).text;
    const bool isName = columns_[static_cast<std::size_t>(column)].holdsNames;
    return isName ? platform::displayName(text) : std::string(text);
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    const ListColumn& column = columns_[static_cast<std::size_t>(section)];
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromUtf8(column.header);
    case Qt::TextAlignmentRole:
        return alignment(column);
    default:
        return {};
    }
}

int ListModel::find(std::string_view key) const {
    if (places_.empty()) {
        places_.reserve(rows_.size());
        for (int place = 0; const ListRow& row : rows_) {
            places_.try_emplace(row.key(), place++);
        }
    }
    const auto found = places_.find(key);
    return found == places_.end() ? -1 : found->second;
}

// --- The filter -------------------------------------------------------------------------------------------

// Sizes, counts and dates are not looked at.
bool ListModel::passes(const ListRow& row) const {
    for (int column = 0; column < columnCount(); ++column) {
        if (columns_[static_cast<std::size_t>(column)].tag.empty() &&
            platform::lowerCase(text(row, column)).find(filter_) != std::string::npos) {
            return true;
        }
    }
    return false;
}

void ListModel::setFilter(const std::string& text) {
    beginResetModel();
    places_.clear();
    std::vector<ListRow> all;
    all.reserve(rows_.size() + hidden_.size());
    auto shown = std::move_iterator(rows_.begin());
    for (auto& [place, row] : hidden_) {
        const auto before = place - static_cast<int>(all.size());
        all.insert(all.end(), shown, shown + before);
        shown += before;
        all.push_back(std::move(row));
    }
    all.insert(all.end(), shown, std::move_iterator(rows_.end()));
    rows_.clear();
    shown_.clear();
    hidden_.clear();
    filter_ = platform::lowerCase(text);
    if (filter_.empty()) {
        rows_ = std::move(all);
    } else {
        for (int place = 0; ListRow & row : all) {
            if (passes(row)) {
                shown_.push_back(place++);
                rows_.push_back(std::move(row));
            } else {
                hidden_.emplace_back(place++, std::move(row));
            }
        }
    }
    endResetModel();
}

int ListModel::placeOf(int row) const {
    return filter_.empty() ? row : shown_[static_cast<std::size_t>(row)];
}

int ListModel::rowAt(int place) const {
    if (filter_.empty()) {
        return place < rowCount() ? place : -1;
    }
    const auto found = std::lower_bound(shown_.begin(), shown_.end(), place);
    return found == shown_.end() || *found != place ? -1 : static_cast<int>(found - shown_.begin());
}

// --- Changes ----------------------------------------------------------------------------------------------

void ListModel::append(std::vector<ListRow> rows) {
    if (!filter_.empty()) {
        std::vector<ListRow> passing;
        for (int place = allRowCount(); ListRow & row : rows) {
            if (passes(row)) {
                shown_.push_back(place++);
                passing.push_back(std::move(row));
            } else {
                hidden_.emplace_back(place++, std::move(row));
            }
        }
        rows = std::move(passing);
    }
    if (rows.empty()) {
        return;
    }
    places_.clear();
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
    if (rows_.empty()) {
        rows_ = std::move(rows);
    } else {
        rows_.insert(rows_.end(), std::move_iterator(rows.begin()), std::move_iterator(rows.end()));
    }
    endInsertRows();
}

void ListModel::clear() {
    shown_.clear();
    hidden_.clear();
    if (rows_.empty()) {
        return;
    }
    places_.clear();
    beginRemoveRows({}, 0, rowCount() - 1);
    rows_.clear();
    endRemoveRows();
}

void ListModel::setRow(int row, ListRow changed) {
    ListRow& present = rows_[static_cast<std::size_t>(row)];
    changed.icon = present.icon;
    if (changed == present) {
        return;
    }
    places_.clear();
    present = std::move(changed);
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void ListModel::setText(int row, int column, std::string_view text) {
    const ListRow& present = this->row(row);
    if (present.cell(column).text == text) {
        return;
    }
    std::vector<ListCell> cells;
    for (int i = 0; i < columnCount(); ++i) {
        cells.push_back(present.cell(i));
    }
    cells[static_cast<std::size_t>(column)].text = text;
    setRow(row, ListRow(present.key(), present.tag(), cells));
}

void ListModel::setIcon(int row, const QString& icon) {
    rows_[static_cast<std::size_t>(row)].icon = icon;
    Q_EMIT dataChanged(index(row, 0), index(row, 0), {Qt::DecorationRole});
}

void ListModel::reorder(const std::vector<int>& order) {
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    places_.clear();
    std::vector<ListRow> rows;
    rows.reserve(order.size());
    std::vector<int> newPlaces(order.size());
    for (const int place : order) {
        newPlaces[static_cast<std::size_t>(place)] = static_cast<int>(rows.size());
        rows.push_back(std::move(rows_[static_cast<std::size_t>(place)]));
    }
    rows_ = std::move(rows);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex& held : before) {
        after.append(index(newPlaces[static_cast<std::size_t>(held.row())], held.column()));
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}
