#include "widgets/folderChart.h"

#include <QCursor>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QTextBoundaryFinder>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "views/chartAxis.h"
#include "views/chartSlices.h"
#include "widgets/chartPainting.h"
#include "widgets/qtText.h"

namespace {

// A tip breaks lines only at blanks, and a name may have 255 characters without one.
QString inLines(const QString& text) {
    constexpr int lineLength = 64;
    QString result;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype start = 0;
    int length = 0;
    while (finder.toNextBoundary() >= 0) {
        if (++length == lineLength || finder.position() == text.size()) {
            result += (result.isEmpty() ? QString() : QStringLiteral("\n")) +
                      text.mid(start, finder.position() - start);
            start = finder.position();
            length = 0;
        }
    }
    return result;
}

} // namespace

FolderChart::FolderChart(QWidget* parent)
    : QWidget(parent), hint_(QStringLiteral("No sizes to show. Select a folder in the tree to scan it.")) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(QStringLiteral("Folder chart"));
    tipTimer_.setSingleShot(true);
    setTipDelay(tipDelay);
    connect(&tipTimer_, &QTimer::timeout, this, &FolderChart::showTip);
}

void FolderChart::setEntries(std::vector<ChartEntry> entries, View view) {
    const std::string hoveredLabel = labelAt(hovered_.index);
    const std::string selectedLabel = labelAt(selected_);
    entries_ = std::move(entries);
    if (view == View::largest) {
        position_ = 0;
        selected_ = -1;
    } else if (selected_ >= 0) {
        const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                        [&](const ChartEntry& e) { return e.label == selectedLabel; });
        selected_ = entry == entries_.end() ? -1 : static_cast<int>(entry - entries_.begin());
    }
    if (view == View::largest || labelAt(hovered_.index) != hoveredLabel) {
        hover({});
    }
    relayout();
}

void FolderChart::setChartStyle(ChartStyle style) {
    if (style != style_) {
        style_ = style;
        background_ = {};
        hover({});
        relayout();
        select(selected_ >= count() - selectable() ? selected_ : -1); // a slice may be too thin to select
    }
}

void FolderChart::setHint(const QString& hint) {
    hint_ = hint;
    update();
}

void FolderChart::setFolder(const QString& shownPath) {
    if (shownPath != folder_) {
        folder_ = shownPath;
        background_ = {};
        relayout();
    }
}

void FolderChart::attachScrollBar(QScrollBar* scrollBar) {
    if (scrollBar_) {
        scrollBar_->disconnect(this);
    }
    scrollBar_ = scrollBar;
    if (scrollBar_) {
        connect(scrollBar_, &QScrollBar::valueChanged, this, &FolderChart::setPosition);
    }
    adjustScrollBar();
}

void FolderChart::setPosition(int position) {
    const int nearest = style_ == ChartStyle::bar ? paging().clamped(position) : position_;
    if (nearest != position_) {
        position_ = nearest;
        relayout();
    }
}

ChartState FolderChart::state() const {
    ChartState state;
    state.entries = entries_;
    state.style = style_;
    state.position = position_;
    state.hovered = hovered_.index;
    state.selected = hasFocus() ? selected_ : -1;
    state.font = font();
    state.hint = hint_;
    state.folder = folder_;
    return state;
}

std::string FolderChart::labelAt(int index) const {
    return index >= 0 && index < count() ? entries_[static_cast<std::size_t>(index)].label : std::string();
}

const ChartLayout& FolderChart::layoutNow() {
    if (!layout_) {
        const ChartState now = state();
        layout_.emplace(ChartFrame(rect(), now), now);
    }
    return *layout_;
}

ChartPaging FolderChart::paging() {
    return {count(), layoutNow().frame().barRoom()};
}

// Called after any change of the content or its places.
void FolderChart::relayout() {
    layout_.reset();
    if (style_ == ChartStyle::pie) {
        background_ = {};
    }
    const int nearest = paging().clamped(position_);
    if (nearest != position_) {
        position_ = nearest;
        layout_.reset();
    }
    adjustScrollBar();
    hoverAgain();
    update();
}

void FolderChart::adjustScrollBar() {
    if (scrollBar_) {
        const ChartPaging pages = paging();
        const bool needed = style_ == ChartStyle::bar && pages.lastPosition() > 0;
        const QSignalBlocker blocker(*scrollBar_);
        scrollBar_->setRange(0, needed ? pages.lastPosition() : 0);
        scrollBar_->setPageStep(pages.pageStep());
        scrollBar_->setSingleStep(1);
        scrollBar_->setValue(position_);
        scrollBar_->setEnabled(needed);
        scrollBar_->setVisible(needed);
    }
}

// --- painting -------------------------------------------------------------------------------------------

void FolderChart::renewBackground() {
    const double ratio = devicePixelRatioF();
    background_ = QPixmap((QSizeF(size()) * ratio).toSize());
    background_.setDevicePixelRatio(ratio);
    background_.fill(Qt::white);
    QPainter painter(&background_);
    chartPainting::paintBackground(painter, layoutNow());
}

void FolderChart::paintEvent(QPaintEvent*) {
    if (background_.isNull() || background_.devicePixelRatio() != devicePixelRatioF()) {
        renewBackground();
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, background_);
    chartPainting::paintContent(painter, layoutNow(), state());
}

void FolderChart::resizeEvent(QResizeEvent*) {
    background_ = {};
    relayout();
}

void FolderChart::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        background_ = {};
        relayout();
    }
    QWidget::changeEvent(event);
}

// --- pointer --------------------------------------------------------------------------------------------

void FolderChart::hover(const ChartHit& hit) {
    if (hit.part == hovered_.part && hit.index == hovered_.index) {
        hovered_ = hit;
        return;
    }
    hovered_ = hit;
    if (hit.index >= 0) {
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
    hover(underMouse() ? layoutNow().hit(mapFromGlobal(QPointF(QCursor::pos()))) : ChartHit());
}

void FolderChart::mouseMoveEvent(QMouseEvent* event) {
    hover(layoutNow().hit(event->position()));
}

void FolderChart::leaveEvent(QEvent*) {
    hover({});
}

void FolderChart::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pressed_ = labelAt(layoutNow().hit(event->position()).index);
    }
}

void FolderChart::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        // Compares labels, because a scan may have brought new figures while the button was down.
        const std::string label = labelAt(layoutNow().hit(event->position()).index);
        if (!label.empty() && label == std::exchange(pressed_, {})) {
            Q_EMIT barActivated(label);
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

// The number of the largest entries that can be selected: those with a bar or slice.
int FolderChart::selectable() {
    if (style_ == ChartStyle::bar) {
        return count();
    }
    const std::vector<ChartSlice> slices = chartSlices(entries_);
    return static_cast<int>(std::count_if(slices.begin(), slices.end(),
                                          [](const ChartSlice& slice) { return slice.index >= 0; }));
}

void FolderChart::select(int index) {
    selected_ = index;
    if (index >= 0) {
        const ChartEntry& entry = entries_[static_cast<std::size_t>(index)];
        setAccessibleDescription(modQt::shownName(entry.label) + QStringLiteral(", ") +
                                 QString::fromStdString(chartMarkText(entry.size / 1024 / 1024)));
        if (hasFocus()) {
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
    const int current = selected_ < 0 ? position_ : count() - 1 - selected_;
    int rank = current;
    int scrolled = 0;
    if (key == Qt::Key_Up || (pie && key == Qt::Key_Left)) {
        rank -= selected_ < 0 ? 0 : 1;
    } else if (key == Qt::Key_Down || (pie && key == Qt::Key_Right)) {
        rank += selected_ < 0 ? 0 : 1;
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
        setPosition(paging().showing(rank, paging().clamped(position_ + scrolled)));
        select(count() - 1 - rank);
    }
    return true;
}

void FolderChart::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Enter || key == Qt::Key_Return || key == Qt::Key_Space) {
        if (const std::string label = labelAt(selected_); !label.empty()) {
            Q_EMIT barActivated(label);
        }
    } else if (!moveByKey(key)) {
        QWidget::keyPressEvent(event);
    }
}

void FolderChart::focusInEvent(QFocusEvent* event) {
    const bool byKeyboard =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKeyboard && selected_ < 0 && selectable() > 0) {
        select(count() - 1 - (style_ == ChartStyle::bar ? position_ : 0));
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
    if (hit.part == ChartHit::Part::label && hit.index >= 0) {
        return modQt::tip(inLines(modQt::shownName(labelAt(hit.index))));
    }
    return tipProvider_ ? tipProvider_(hit.megabytes, hit.index)
                        : QString::fromStdString(chartMarkText(hit.megabytes));
}
