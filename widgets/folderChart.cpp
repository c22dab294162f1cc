#include "widgets/folderChart.h"

#include <QEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "widgets/chartAccessible.h"
#include "widgets/chartPainting.h"

FolderChart::FolderChart(QWidget* parent)
    : QWidget(parent), hint_(QStringLiteral("No sizes to show. Select a folder in the tree to scan it.")) {
    modChartAccessible::install();
    colours_ = ChartColours::of(palette());
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
    const int depthBefore = depth();
    rests_.clear();
    entries_ = std::move(entries);
    if (view == View::largest) {
        stopTip();
        position_ = 0;
        selected_ = -1;
        clicked_.clear();
        openRests(0);
    } else {
        openRests(depthBefore);
        if (selected_ >= 0) {
            const auto entry = std::find_if(shown().begin(), shown().end(),
                                            [&](const ChartEntry& e) { return e.label == selectedLabel; });
            selected_ = entry == shown().end() ? -1 : static_cast<int>(entry - shown().begin());
        } else if (selected_ == ChartSlice::rest && chartRestCount(slices()) == 0) {
            selected_ = -1;
        }
    }
    if (view == View::largest || labelAt(hovered_.index) != hoveredLabel) {
        hover({});
    }
    relayout();
    modChartAccessible::tellReplaced(*this);
    if (depth() != depthBefore) {
        Q_EMIT depthChanged(depth());
    }
}

void FolderChart::setChartStyle(ChartStyle style) {
    if (style != style_) {
        style_ = style;
        background_ = {};
        setDepth(0, selected_);
        const int rank = rankOf(selected_);
        const bool stays = rank < selectable() && indexAt(rank) == selected_; // an entry may have no slice
        select(stays ? selected_ : -1);
    }
}

void FolderChart::setValues(ChartValues values) {
    if (values == ChartValues::changes) {
        setChartStyle(ChartStyle::bar);
    }
    if (values != values_) {
        setEntries({});
        values_ = values;
        background_ = {};
    }
}

QString FolderChart::valueText(double bytes) const {
    return QString::fromStdString(chartValueText(bytes / 1024 / 1024, values_));
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
    state.entries = shown();
    state.values = values_;
    state.style = style_;
    state.position = position_;
    state.hovered = hovered_.index;
    state.selected = hasFocus() ? selected_ : -1;
    state.font = font();
    state.colours = colours_;
    state.hint = hint_;
    state.folder = folder_;
    state.part = rests_.empty() ? QString() : rests_.back().name;
    return state;
}

std::string FolderChart::labelAt(int index) const {
    return index >= 0 && index < count() ? entries_[static_cast<std::size_t>(index)].label : std::string();
}

// --- the rest --------------------------------------------------------------------------------------------

std::vector<ChartSlice> FolderChart::slices() const {
    return chartSlices(shown());
}

ChartEntry FolderChart::shownEntry(int index) const {
    if (index == ChartSlice::rest) {
        const std::vector<ChartSlice> all = slices();
        return chartRestCount(all) == 0 ? ChartEntry()
                                        : ChartEntry{chartRestName(all.back().entries), all.back().size};
    }
    return index >= 0 && index < count() ? entries_[static_cast<std::size_t>(index)] : ChartEntry();
}

// Opens the rest, then the rest of the rest, and so on, as far as there are that many.
void FolderChart::openRests(int depth) {
    rests_.clear();
    while (this->depth() < depth) {
        const std::vector<ChartSlice> all = slices();
        const std::size_t entries = chartRestCount(all);
        if (entries == 0) {
            break;
        }
        rests_.push_back(
            {static_cast<int>(entries), QString::fromStdString(chartRestName(all.back().entries))});
    }
}

void FolderChart::setDepth(int depth, int selected) {
    const int before = this->depth();
    clicked_.clear();
    hover({});
    openRests(depth);
    selected_ = selected;
    relayout();
    modChartAccessible::tellReplaced(*this);
    if (this->depth() != before) {
        Q_EMIT depthChanged(this->depth());
    }
}

bool FolderChart::up() {
    if (rests_.empty()) {
        return false;
    }
    const bool byKeyboard = selected_ != -1;
    setDepth(depth() - 1, -1);
    select(byKeyboard ? ChartSlice::rest : -1);
    return true;
}

// What Enter and a double click do with an entry beyond activating it.
void FolderChart::enter(int index) {
    if (index == ChartSlice::rest) {
        const bool byKeyboard = selected_ != -1;
        setDepth(depth() + 1, -1);
        select(byKeyboard ? count() - 1 : -1);
    } else if (const std::string label = labelAt(index); !label.empty()) {
        Q_EMIT barEntered(label);
    }
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
    if (style_ == ChartStyle::pie || layoutNow().frame().plot != painted_) {
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
    painted_ = layoutNow().frame().plot;
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
    if (event->type() == QEvent::PaletteChange) {
        colours_ = ChartColours::of(palette());
    }
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) {
        background_ = {};
        relayout();
    }
    QWidget::changeEvent(event);
}
