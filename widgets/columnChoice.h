#pragma once

#include <QObject>
#include <QSettings>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "widgets/listView.h"

// Which further columns a list shows behind its fixed ones. They are chosen in the context menu of its
// header.
class ColumnChoice final : public QObject {
    Q_OBJECT

public:
    // The list shows just its fixed columns. It is not owned; the further columns are kept by others.
    ColumnChoice(ListView& list, std::span<const ListColumn> further);

    // Positions among the further columns, ascending: those shown, from left to right.
    [[nodiscard]] const std::vector<std::size_t>& shown() const noexcept { return shown_; }
    void setShown(std::vector<std::size_t> shown);

    // How the list is sorted if that is by a further column; it is kept as long as that one is shown.
    struct Sort {
        std::size_t further; // its position among them
        int order;           // as in ListSort
    };
    // Note it after the list was sorted.
    void noteSort();
    [[nodiscard]] const std::optional<Sort>& sort() const noexcept { return sort_; }
    // The place of a shown further column in the list, counted from 1.
    [[nodiscard]] int placeOf(std::size_t further) const;

    // By their headers, in the window's own settings file.
    void restore(const QSettings& state);
    void save(QSettings& state) const;

Q_SIGNALS:
    // Before the columns change, which takes an empty list, and afterwards.
    void aboutToChange();
    void changed();

private:
    void showMenu(const QPoint& place);

    ListView& list_;
    std::span<const ListColumn> further_;
    std::size_t fixed_;
    std::vector<std::size_t> shown_;
    std::optional<Sort> sort_;
};
