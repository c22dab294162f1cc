// What the treemap does with pointer and keys, and its tips.

#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <utility>

#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "widgets/chartAccessible.h"
#include "widgets/qtText.h"
#include "widgets/treemap.h"

void Treemap::select(int index) {
    const bool changes = index != selected_;
    selected_ = index;
    if (index >= 0) {
        const ChartEntry entry = shownEntry(index);
        setAccessibleDescription(QString::fromStdString(entry.label + ", " + modLvw::formatSize(entry.size)));
        if (hasFocus()) {
            modChartAccessible::tellSelected(*this);
        }
    }
    if (changes) {
        Q_EMIT itemSelected();
    }
    update();
}

// --- pointer --------------------------------------------------------------------------------------------

void Treemap::hover(int index) {
    if (index == hovered_) {
        return;
    }
    hovered_ = index;
    if (index < 0) {
        stopTip();
    } else {
        startTip(index, true);
    }
    update();
}

void Treemap::mouseMoveEvent(QMouseEvent* event) {
    hover(entryAt(event->position()));
}

void Treemap::leaveEvent(QEvent*) {
    hover(-1);
}

void Treemap::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pressed_ = pathOf(entryAt(event->position()));
    }
}

// Compares paths, because a scan may have brought other items while the button was down.
void Treemap::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const int index = entryAt(event->position());
        const std::string path = pathOf(index);
        if (!path.empty() && path == std::exchange(pressed_, {})) {
            clicked_ = path;
            select(index);
        }
    }
}

void Treemap::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const std::string path = pathOf(entryAt(event->position()));
        if (!path.empty() && path == std::exchange(clicked_, {})) {
            Q_EMIT itemEntered(path);
        }
    }
}

void Treemap::contextMenuEvent(QContextMenuEvent* event) {
    const bool isMouse = event->reason() == QContextMenuEvent::Mouse;
    const int index = isMouse ? entryAt(event->pos()) : selected_;
    event->accept();
    if (index >= 0) {
        stopTip(); // it would cover the menu
        select(index);
        Q_EMIT menuRequested(isMouse ? event->globalPos() : mapToGlobal(markOf(index).center().toPoint()));
    }
}

// --- keyboard -------------------------------------------------------------------------------------------

// The largest of what is shown as one area and is no folder's frame; what is gathered comes last.
int Treemap::largestItem() {
    const auto rank = [](const TreemapTile& tile) {
        const bool isItem = tile.count == 0 && tile.kind != TreemapNode::Kind::gathered;
        return std::pair(isItem, tile.count == 0 ? tile.size : 0);
    };
    const std::vector<TreemapTile>& all = tiles();
    const auto largest = std::max_element(all.begin(), all.end(), [&](const auto& left, const auto& right) {
        return rank(left) < rank(right);
    });
    return static_cast<int>(largest - all.begin());
}

// -1 if the key leads nowhere.
int Treemap::keyTarget(int key) {
    using Direction = TreemapLayout::Direction;
    const auto found = [](std::uint32_t tile) {
        return tile == TreemapTile::none ? -1 : static_cast<int>(tile);
    };
    const std::vector<TreemapTile>& all = tiles();
    if (selected_ < 0 || key == Qt::Key_Home) {
        return largestItem();
    }
    const auto from = static_cast<std::uint32_t>(selected_);
    switch (key) {
    case Qt::Key_PageUp:
        return found(all[from].parent);
    case Qt::Key_PageDown:
        return all[from].count > 0 ? found(all[from].first) : -1;
    case Qt::Key_Left:
        return found(scene_.map.neighbour(from, Direction::left));
    case Qt::Key_Right:
        return found(scene_.map.neighbour(from, Direction::right));
    case Qt::Key_Up:
        return found(scene_.map.neighbour(from, Direction::up));
    default:
        return found(scene_.map.neighbour(from, Direction::down));
    }
}

void Treemap::moveByKey(int key) {
    const int target = tiles().empty() ? -1 : keyTarget(key);
    if (target >= 0) {
        select(target);
        startTip(target, false);
    }
}

void Treemap::activateSelected() {
    if (const std::string path = selectedPath(); !path.empty()) {
        Q_EMIT itemEntered(path);
    }
}

void Treemap::keyPressEvent(QKeyEvent* event) {
    constexpr std::array moves{Qt::Key_Left, Qt::Key_Right,  Qt::Key_Up,      Qt::Key_Down,
                               Qt::Key_Home, Qt::Key_PageUp, Qt::Key_PageDown};
    const int key = event->key();
    const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
    if (plain && (key == Qt::Key_Enter || key == Qt::Key_Return || key == Qt::Key_Space)) {
        if (!event->isAutoRepeat()) { // Enter may have gone down in the path box
            activateSelected();
        }
    } else if (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier && selected_ >= 0) {
        Q_EMIT menuRequested(mapToGlobal(markOf(selected_).center().toPoint()));
    } else if (plain && std::find(moves.begin(), moves.end(), key) != moves.end()) {
        moveByKey(key);
    } else {
        QWidget::keyPressEvent(event); // for whoever stands around the treemap
    }
}

void Treemap::focusInEvent(QFocusEvent* event) {
    const bool byKeyboard =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKeyboard && selected_ < 0) {
        moveByKey(Qt::Key_Home);
    }
    update();
}

void Treemap::focusOutEvent(QFocusEvent*) {
    if (!tipAtPointer_) {
        stopTip();
    }
    update();
}

// --- tips -----------------------------------------------------------------------------------------------

bool Treemap::event(QEvent* event) {
    // Tips have their own delay.
    return event->type() == QEvent::ToolTip || QWidget::event(event);
}

void Treemap::startTip(int index, bool atPointer) {
    tipped_ = index;
    tipAtPointer_ = atPointer;
    tipTimer_.start();
}

void Treemap::stopTip() {
    if (tipped_ >= 0) {
        tipped_ = -1;
        tipTimer_.stop();
        QToolTip::hideText();
    }
}

void Treemap::showTip() {
    const QRectF area = markOf(tipped_);
    if (isVisible() && !area.isNull() && !resizing_.isActive()) {
        const QPoint place = tipAtPointer_ ? QCursor::pos() : mapToGlobal(area.bottomRight().toPoint());
        QToolTip::showText(place, tipText(tipped_), this);
    }
}

// Its path, its size and its share of all.
QString Treemap::tipText(int index) {
    const TreemapTile& tile = tiles()[static_cast<std::size_t>(index)];
    std::string size = modLvw::formatSize(tile.size);
    if (index > 0) {
        const double percent = tile.size / tiles().front().size * 100;
        size +=
            " \u00b7 " + modFormat::formatNumber(percent, "0.0") + "% of " + scene_.nameOf(0).toStdString();
    }
    return modQt::tip(modQt::inLines(scene_.placeOf(static_cast<std::uint32_t>(index))) +
                      QStringLiteral("\n") + QString::fromStdString(size));
}
