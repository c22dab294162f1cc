#pragma once

#include <QTreeView>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "widgets/listModel.h"

// The list's own record of how it is sorted.
struct ListSort {
    bool sorted = false; // false until the list is first sorted
    int key = 0;         // the column, counted from 0
    int order = 0;       // 0 ascending, 1 descending
};

// A report list that shows whole rows; one row can be selected, or several if the selection mode allows it,
// and typing the first letters of the first column finds a row. Only modLvw::lvsort sorts it.
class ListView final : public QTreeView {
    Q_OBJECT

public:
    // The arguments of ListModel.
    ListView(std::span<const ListColumn> columns, const ImageList* images, QWidget* parent = nullptr);
    ~ListView() override;

    [[nodiscard]] ListModel& rows() noexcept { return rows_; }
    [[nodiscard]] const ListModel& rows() const noexcept { return rows_; }

    // Replaces the columns behind the first ones, which keep their widths; the list must be empty. A column
    // that was shown before gets the width that it had.
    void setFurtherColumns(std::size_t first, std::span<const ListColumn> columns);

    // The selected row, of several the current one or else the first; -1 if there is none.
    [[nodiscard]] int selectedRow() const;
    // In the list's order.
    [[nodiscard]] std::vector<int> selectedRows() const;
    // Selects the row and scrolls it into view.
    void selectRow(int row);

    // The first and last rows that are at least partly in view; {0, -1} if there are none.
    [[nodiscard]] std::pair<int, int> rowsInView() const;

    // Whether the first column fills the room that the others leave, and therefore follows the list's width.
    [[nodiscard]] bool fillsItsRoom() const;

    [[nodiscard]] const ListSort& sort() const noexcept { return sort_; }
    // Whether sorting treats dates with their time as moments; otherwise as text.
    [[nodiscard]] bool exactDates() const noexcept { return exactDates_; }
    void setExactDates(bool exact) noexcept { exactDates_ = exact; }
    // Records how the rows are sorted, and shows it in the header.
    void setSort(const ListSort& sort);

    // Narrows the rows (ListModel::setFilter); those that stay in view stay selected. Scrolls as little as
    // possible.
    void setFilter(const std::string& text);

    // While an object lives, the list has all its rows, so that they can be changed, sorted and looked up.
    class AllRows {
    public:
        explicit AllRows(ListView& list) : list_(list), filter_(list.rows_.filter()) { list_.setFilter({}); }
        ~AllRows() { list_.setFilter(filter_); }
        AllRows(const AllRows&) = delete;
        AllRows& operator=(const AllRows&) = delete;

    private:
        ListView& list_;
        std::string filter_;
    };

    void keyboardSearch(const QString& search) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

Q_SIGNALS:
    // Enter, a double click, or a single click if the desktop activates with one, on a selected row.
    void itemActivated(const std::string& key, const std::string& tag);
    // A click on a header, or Alt with the column's number; here columns are counted from 1.
    void columnClicked(int column);
    // The right button, the menu key or Shift+F10; `place` is the menu's position on the screen.
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
    void setInitialWidth(int column);
    [[nodiscard]] static int columnOfKey(const QKeyEvent& event);
    [[nodiscard]] QPoint menuPlace() const;

    ListModel rows_;
    ListSort sort_;
    bool exactDates_ = false;
    std::map<std::string_view, int> formerWidths_; // of columns that are not shown, by header
    int leastFirstWidth_ = 0;                      // of the first column
    int roomBefore_ = 0;                           // the width for which the columns were last laid out
};
