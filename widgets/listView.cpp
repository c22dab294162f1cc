#include "widgets/listView.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "widgets/paleSelection.h"

namespace {

constexpr int roomBetweenRows = 6;
constexpr std::string_view shareTag = "SHARE";
constexpr std::string_view balanceTag = "BALANCE";

class RowDelegate final : public QStyledItemDelegate {
public:
    explicit RowDelegate(ListView& list) : QStyledItemDelegate(&list), list_(list) {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setHeight(std::max(option.fontMetrics.height(), list_.iconSize().height()) + roomBetweenRows);
        return size;
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const auto column = static_cast<std::size_t>(index.column());
        const std::string_view tag = list_.rows().columns()[column].tag;
        if (tag == shareTag || tag == balanceTag) {
            const bool isSelected = option.state.testFlag(QStyle::State_Selected);
            const QPalette& palette = tag == balanceTag && !isSelected ? list_.palette() : option.palette;
            const QColor colour = palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
            const double share = numberOf(list_.rows().row(index.row()).cell(index.column()).tag).value_or(0);
            if (tag == shareTag) {
                paintBar(*painter, option.rect, colour, share);
            } else {
                paintBalance(*painter, option.rect, colour, share);
            }
        }
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (isNumber(index)) {
            // A no-break space, so that numbers do not touch the texts of the next column. The style draws
            // numbers like all other texts, because only the style knows the text colour that is readable on
            // its selection.
            option->text += QChar::Nbsp;
        }
        if (index.column() == 0 && list_.rows().hasIcons()) {
            // Icons arrive late; the names leave room for them from the start, so that they do not jump.
            option->features |= QStyleOptionViewItem::HasDecoration;
            option->decorationSize = list_.iconSize();
            option->textElideMode = Qt::ElideMiddle; // the end of a file's name shows its type
        }
    }

private:
    // Over the text, which can be read through it.
    static void paintBar(QPainter& painter, const QRect& cell, QColor colour, double share) {
        constexpr int margin = 3;
        constexpr int opacity = 70;
        colour.setAlpha(opacity);
        QRect bar = cell.adjusted(margin, margin, -margin, -margin);
        bar.setWidth(static_cast<int>(std::lround(bar.width() * std::clamp(share, 0.0, 1.0))));
        painter.fillRect(bar, colour);
    }

    // From the middle line to the right or, below zero, to the left.
    static void paintBalance(QPainter& painter, const QRect& cell, QColor colour, double share) {
        constexpr int margin = 3;
        constexpr int opacity = 160;
        const QRect room = cell.adjusted(margin, margin, -margin, -margin);
        const int middle = room.center().x();
        const auto width = static_cast<int>(
            std::ceil((room.width() / 2.0 - 1) * std::min(std::abs(share), 1.0))); // a small one is seen, too
        painter.fillRect(QRect(middle, cell.top(), 1, cell.height()), colour);
        colour.setAlpha(opacity);
        painter.fillRect(QRect(share < 0 ? middle - width : middle + 1, room.top(), width, room.height()),
                         colour);
    }

    [[nodiscard]] bool isNumber(const QModelIndex& index) const {
        return list_.rows().columns()[static_cast<std::size_t>(index.column())].isNumber;
    }

    ListView& list_;
};

} // namespace

ListView::ListView(std::span<const ListColumn> columns, const ImageList* images, QWidget* parent)
    : QTreeView(parent), rows_(columns, images) {
    setModel(&rows_);
    setItemDelegate(std::make_unique<RowDelegate>(*this).release()); // the view is its parent
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    const int iconSide = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    setIconSize({iconSide, iconSide});
    setUpHeader();
    connect(this, &QAbstractItemView::activated, this, [this](const QModelIndex& index) {
        if (selectionModel()->isRowSelected(index.row())) {
            const ListRow& row = rows_.row(index.row());
            Q_EMIT itemActivated(std::string(row.key()), std::string(row.tag()));
        }
    });
}

// The model is destroyed first, so the view is detached from it here.
ListView::~ListView() {
    setModel(nullptr);
}

void ListView::setUpHeader() {
    QHeaderView& bar = *header();
    bar.setStretchLastSection(false);
    bar.setSectionsMovable(false);
    bar.setSectionsClickable(true);
    bar.setHighlightSections(false);
    for (int i = 0; i < rows_.columnCount(); ++i) {
        setInitialWidth(i);
    }
    leastFirstWidth_ = bar.sectionSize(0);
    connect(&bar, &QHeaderView::sectionClicked, this,
            [this](int section) { Q_EMIT columnClicked(section + 1); });
}

void ListView::setInitialWidth(int column) {
    const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    const int text = fontMetrics().horizontalAdvance(
        QString::fromUtf8(rows_.columns()[static_cast<std::size_t>(column)].widest));
    const int icon = column == 0 && rows_.hasIcons() ? iconSize().width() + margin : 0;
    header()->resizeSection(column, std::max(text + icon + 2 * margin, header()->sectionSizeHint(column)));
}

void ListView::setFurtherColumns(std::size_t first, std::span<const ListColumn> columns) {
    const bool wasFilled = fillsItsRoom();
    for (std::size_t i = first; i < rows_.columns().size(); ++i) {
        formerWidths_[rows_.columns()[i].header] = header()->sectionSize(static_cast<int>(i));
    }
    rows_.setFurtherColumns(first, columns);
    for (int i = static_cast<int>(first); i < rows_.columnCount(); ++i) {
        const auto former = formerWidths_.find(rows_.columns()[static_cast<std::size_t>(i)].header);
        former == formerWidths_.end() ? setInitialWidth(i) : header()->resizeSection(i, former->second);
    }
    if (wasFilled) {
        const int left = viewport()->width() - (header()->length() - header()->sectionSize(0));
        header()->resizeSection(0, std::max(left, leastFirstWidth_));
    }
}

int ListView::selectedRow() const {
    const std::vector<int> selected = selectedRows();
    const bool isCurrent = std::binary_search(selected.begin(), selected.end(), currentIndex().row());
    return selected.empty() ? -1 : isCurrent ? currentIndex().row() : selected.front();
}

std::vector<int> ListView::selectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows()) {
        rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ListView::selectRow(int row) {
    setCurrentIndex(rows_.index(row, 0));
    scrollTo(rows_.index(row, 0));
}

std::pair<int, int> ListView::rowsInView() const {
    const QModelIndex top = indexAt({0, 0});
    if (!top.isValid()) {
        return {0, -1};
    }
    const QModelIndex bottom = indexAt({0, viewport()->height() - 1});
    return {top.row(), bottom.isValid() ? bottom.row() : rows_.rowCount() - 1};
}

void ListView::setSort(const ListSort& sort) {
    sort_ = sort;
    header()->setSortIndicatorShown(sort.sorted);
    header()->setSortIndicator(sort.key, sort.order == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
}

// A reset takes the selection and the position away.
void ListView::setFilter(const std::string& text) {
    if (platform::lowerCase(text) == rows_.filter()) {
        return;
    }
    const bool wasUpdated = updatesEnabled();
    setUpdatesEnabled(false);
    const int top = verticalScrollBar()->value();
    std::vector<int> places;
    for (const int row : selectedRows()) {
        places.push_back(rows_.placeOf(row));
    }
    const int current = currentIndex().isValid() ? rows_.placeOf(currentIndex().row()) : -1;
    rows_.setFilter(text);
    QItemSelection selection;
    for (const int place : places) {
        if (const int row = rows_.rowAt(place); row >= 0) {
            const QModelIndex index = rows_.index(row, 0);
            selection.isEmpty() || selection.back().bottom() != row - 1
                ? selection.append(QItemSelectionRange(index, rows_.index(row, rows_.columnCount() - 1)))
                : void(selection.back() = QItemSelectionRange(selection.back().topLeft(),
                                                              rows_.index(row, rows_.columnCount() - 1)));
        }
    }
    if (const int row = current < 0 ? -1 : rows_.rowAt(current); row >= 0) {
        selectionModel()->setCurrentIndex(rows_.index(row, 0), QItemSelectionModel::NoUpdate);
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    doItemsLayout();
    verticalScrollBar()->setValue(top);
    setUpdatesEnabled(wasUpdated);
}

void ListView::keyboardSearch(const QString& search) {
    // Typed letters always search the first column, whichever cell was clicked.
    if (currentIndex().column() > 0) {
        selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(0), QItemSelectionModel::NoUpdate);
    }
    QTreeView::keyboardSearch(search);
}

void ListView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const int left = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(left);
}

// The first column takes the room that the others leave, and shrinks again with the list, unless the user has
// widened it.
void ListView::resizeEvent(QResizeEvent* event) {
    QHeaderView& bar = *header();
    const int room = viewport()->width();
    const int left = room - (bar.length() - bar.sectionSize(0));
    if (left > bar.sectionSize(0) || fillsItsRoom()) {
        bar.resizeSection(0, std::max(left, leastFirstWidth_));
    }
    roomBefore_ = room;
    QTreeView::resizeEvent(event);
}

bool ListView::fillsItsRoom() const {
    return header()->length() == roomBefore_;
}

void ListView::initViewItemOption(QStyleOptionViewItem* option) const {
    QTreeView::initViewItemOption(option);
    paleSelectionWithoutFocus(*this, *option);
}

void ListView::contextMenuEvent(QContextMenuEvent* event) {
    Q_EMIT menuRequested(event->reason() == QContextMenuEvent::Mouse ? event->globalPos() : menuPlace());
    event->accept();
}

// Alt+1 to Alt+9, because the header does not take the focus; 0 for other keys.
int ListView::columnOfKey(const QKeyEvent& event) {
    const bool isDigit = event.key() >= Qt::Key_1 && event.key() <= Qt::Key_9;
    return isDigit && event.modifiers() == Qt::AltModifier ? event.key() - Qt::Key_0 : 0;
}

void ListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        Q_EMIT menuRequested(menuPlace());
        event->accept();
    } else if (event->matches(QKeySequence::Copy)) { // the whole list, not only the cell that Qt would copy
        if (!event->isAutoRepeat()) {
            Q_EMIT copyRequested();
        }
        event->accept();
    } else if (event->isAutoRepeat() && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        event->accept(); // it may have gone down in the path box
    } else if (const int column = columnOfKey(*event); column > 0 && column <= rows_.columnCount()) {
        if (!event->isAutoRepeat()) {
            Q_EMIT columnClicked(column);
        }
        event->accept();
    } else {
        QTreeView::keyPressEvent(event);
    }
}

// Below the selected row if it is in view, otherwise at the list's upper left corner.
QPoint ListView::menuPlace() const {
    const int row = selectedRow();
    const QRect place = row < 0 ? QRect() : visualRect(rows_.index(row, 0));
    const bool inView = viewport()->rect().contains(place.bottomLeft());
    return viewport()->mapToGlobal(inView ? place.bottomLeft() : QPoint());
}
