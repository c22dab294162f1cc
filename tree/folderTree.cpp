#include "tree/folderTree.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <algorithm>
#include <memory>

#include "widgets/paleSelection.h"

// Shows a selected node with its other image, and the remarks.
class FolderTree::NodeDelegate final : public QStyledItemDelegate {
public:
    explicit NodeDelegate(FolderTree& tree) : QStyledItemDelegate(&tree), tree_(tree) {}

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->state.testFlag(QStyle::State_Selected)) {
            option->icon = index.data(TreeModel::SelectedImageRole).value<QIcon>();
        }
        if (const QString remark = tree_.remarkOn(index); !remark.isEmpty()) {
            option->text += QStringLiteral("   ") + remark;
        }
    }

private:
    const FolderTree& tree_;
};

FolderTree::FolderTree(QWidget* parent) : QTreeView(parent) {
    setModel(&model_);
    setItemDelegate(std::make_unique<NodeDelegate>(*this).release()); // the view is its parent
    setUniformRowHeights(true);
    setHeaderHidden(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    // As wide as the visible rows, and never narrower than the view, so that a click after a row's text still
    // selects it.
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);

    rest_.setSingleShot(true);
    setRestInterval(restInterval);
    connect(&rest_, &QTimer::timeout, this, [this] {
        if (QGuiApplication::mouseButtons() != Qt::NoButton) {
            rest_.start(); // releasing the button will settle it
        } else {
            announceSelection();
        }
    });
    connect(this, &QTreeView::clicked, this, &FolderTree::announceSelection);
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { Q_EMIT nodeExpanded(model_.keyOf(index)); });
    connect(&model_, &TreeModel::expandMarksChanged, this, [this] { scheduleDelayedItemsLayout(); });
}

bool FolderTree::isFirstNode(std::string_view key) const {
    return model_.keyOf(model_.index(0, 0, {})) == key;
}

bool FolderTree::isExpanded(std::string_view key) const {
    return QTreeView::isExpanded(model_.indexOf(key));
}

void FolderTree::setExpanded(std::string_view key, bool expanded) {
    const QModelIndex index = model_.indexOf(key);
    if (!expanded || model_.hasChildren(index)) {
        QTreeView::setExpanded(index, expanded);
    }
}

std::string FolderTree::selectedKey() const {
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? std::string() : model_.keyOf(selected.first());
}

void FolderTree::selectNode(std::string_view key) {
    // A handler that fills the expanded node may change rows here.
    const QPersistentModelIndex index(model_.indexOf(key));
    std::vector<QPersistentModelIndex> above;
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent()) {
        above.emplace_back(parent);
    }
    std::for_each(above.rbegin(), above.rend(), [this](const QModelIndex& parent) { expand(parent); });
    rest_.stop();
    const QScopedValueRollback<bool> guard(selecting_, true);
    setCurrentIndex(index);
    scrollTo(index);
    showAbove(index);
}

// Not if the node itself would go out of sight.
void FolderTree::showAbove(const QModelIndex& index) {
    const QModelIndex parent = index.parent();
    if (!parent.isValid()) {
        return;
    }
    const int between = visualRect(index).bottom() - visualRect(parent).top();
    if (visualRect(parent).top() < 0 && between < viewport()->height()) {
        scrollTo(parent, PositionAtTop);
    }
}

void FolderTree::setRemarks(Remarks remarks) {
    remarksOf_ = std::move(remarks);
    forgetRemarks();
}

void FolderTree::forgetRemarks() {
    remarks_.clear();
    // Measures the rows in sight again.
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    viewport()->update();
}

QString FolderTree::remarkOn(const QModelIndex& index) const {
    if (!remarksOf_) {
        return {};
    }
    const std::string key = model_.keyOf(index);
    const auto known = remarks_.find(key);
    if (known != remarks_.end()) {
        return known->second;
    }
    QString remark = remarksOf_(key);
    if (!remark.isNull()) {
        remarks_.emplace(key, remark);
    }
    return remark;
}

void FolderTree::removeNode(std::string_view key) {
    const std::string above = model_.parentKey(key);
    const QModelIndex node = model_.indexOf(key);
    for (QModelIndex selected = currentIndex(); selected.isValid(); selected = selected.parent()) {
        if (selected == node) {
            selectQuietly(above.empty() ? QModelIndex() : model_.indexOf(above));
            break;
        }
    }
    const QScopedValueRollback<bool> guard(selecting_,
                                           true); // the view must not announce another node instead
    model_.remove(key);
}

std::vector<PlacedNode> FolderTree::allNodes() const {
    std::vector<PlacedNode> nodes = model_.allNodes();
    const std::string selected = selectedKey();
    for (PlacedNode& node : nodes) {
        if (node.parent != PlacedNode::topLevel) {
            nodes[node.parent].expanded = true; // for now: it has children
        }
        node.selected = node.content.key == selected;
    }
    for (PlacedNode& node : nodes) { // asking the view is slow
        node.expanded = node.expanded && isExpanded(node.content.key);
    }
    return nodes;
}

void FolderTree::replaceNodes(std::vector<PlacedNode> nodes) {
    std::vector<std::size_t> expanded;
    std::size_t selected = nodes.size();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i].expanded) {
            expanded.push_back(i);
        }
        selected = nodes[i].selected ? i : selected;
    }
    rest_.stop();
    const QSignalBlocker noSignals(this);
    const std::vector<QModelIndex> indexes = model_.replaceAll(std::move(nodes));
    for (const std::size_t i : expanded) {
        if (model_.rowCount(indexes[i]) > 0) {
            QTreeView::setExpanded(indexes[i], true);
        }
    }
    if (selected < indexes.size()) {
        selectQuietly(indexes[selected]);
    }
}

// A node below a collapsed one stays out of sight, because scrolling to it would expand its parents.
void FolderTree::selectQuietly(const QModelIndex& index) {
    const QScopedValueRollback<bool> guard(selecting_, true);
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false);
    setCurrentIndex(index);
    setAutoScroll(scrolls);
    QModelIndex above = index.parent();
    while (above.isValid() && QTreeView::isExpanded(above)) {
        above = above.parent();
    }
    if (!above.isValid()) {
        scrollTo(index);
    }
}

// --- What the user does -----------------------------------------------------------------------------------

void FolderTree::announceSelection() {
    rest_.stop();
    const std::string key = selectedKey();
    if (!key.empty()) {
        Q_EMIT nodeClicked(key);
    }
}

void FolderTree::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    if (!selecting_ && !selected.isEmpty()) {
        rest_.start();
    }
}

QItemSelectionModel::SelectionFlags FolderTree::selectionCommand(const QModelIndex& index,
                                                                 const QEvent* event) const {
    // Once a node is selected, there is always a selection.
    const QItemSelectionModel::SelectionFlags command = QTreeView::selectionCommand(index, event);
    return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : command;
}

void FolderTree::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::RightButton) {
        QTreeView::mousePressEvent(event);
    }
}

void FolderTree::contextMenuEvent(QContextMenuEvent* event) {
    const bool isMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex node = isMouse ? indexAt(event->pos()) : currentIndex();
    if (node.isValid()) {
        const QPoint place =
            isMouse ? event->globalPos() : viewport()->mapToGlobal(visualRect(node).bottomLeft());
        Q_EMIT menuRequested(model_.keyOf(node), place);
    }
    event->accept();
}

void FolderTree::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    if (rest_.isActive()) { // pressed on one node and released on another, or with another button
        announceSelection();
    }
}

void FolderTree::keyPressEvent(QKeyEvent* event) {
    const bool typing =
        sinceTyped_.isValid() && sinceTyped_.elapsed() < QApplication::keyboardInputInterval();
    switch (event->key()) {
    case Qt::Key_Space:
        if (typing) {
            keyboardSearch(QStringLiteral(" "));
            break;
        }
        [[fallthrough]];
    case Qt::Key_Return:
    case Qt::Key_Enter:
        announceSelection();
        break;
    case Qt::Key_F10:
        if (event->modifiers() == Qt::ShiftModifier && currentIndex().isValid()) {
            Q_EMIT menuRequested(selectedKey(),
                                 viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
            break;
        }
        QTreeView::keyPressEvent(event);
        break;
    case Qt::Key_Asterisk: // Qt would expand, and so list, everything below
    case Qt::Key_Plus:
        if (const std::string key = selectedKey(); !key.empty()) {
            setExpanded(key, true);
        }
        break;
    default:
        QTreeView::keyPressEvent(event);
    }
}

void FolderTree::keyboardSearch(const QString& search) {
    sinceTyped_.start();
    const QScopedValueRollback<bool> guard(exact_, true);
    QTreeView::keyboardSearch(search);
}

// --- What is in sight -------------------------------------------------------------------------------------

void FolderTree::resizeEvent(QResizeEvent* event) {
    header()->setMinimumSectionSize(viewport()->width());
    QTreeView::resizeEvent(event);
}

void FolderTree::initViewItemOption(QStyleOptionViewItem* option) const {
    QTreeView::initViewItemOption(option);
    paleSelectionWithoutFocus(*this, *option);
}

// The widest visible row, including the row that the horizontal scroll bar covers or would cover. Otherwise,
// a row could need the scroll bar that hides it, so that the bar would disappear and appear again without
// end.
int FolderTree::sizeHintForColumn(int) const {
    const int bottom = maximumViewportSize().height();
    int width = -1;
    for (QModelIndex row = indexAt({0, 0}); row.isValid(); row = indexBelow(row)) {
        const QRect place = visualRect(row);
        if (place.top() >= bottom) {
            break;
        }
        const int left = place.left() + horizontalScrollBar()->value();
        width = std::max(width, left + sizeHintForIndex(row).width());
    }
    return width;
}

// Qt would scroll the whole column into view, so that each step in a deep tree would jump sideways.
void FolderTree::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const QScopedValueRollback<bool> guard(exact_, true);
    const int before = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(before);
    const QRect row = visualRect(index);
    const int behindRightEdge = row.left() + sizeHintForIndex(index).width() - viewport()->width();
    // The start of a text matters more than its end.
    const int shift = std::min(row.left() - indentation(), std::max(behindRightEdge, 0));
    horizontalScrollBar()->setValue(before + shift);
}

// The time for a layout is proportional to the number of expanded rows. When the program expands folder after
// folder and handles events in between, the view may lag behind, so that layouts take at most a fifth of the
// time. Code that asks where a node is, or goes to one, gets a current layout.
void FolderTree::doItemsLayout() {
    if (!exact_ && sinceLayout_.isValid() && sinceLayout_.elapsed() < 4 * layoutCost_) {
        scheduleDelayedItemsLayout();
        return;
    }
    sinceLayout_.start();
    QTreeView::doItemsLayout();
    layoutCost_ = sinceLayout_.restart();
}

QRect FolderTree::visualRect(const QModelIndex& index) const {
    const QScopedValueRollback<bool> guard(exact_, true);
    return QTreeView::visualRect(index);
}

QModelIndex FolderTree::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QScopedValueRollback<bool> guard(exact_, true);
    return QTreeView::moveCursor(action, modifiers);
}
