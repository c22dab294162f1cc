#pragma once

#include <QObject>
#include <QSettings>
#include <cstddef>
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
};
