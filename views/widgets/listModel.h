#pragma once

#include <QAbstractTableModel>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/locale.h"
#include "views/widgets/listRow.h"

class ImageList;

// A column of a report list.
struct ListColumn {
    std::string_view header;
    std::string_view tag;    // how modLvw::lvsort builds its keys: "SIZE", "NUMBER", "DATE", else as text
    bool isNumber;           // aligned right
    std::string_view widest; // a text that the column has room for at first
};

// The rows of a report list, in the order in which they are shown. Rows count from 0. A key may occur in more
// than one row. Rows come in batches, since each change of the model is told to its view.
class ListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    // The columns must outlive the model; so must `images`, which a list whose keys are paths shows its small
    // icons from. Null for a list with other keys, which has no icons and no tool tips.
    ListModel(std::span<const ListColumn> columns, const ImageList* images);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    [[nodiscard]] std::span<const ListColumn> columns() const noexcept { return columns_; }
    [[nodiscard]] bool hasIcons() const noexcept { return images_ != nullptr; }

    [[nodiscard]] const ListRow& row(int row) const { return rows_[static_cast<std::size_t>(row)]; }
    // The first row with the key, or -1.
    [[nodiscard]] int find(std::string_view key) const;

    void append(std::vector<ListRow> rows);
    void clear();
    // Puts another row in the place of one; its icon stays.
    void setRow(int row, ListRow changed);
    void setText(int row, int column, std::string_view text);
    void setIcon(int row, const QString& icon);

    // Puts the rows in another order: order[i] is the present place of the row that comes to place i. Whoever
    // holds a row (the selection) still holds it afterwards.
    void reorder(const std::vector<int>& order);

private:
    std::span<const ListColumn> columns_;
    const ImageList* images_;
    std::vector<ListRow> rows_;
    // Made when it is first asked for; empty while there is none. Its keys refer to the rows.
    mutable std::unordered_map<std::string_view, int, platform::NameHash, platform::NameEqual> places_;
};
