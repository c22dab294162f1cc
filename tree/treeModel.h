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
#include "views/widgets/textOrder.h"

// What a node is made from.
struct TreeNode {
    std::string key; // unique in the tree
    QString text;
    QIcon image;
    QIcon selectedImage; // shown while the node is selected; null: the image then as well
    bool bold = false;
};

// A node and its place among others that are handed over together, each parent before its children.
struct PlacedNode {
    static constexpr std::size_t topLevel = static_cast<std::size_t>(-1);

    TreeNode content;
    QString tag;
    std::size_t parent = topLevel; // the parent's position among them
    bool hasPlaceholder = false;
    bool expanded = false; // this and the next are the view's matter
    bool selected = false;
};

// The nodes of the folder tree, each found by its key at once. Nodes are added one by one and go all
// together, so an index stays usable until then, though its row may change.
//
// A placeholder (key "DUMMY" + the key of the node it stands below) is a child for all that ask by key, but
// no row of the model: it makes a node show its expand mark, and a tree may have a great many of them.
//
// Errors: an unknown key throws RuntimeError 35601, the key of a new node that is there already 35602. The
// empty key as a parent's means the top level.
class TreeModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Role { SelectedImageRole = Qt::UserRole };

    explicit TreeModel(QObject* parent = nullptr);
    ~TreeModel() override;

    // --- nodes by key -----------------------------------------------------------------------------------

    // True for a placeholder's key too.
    [[nodiscard]] bool contains(std::string_view key) const;

    // Adds the node as its parent's last child.
    void append(std::string_view parentKey, TreeNode node);
    // Adds folders as children where their names belong: in alphabetical order as the user's language has it,
    // ignoring case, numbers by their value. The other children must have been added like this too. Adds all
    // or, on error, none.
    void insertSorted(std::string_view parentKey, std::vector<TreeNode> nodes);

    // All nodes as they stand in the tree.
    [[nodiscard]] std::vector<PlacedNode> allNodes() const;
    // These take the place of all nodes, in one reset; their indexes, in the order given. Changes nothing on
    // error: 35602, or 9 for a parent that does not stand before its child.
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
    // A node got or lost its placeholder, which is no change of rows.
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

    std::unique_ptr<Node> top_; // holds the top-level nodes; no node itself
    NodesByKey byKey_;
    TextOrder order_{TextOrder::Digits::asNumbers};
};
