#include "widgets/listPlace.h"

#include <QScrollBar>
#include <algorithm>

#include "widgets/listView.h"

ListPlace::ListPlace(const ListView& list) : top_(list.verticalScrollBar()->value()) {
    const std::vector<int> rows = list.selectedRows();
    const int current = list.selectedRow();
    for (const int row : rows) {
        const auto place = row == current ? selected_.begin() : selected_.end();
        selected_.emplace(place, list.rows().row(row).key());
    }
    if (current >= 0) {
        noteNeighbours(list, rows, current);
    }
}

// More than one on each side, because what goes may take others along.
void ListPlace::noteNeighbours(const ListView& list, const std::vector<int>& rows, int current) {
    constexpr int mostOnASide = 1000;
    for (const int step : {1, -1}) {
        int noted = 0;
        for (int row = current + step; row >= 0 && row < list.rows().rowCount() && noted < mostOnASide;
             row += step) {
            if (!std::binary_search(rows.begin(), rows.end(), row)) {
                neighbours_.emplace_back(list.rows().row(row).key());
                ++noted;
            }
        }
    }
}

void ListPlace::restore(ListView& list) const {
    if (selected_.empty() || list.selectedRow() >= 0) {
        return;
    }
    const ListModel& rows = list.rows();
    QItemSelection selection;
    for (const std::string& key : selected_) {
        if (const int row = rows.find(key); row >= 0) {
            selection.select(rows.index(row, 0), rows.index(row, rows.columnCount() - 1));
        }
    }
    list.doItemsLayout();
    list.verticalScrollBar()->setValue(top_);
    if (!selection.isEmpty()) {
        list.selectionModel()->setCurrentIndex(selection.front().topLeft(), QItemSelectionModel::NoUpdate);
        list.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        return;
    }
    const auto near = std::find_if(neighbours_.begin(), neighbours_.end(),
                                   [&](const std::string& key) { return rows.find(key) >= 0; });
    if (near != neighbours_.end()) {
        list.selectRow(rows.find(*near));
    }
}
