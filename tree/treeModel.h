#pragma once

#include <QAbstractItemModel>
#include <QIcon>
#include <QString>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/locale.h"
#include "widgets/textOrder.h"

// The content of a node.
struct TreeNode {
    std::string key; // unique in the tree
    QString text;
    QIcon image;
    QIcon selectedImage; // shown while the node is selected; if null, the first image stays
    bool bold = false;
};

// A node and its place in a list of nodes, in which each parent comes before its children.
struct PlacedNode {
    static constexpr std::size_t topLevel = static_cast<std::size_t>(-1);

    TreeNode content;
    QString tag;
    std::size_t parent = topLevel; // the parent's position in the list
    bool hasPlaceholder = false;
    bool expanded = false; // this and the next concern only the view
    bool selected = false;
};

// The nodes of the folder tree, each quickly found by its key. An index stays valid until its node is
// removed, although its row may change.
//
// A placeholder (key "DUMMY" + the key of the node above it) counts as a child when asked for by key, but is
// not a row of the model: it makes a node show its expand mark, and a tree may have very many of them.
//
// Errors: an unknown key throws RuntimeError 35601, and adding a key that already exists throws 35602. An
// empty parent key means the top level.
class TreeModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Role { SelectedImageRole = Qt::UserRole };

    explicit TreeModel(QObject* parent = nullptr);
    ~TreeModel() override;

    // --- nodes by key -----------------------------------------------------------------------------------

    // Also true for the key of a placeholder.
    [[nodiscard]] bool contains(std::string_view key) const;

    // Adds the node as its parent's last child.
    void append(std::string_view parentKey, TreeNode node);
    // Adds folders as children, sorted by name: in the alphabetical order of the user's language, ignoring
    // case, with numbers by value. The other children must have been added in this way too. Adds all or, on
    // error, none.
    void insertSorted(std::string_view parentKey, std::vector<TreeNode> nodes);

    // Removes the node and all below it.
    void remove(std::string_view key);

    // All nodes in tree order.
    [[nodiscard]] std::vector<PlacedNode> allNodes() const;
    // Replaces all nodes by these, in one reset; returns their indexes in the same order. Changes nothing on
    // error: 35602, or 9 if a parent does not come before its child.
    std::vector<QModelIndex> replaceAll(std::vector<PlacedNode> nodes);

    void addPlaceholder(std::string_view parentKey);
    void removePlaceholder(std::string_view placeholderKey);

    [[nodiscard]] QString text(std::string_view key) const;
    void setText(std::string_view key, const QString& text);
    [[nodiscard]] QString tag(std::string_view key) const;
    void setTag(std::string_view key, const QString& tag);
    void setImages(std::string_view key, const QIcon& image, const QIcon& selectedImage);

    // Empty for a top-level node.
    [[nodiscard]] std::string parentKey(std::string_view key) const;
    // Without placeholders.
    [[nodiscard]] std::vector<std::string> childKeys(std::string_view parentKey) const;

    [[nodiscard]] QModelIndex indexOf(std::string_view key) const;
    // Empty for an invalid index.
    [[nodiscard]] std::string keyOf(const QModelIndex& index) const;

    // --- as Qt's views see it ---------------------------------------------------------------------------

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

Q_SIGNALS:
    // A node got or lost its placeholder; the rows did not change.
    void expandMarksChanged();

private:
    struct Node;
    using NodesByKey = std::unordered_map<std::string_view, Node*, platform::NameHash, platform::NameEqual>;

    [[nodiscard]] Node& nodeOf(std::string_view key) const;
    [[nodiscard]] Node& parentOf(std::string_view parentKey) const;
    [[nodiscard]] const Node& at(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex indexOf(const Node& node) const;
    [[nodiscard]] bool sortsBefore(std::string_view leftKey, std::string_view rightKey) const;
    void sortByName(std::vector<TreeNode>& nodes) const;
    void insertRun(Node& parent, std::size_t position, TreeNode* first, TreeNode* last);

    std::unique_ptr<Node> top_; // parent of the top-level nodes; not a node itself
    NodesByKey byKey_;
    TextOrder order_{TextOrder::Digits::asNumbers};
};
