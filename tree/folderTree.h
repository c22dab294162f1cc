#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QTreeView>
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tree/treeModel.h"

// The folder tree control `tvw`. Nodes are identified by their keys (tree/nodeKeys.h); at most one is
// selected.
//
// Errors are those of the model: an unknown key throws RuntimeError 35601, and adding a key that already
// exists throws 35602. Signal handlers may add nodes and handle events, so a signal may arrive while another
// is still being handled.
class FolderTree final : public QTreeView {
    Q_OBJECT

public:
    explicit FolderTree(QWidget* parent = nullptr);

    // --- nodes ------------------------------------------------------------------------------------------

    // Also true for the key of a placeholder ("DUMMY" + key).
    [[nodiscard]] bool findNode(std::string_view key) const { return model_.contains(key); }

    // Adds the node as its parent's last child; an empty parent key means the top level.
    void addNode(std::string_view parentKey, TreeNode node) { model_.append(parentKey, std::move(node)); }
    // Adds the folders sorted by name among the siblings that were added in the same way. All or none.
    void addFolders(std::string_view parentKey, std::vector<TreeNode> nodes) {
        model_.insertSorted(parentKey, std::move(nodes));
    }

    // Removes the node and all below it. If the selected one is among them, the node above is selected; emits
    // neither signal.
    void removeNode(std::string_view key);

    // All nodes in tree order, with their state (expanded, selected).
    [[nodiscard]] std::vector<PlacedNode> allNodes() const;
    // Replaces all nodes by these, with their state (if several are selected, the last one counts); with no
    // nodes, the tree becomes empty. A node without children stays collapsed. Emits neither signal. For
    // errors, see TreeModel::replaceAll.
    void replaceNodes(std::vector<PlacedNode> nodes);

    // A placeholder makes its parent show an expand mark. The second function takes the placeholder's own
    // key.
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
    // True for the first node of the top level: "My Computer".
    [[nodiscard]] bool isFirstNode(std::string_view key) const;

    // --- what is seen of them ---------------------------------------------------------------------------

    [[nodiscard]] bool isExpanded(std::string_view key) const;
    // Does nothing if a node without children (or placeholder) is to be expanded.
    void setExpanded(std::string_view key, bool expanded);

    // Empty if no node is selected.
    [[nodiscard]] std::string selectedKey() const;
    // Selects the node, expands the nodes above it and scrolls to it, so that the node above it is in sight
    // too if there is room for both. Emits nodeExpanded for each of those that was collapsed, but not
    // nodeClicked.
    void selectNode(std::string_view key);

    // Behind the text of each node in sight, shows what this returns for its key; an empty function: nothing.
    // It is asked once for each node that comes into sight, and again after forgetRemarks or if it has
    // returned a null text.
    using Remarks = std::function<QString(const std::string& key)>;
    void setRemarks(Remarks remarks);
    void forgetRemarks();

    static constexpr std::chrono::milliseconds restInterval{300};
    // How long the user must stay on a node reached with keys before this counts as a click.
    void setRestInterval(std::chrono::milliseconds interval) { rest_.setInterval(interval); }

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
    // The user clicked a node (even the selected one), pressed Enter or Space on it, or moved to it with
    // other keys and stayed there (see setRestInterval).
    void nodeClicked(const std::string& key);
    // The right button on a node, which it does not select, or the menu key or Shift+F10 on the selected one;
    // `place` is the menu's position on the screen.
    void menuRequested(const std::string& key, const QPoint& place);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
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
    class NodeDelegate;

    [[nodiscard]] QString remarkOn(const QModelIndex& index) const;
    void announceSelection();
    void showAbove(const QModelIndex& index);
    void selectQuietly(const QModelIndex& index);

    TreeModel model_;
    QTimer rest_; // runs until a selection by the user is announced
    Remarks remarksOf_;
    mutable std::unordered_map<std::string, QString> remarks_;
    bool selecting_ = false;
    QElapsedTimer sinceTyped_;
    mutable bool exact_ = false; // the layout must be current
    QElapsedTimer sinceLayout_;
    qint64 layoutCost_ = 0; // ms
};
