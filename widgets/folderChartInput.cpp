// What the chart does with pointer and keys, and its tips.

#include <QCursor>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "views/chartAxis.h"
#include "widgets/chartAccessible.h"
#include "widgets/chartLabel.h"
#include "widgets/folderChart.h"
#include "widgets/qtText.h"

// --- pointer --------------------------------------------------------------------------------------------

void FolderChart::hover(const ChartHit& hit) {
    if (hit.part == hovered_.part && hit.index == hovered_.index) {
        hovered_ = hit;
        return;
    }
    hovered_ = hit;
    if (hit.index >= 0 || hit.part == ChartHit::Part::heading) {
        setCursor(Qt::PointingHandCursor);
    } else {
        unsetCursor();
    }
    if (hit.part == ChartHit::Part::nothing) {
        stopTip();
    } else {
        startTip(hit, true);
    }
    update();
}

// The content under the pointer has changed although the pointer has not moved.
void FolderChart::hoverAgain() {
    hover(underMouse() ? hitAt(mapFromGlobal(QPointF(QCursor::pos()))) : ChartHit());
}

ChartHit FolderChart::hitAt(QPointF point) {
    const QRectF& heading = layoutNow().heading().nameArea;
    if (!rests_.empty() && heading.contains(point)) {
        return {ChartHit::Part::heading, -1, 0, heading};
    }
    return layoutNow().hit(point);
}

void FolderChart::mouseMoveEvent(QMouseEvent* event) {
    hover(hitAt(event->position()));
}

void FolderChart::leaveEvent(QEvent*) {
    hover({});
}

void FolderChart::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const ChartHit hit = hitAt(event->position());
        pressed_ = shownEntry(hit.index).label;
        headingPressed_ = hit.part == ChartHit::Part::heading;
    }
}

void FolderChart::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        // Compares labels, because a scan may have brought new figures while the button was down.
        const ChartHit hit = hitAt(event->position());
        const std::string label = shownEntry(hit.index).label;
        if (std::exchange(headingPressed_, false) && hit.part == ChartHit::Part::heading) {
            up();
        } else if (!label.empty() && label == std::exchange(pressed_, {})) {
            clicked_ = label;
            if (hit.index >= 0) {
                Q_EMIT barActivated(label);
            }
        }
    }
}

// The first click may have opened a folder; then this one is for nothing that is shown now.
void FolderChart::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const int index = hitAt(event->position()).index;
        const std::string label = shownEntry(index).label;
        if (!label.empty() && label == std::exchange(clicked_, {})) {
            enter(index);
        }
    }
}

void FolderChart::wheelEvent(QWheelEvent* event) {
    constexpr int notch = 120;
    constexpr int barsPerNotch = 3;
    wheelRest_ += event->angleDelta().y() * barsPerNotch;
    const int bars = wheelRest_ / notch;
    wheelRest_ -= bars * notch;
    setPosition(position_ - bars);
    event->accept();
}

// --- keyboard -------------------------------------------------------------------------------------------

int FolderChart::selectable() const {
    return style_ == ChartStyle::bar ? count() : static_cast<int>(slices().size());
}

int FolderChart::rankOf(int index) const {
    return index == ChartSlice::rest ? selectable() - 1 : count() - 1 - index;
}

int FolderChart::indexAt(int rank) const {
    const bool isRest = style_ == ChartStyle::pie && rank == selectable() - 1 && chartRestCount(slices()) > 0;
    return isRest ? ChartSlice::rest : count() - 1 - rank;
}

void FolderChart::select(int index) {
    selected_ = index;
    if (const ChartEntry entry = shownEntry(index); !entry.label.empty()) {
        setAccessibleDescription(chartLabel(entry) + QStringLiteral(", ") + valueText(entry.size));
        if (hasFocus()) {
            modChartAccessible::tellSelected(*this);
            startTip({ChartHit::Part::value, index, entry.size / 1024 / 1024, markOf(index)}, false);
        }
    }
    update();
}

// Moves the selection and scrolls to it. False for any other key.
bool FolderChart::moveByKey(int key) {
    const bool pie = style_ == ChartStyle::pie;
    const int page = pie ? 1 : paging().pageStep();
    const int last = selectable() - 1;
    const bool starts = selected_ == -1;
    const int current = starts ? position_ : rankOf(selected_);
    int rank = current;
    int scrolled = 0;
    if (key == Qt::Key_Up || (pie && key == Qt::Key_Left)) {
        rank -= starts ? 0 : 1;
    } else if (key == Qt::Key_Down || (pie && key == Qt::Key_Right)) {
        rank += starts ? 0 : 1;
    } else if (key == Qt::Key_PageUp) {
        rank += scrolled = -page;
    } else if (key == Qt::Key_PageDown) {
        rank += scrolled = page;
    } else if (key == Qt::Key_Home) {
        rank = 0;
    } else if (key == Qt::Key_End) {
        rank = last;
    } else {
        return false;
    }
    if (last >= 0) {
        rank = std::clamp(rank, 0, last);
        setPosition(position_ + scrolled);
        selectRank(rank);
    }
    return true;
}

// As an arrow key does that finds nothing selected. False if something is, or there is nothing.
bool FolderChart::selectFirst() {
    if (selected_ != -1 || selectable() == 0) {
        return false;
    }
    selectRank(style_ == ChartStyle::bar ? position_ : 0);
    return true;
}

void FolderChart::activateSelected() {
    const std::string label = labelAt(selected_);
    enter(selected_);
    if (!label.empty()) {
        Q_EMIT barActivated(label);
    }
}

void FolderChart::selectRank(int rank) {
    setPosition(paging().showing(rank, position_));
    select(indexAt(rank));
}

void FolderChart::selectLabel(std::string_view label) {
    const auto all = shown();
    const auto entry =
        std::find_if(all.begin(), all.end(), [&](const ChartEntry& e) { return e.label == label; });
    const int index = entry == all.end() ? -1 : static_cast<int>(entry - all.begin());
    if (index >= 0 && rankOf(index) < selectable()) {
        selectRank(rankOf(index));
    }
}

void FolderChart::popUpForSelected() {
    if (pointedAt() == -1) {
        selectFirst();
    }
    if (const int index = pointedAt(); index >= 0) {
        stopTip(); // it would cover the menu
        Q_EMIT menuRequested(index, mapToGlobal(markOf(index).center().toPoint()));
    }
}

void FolderChart::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
    const bool isUp =
        plain ? key == Qt::Key_Backspace : key == Qt::Key_Up && event->modifiers().testFlag(Qt::AltModifier);
    if (plain && (key == Qt::Key_Enter || key == Qt::Key_Return || key == Qt::Key_Space)) {
        if (!event->isAutoRepeat() && !selectFirst()) { // Enter may have gone down in the path box
            activateSelected();
        }
    } else if (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        popUpForSelected();
    } else if (isUp ? !up() : !plain || !moveByKey(key)) {
        QWidget::keyPressEvent(event); // for whoever stands around the chart
    }
}

void FolderChart::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Mouse) {
        popUpForSelected();
    } else if (const int index = entryAt(event->pos()); index >= 0) {
        stopTip(); // it would cover the menu
        Q_EMIT menuRequested(index, event->globalPos());
    }
    event->accept();
}

void FolderChart::focusInEvent(QFocusEvent* event) {
    const bool byKeyboard =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKeyboard) {
        selectFirst();
    }
    update();
}

void FolderChart::focusOutEvent(QFocusEvent*) {
    if (!tipAtPointer_) {
        stopTip();
    }
    update();
}

// --- tips and clicks ------------------------------------------------------------------------------------

bool FolderChart::event(QEvent* event) {
    // Tips have their own delay.
    return event->type() == QEvent::ToolTip || QWidget::event(event);
}

void FolderChart::startTip(const ChartHit& hit, bool byMouse) {
    tipped_ = hit;
    tipAtPointer_ = byMouse;
    tipTimer_.start();
}

void FolderChart::stopTip() {
    if (tipped_.part != ChartHit::Part::nothing) {
        tipped_ = {};
        tipTimer_.stop();
        QToolTip::hideText();
    }
}

void FolderChart::showTip() {
    const QPoint place = tipAtPointer_ ? QCursor::pos() : mapToGlobal(tipped_.area.bottomRight().toPoint());
    if (isVisible() && !tipped_.area.isNull()) {
        QToolTip::showText(place, tipText(tipped_), this,
                           tipAtPointer_ ? tipped_.area.toAlignedRect() : QRect());
    }
}

QString FolderChart::tipText(const ChartHit& hit) const {
    if (hit.part == ChartHit::Part::heading) {
        return QStringLiteral("Back to the whole pie (Backspace)");
    }
    if (hit.part == ChartHit::Part::label && hit.index >= 0) {
        return modQt::tip(modQt::inLines(chartLabel(shownEntry(hit.index))));
    }
    const QString text =
        tipProvider_ ? tipProvider_(hit.megabytes, hit.index) : valueText(hit.megabytes * 1024 * 1024);
    return hit.index == ChartSlice::rest
               ? text + QStringLiteral("\nDouble-click to show these as a pie of their own")
               : text;
}
