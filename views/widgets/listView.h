#pragma once

#include <QTreeView>
#include <string>
#include <utility>

#include "views/widgets/listModel.h"

// How a list is sorted, as the list itself remembers it.
struct ListSort {
    bool sorted = false; // false until it is first sorted
    int key = 0;         // the column, counted from 0
    int order = 0;       // 0 ascending, 1 descending
};

// A report list: whole rows, one selected at a time, found by typing the first letters of the first column.
// Sorted by modLvw::lvsort alone.
class ListView final : public QTreeView {
    Q_OBJECT

public:
    // The arguments of ListModel.
    ListView(std::span<const ListColumn> columns, const ImageList* images, QWidget* parent = nullptr);
    ~ListView() override;

    [[nodiscard]] ListModel& rows() noexcept { return rows_; }
    [[nodiscard]] const ListModel& rows() const noexcept { return rows_; }

    // The selected row, or -1.
    [[nodiscard]] int selectedRow() const;
    // Selects the row and scrolls it into view.
    void selectRow(int row);

    // The first and last row that are in view, be it in part; {0, -1} when none is.
    [[nodiscard]] std::pair<int, int> rowsInView() const;

    // Whether the first column is as wide as the others leave room for, and so follows the list's width.
    [[nodiscard]] bool fillsItsRoom() const;

    [[nodiscard]] const ListSort& sort() const noexcept { return sort_; }
    // Notes how the rows are sorted, and shows it in the header.
    void setSort(const ListSort& sort);

    void keyboardSearch(const QString& search) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

Q_SIGNALS:
    // Enter, a double click, or a click where the desktop activates by one, on the selected row.
    void itemActivated(const std::string& key, const std::string& tag);
    // A click on a header; columns count from 1 here.
    void columnClicked(int column);
    // The right button, the menu key or Shift+F10; the menu's place on the screen.
    void menuRequested(const QPoint& place);
    // Ctrl+C.
    void copyRequested();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;

private:
    void setUpHeader();
    [[nodiscard]] QPoint menuPlace() const;

    ListModel rows_;
    ListSort sort_;
    int leastFirstWidth_ = 0; // of the first column
    int roomBefore_ = 0;      // the width in which the columns were laid out last
};
