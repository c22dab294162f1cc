#pragma once

#include <QAbstractTableModel>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/locale.h"
#include "widgets/listRow.h"

class ImageList;

// A column of a report list.
struct ListColumn {
    std::string_view header;
    // How modLvw::lvsort builds its keys: "SIZE", "CHANGE", "NUMBER", "SHARE", "BALANCE", "DATE"; else text.
    std::string_view tag;
    bool isNumber;           // right-aligned
    std::string_view widest; // a text that initially fits into the column
    bool holdsNames = false; // internal names, or parts of them, which are shown as on the disk
};

// The rows of a report list, in the order shown, counted from 0. Several rows may have the same key. Rows
// come in batches, because the view is notified of each change.
class ListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    // `images`, the small icons of a list whose keys are paths, must outlive the model. Null for a list with
    // other keys, which has no icons and no tool tips.
    ListModel(std::span<const ListColumn> columns, const ImageList* images);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    [[nodiscard]] std::span<const ListColumn> columns() const noexcept { return columns_; }
    // Replaces those behind the first ones; the model must be empty.
    void setFurtherColumns(std::size_t first, std::span<const ListColumn> columns);
    [[nodiscard]] bool hasIcons() const noexcept { return images_ != nullptr; }

    // The cell's text: if its column contains names, as they are on the disk.
    [[nodiscard]] std::string text(int row, int column) const;

    [[nodiscard]] const ListRow& row(int row) const { return rows_[static_cast<std::size_t>(row)]; }
    // The first row with the key, or -1.
    [[nodiscard]] int find(std::string_view key) const;

    // Shows only the rows that have this text in one of their names or other texts, whatever its case; the
    // others keep their places for later. Everything else here knows only the rows shown. Resets the model.
    void setFilter(const std::string& text);
    [[nodiscard]] const std::string& filter() const noexcept { return filter_; }
    // With those that are not shown.
    [[nodiscard]] int allRowCount() const noexcept { return static_cast<int>(rows_.size() + hidden_.size()); }
    // The place of a row among all.
    [[nodiscard]] int placeOf(int row) const;
    // The row shown with that place; -1 if it is not shown.
    [[nodiscard]] int rowAt(int place) const;

    void append(std::vector<ListRow> rows);
    void clear();
    // Replaces a row; its icon stays.
    void setRow(int row, ListRow changed);
    void setText(int row, int column, std::string_view text);
    void setIcon(int row, const QString& icon);

    // Reorders the rows: order[i] is the current place of the row that moves to place i. References to a row
    // (such as the selection) follow it.
    void reorder(const std::vector<int>& order);

private:
    [[nodiscard]] bool passes(const ListRow& row) const;
    [[nodiscard]] std::string text(const ListRow& row, int column) const;

    std::vector<ListColumn> columns_;
    const ImageList* images_;
    std::vector<ListRow> rows_;
    std::string filter_;     // in lower case
    std::vector<int> shown_; // the places of the rows, ascending, while there is a filter
    std::vector<std::pair<int, ListRow>> hidden_; // by place, ascending
    // Created at the first lookup; empty until then. Its keys refer to the rows.
    mutable std::unordered_map<std::string_view, int, platform::NameHash, platform::NameEqual> places_;
};
