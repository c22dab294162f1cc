#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QTreeView>
#include <string>
#include <string_view>
#include <vector>

#include "tree/treeModel.h"

// The folder tree control `tvw`: nodes are spoken of by their keys (tree/nodeKeys.h), one at most is
// selected.
//
// Errors are the model's: an unknown key throws RuntimeError 35601, a new node's key that is there already
// 35602. Handlers of the signals may add nodes and handle events; a signal may then arrive while another is
// still being handled.
class FolderTree final : public QTreeView {
    Q_OBJECT

public:
    explicit FolderTree(QWidget* parent = nullptr);

    // --- nodes ------------------------------------------------------------------------------------------

    // True for a placeholder's key ("DUMMY" + key) too.
    [[nodiscard]] bool findNode(std::string_view key) const { return model_.contains(key); }

    // As the parent's last child; the empty parent key means the top level.
    void addNode(std::string_view parentKey, TreeNode node) { model_.append(parentKey, std::move(node)); }
    // In order of their names, among their siblings that were added so too. All or none.
    void addFolders(std::string_view parentKey, std::vector<TreeNode> nodes) {
        model_.insertSorted(parentKey, std::move(nodes));
    }

    // All nodes as they stand in the tree, expanded and selected as they are.
    [[nodiscard]] std::vector<PlacedNode> allNodes() const;
    // These take the place of all nodes, expanded and selected as they say (the last one, if several are);
    // none, and the tree is empty. A node without children stays collapsed. Emits neither signal. Errors are
    // TreeModel::replaceAll's.
    void replaceNodes(std::vector<PlacedNode> nodes);

    // A placeholder makes its parent show an expand mark. The second takes the placeholder's own key.
    void addPlaceholder(std::string_view parentKey) { model_.addPlaceholder(parentKey); }
    void removePlaceholder(std::string_view placeholderKey) { model_.removePlaceholder(placeholderKey); }

    [[nodiscard]] QString text(std::string_view key) const { return model_.text(key); }
    void setText(std::string_view key, const QString& text) { model_.setText(key, text); }
    [[nodiscard]] QString tag(std::string_view key) const { return model_.tag(key); }
    void setTag(std::string_view key, const QString& tag) { model_.setTag(key, tag); }
    void setImages(std::string_view key, const QIcon& image, const QIcon& selectedImage) {
        model_.setImages(key, image, selectedImage);
    }

    // Empty for a top-level node.
    [[nodiscard]] std::string parentKey(std::string_view key) const { return model_.parentKey(key); }
    // Without placeholders.
    [[nodiscard]] std::vector<std::string> childKeys(std::string_view parentKey) const {
        return model_.childKeys(parentKey);
    }
    // The first of the top level: "My Computer".
    [[nodiscard]] bool isFirstNode(std::string_view key) const;

    // --- what is seen of them ---------------------------------------------------------------------------

    [[nodiscard]] bool isExpanded(std::string_view key) const;
    // Expanding a node without children (or placeholder) does nothing.
    void setExpanded(std::string_view key, bool expanded);

    // Empty when no node is selected.
    [[nodiscard]] std::string selectedKey() const;
    // Selects the node, expands the nodes above it and scrolls to it. Emits nodeExpanded for those that were
    // collapsed, but not nodeClicked.
    void selectNode(std::string_view key);

    // --- for Qt -----------------------------------------------------------------------------------------

    using QTreeView::isExpanded;
    using QTreeView::setExpanded;
    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void keyboardSearch(const QString& search) override;
    void doItemsLayout() override;

Q_SIGNALS:
    // The user or the program has expanded a node.
    void nodeExpanded(const std::string& key);
    // The user clicked a node, though it be the selected one, pressed Enter or Space on it, or moved to it
    // with other keys and rested there for 300 ms.
    void nodeClicked(const std::string& key);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void resizeEvent(QResizeEvent* event) override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    [[nodiscard]] int sizeHintForColumn(int column) const override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                                       const QEvent* event) const override;

private:
    void announceSelection();
    void selectQuietly(const QModelIndex& index);

    TreeModel model_;
    QTimer rest_; // runs while a selection by the user has not been announced
    bool selecting_ = false;
    QElapsedTimer sinceTyped_;
    mutable bool exact_ = false; // no layout may be put off
    QElapsedTimer sinceLayout_;
    qint64 layoutCost_ = 0; // ms
};
