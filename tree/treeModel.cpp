#include "tree/treeModel.h"

#include <QBrush>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "base/clsFile.h"
#include "platform/drives.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "tree/nodeKeys.h"
#include "views/folderSummary.h"
#include "widgets/qtText.h"

struct TreeModel::Node {
    Node() = default;
    ~Node();
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    TreeNode content;
    QString tag;
    Node* parent = nullptr;
    int row = 0; // among its parent's children
    bool hasPlaceholder = false;
    std::vector<std::unique_ptr<Node>> children;
};

// Destroys node by node: if each node destroyed its children, a deep tree would need a deep stack.
TreeModel::Node::~Node() {
    std::vector<std::unique_ptr<Node>> doomed = std::move(children);
    while (!doomed.empty()) {
        const std::unique_ptr<Node> node = std::move(doomed.back());
        doomed.pop_back();
        std::move(node->children.begin(), node->children.end(), std::back_inserter(doomed));
        node->children.clear();
    }
}

namespace {

void refuseKnown(bool known, std::string_view key) {
    if (known) {
        throw RuntimeError::about(errorNumber::keyNotUnique, platform::displayPath(key));
    }
}

// A node's text begins with its internal name, or is another kind of text, such as a drive's.
QString shownText(const TreeNode& node) {
    const std::string_view name = modNodeKeys::nameOf(node.key);
    const QString internalName = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    return node.text.startsWith(internalName) ? modQt::shownName(name) + node.text.mid(internalName.size())
                                              : modQt::shownText(node.text.toStdString());
}

// The path; of a drive also its room.
QString pathAndSpace(const std::string& key) {
    const QString path = modQt::shownPath(key);
    const bool isDrive = clsFile(key).fullPathNoDrive().empty();
    const auto space = isDrive ? platform::driveSpace(key) : std::nullopt;
    return space ? path + QChar::LineFeed + QString::fromStdString(modFigures::spaceText(*space)) : path;
}

} // namespace

TreeModel::TreeModel(QObject* parent) : QAbstractItemModel(parent), top_(std::make_unique<Node>()) {}

TreeModel::~TreeModel() = default;

// --- Nodes by key -----------------------------------------------------------------------------------------

TreeModel::Node& TreeModel::nodeOf(std::string_view key) const {
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) {
        throw RuntimeError::about(errorNumber::elementNotFound, platform::displayPath(key));
    }
    return *found->second;
}

TreeModel::Node& TreeModel::parentOf(std::string_view parentKey) const {
    return parentKey.empty() ? *top_ : nodeOf(parentKey);
}

bool TreeModel::contains(std::string_view key) const {
    if (byKey_.contains(key)) {
        return true;
    }
    const auto parent = byKey_.find(modNodeKeys::parentOfPlaceholder(key));
    return parent != byKey_.end() && parent->second->hasPlaceholder;
}

void TreeModel::append(std::string_view parentKey, TreeNode node) {
    Node& parent = parentOf(parentKey);
    refuseKnown(byKey_.contains(node.key), node.key);
    insertRun(parent, parent.children.size(), &node, &node + 1);
}

void TreeModel::insertSorted(std::string_view parentKey, std::vector<TreeNode> nodes) {
    Node& parent = parentOf(parentKey);
    sortByName(nodes);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const bool twice = i > 0 && platform::sameName(nodes[i].key, nodes[i - 1].key);
        refuseKnown(twice || byKey_.contains(nodes[i].key), nodes[i].key);
    }
    // Nodes that belong before the same child are inserted together, because views do work for each run.
    const std::vector<std::unique_ptr<Node>>& children = parent.children;
    std::size_t position = 0;
    TreeNode* const end = nodes.data() + nodes.size();
    for (TreeNode* first = nodes.data(); first != end;) {
        const auto next =
            std::upper_bound(children.begin() + static_cast<std::ptrdiff_t>(position), children.end(), *first,
                             [this](const TreeNode& node, const auto& child) {
                                 return sortsBefore(node.key, child->content.key);
                             });
        position = static_cast<std::size_t>(next - children.begin());
        TreeNode* const last =
            next == children.end() ? end : std::find_if(first, end, [&](const TreeNode& node) {
                return !sortsBefore(node.key, (*next)->content.key);
            });
        const auto count = static_cast<std::size_t>(last - first);
        insertRun(parent, position, first, last);
        position += count;
        first = last;
    }
}

bool TreeModel::sortsBefore(std::string_view leftKey, std::string_view rightKey) const {
    // Compares names, not texts, because a remark may have been added to the text.
    const std::string_view left = modNodeKeys::nameOf(leftKey);
    const std::string_view right = modNodeKeys::nameOf(rightKey);
    const int order = order_.compare(platform::displayName(left), platform::displayName(right));
    return order != 0 ? order < 0 : left < right;
}

void TreeModel::sortByName(std::vector<TreeNode>& nodes) const {
    std::vector<TextOrder::Key> keys;
    keys.reserve(nodes.size());
    for (const TreeNode& node : nodes) {
        keys.push_back(order_.key(platform::displayName(modNodeKeys::nameOf(node.key))));
    }
    std::vector<std::size_t> places(nodes.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::sort(places.begin(), places.end(), [&](std::size_t left, std::size_t right) {
        return keys[left] < keys[right] ||
               (!(keys[right] < keys[left]) &&
                modNodeKeys::nameOf(nodes[left].key) < modNodeKeys::nameOf(nodes[right].key));
    });
    std::vector<TreeNode> sorted;
    sorted.reserve(nodes.size());
    for (const std::size_t place : places) {
        sorted.push_back(std::move(nodes[place]));
    }
    nodes = std::move(sorted);
}

void TreeModel::insertRun(Node& parent, std::size_t position, TreeNode* first, TreeNode* last) {
    std::vector<std::unique_ptr<Node>> run;
    run.reserve(static_cast<std::size_t>(last - first));
    for (TreeNode* node = first; node != last; ++node) {
        run.push_back(std::make_unique<Node>());
        run.back()->content = std::move(*node);
        run.back()->parent = &parent;
    }
    auto& children = parent.children;
    const int row = static_cast<int>(position);
    beginInsertRows(indexOf(parent), row, row + static_cast<int>(run.size()) - 1);
    for (const auto& node : run) {
        byKey_.emplace(node->content.key, node.get());
    }
    children.insert(children.begin() + row, std::make_move_iterator(run.begin()),
                    std::make_move_iterator(run.end()));
    for (std::size_t i = position; i < children.size(); ++i) {
        children[i]->row = static_cast<int>(i);
    }
    endInsertRows();
}

void TreeModel::remove(std::string_view key) {
    const Node& node = nodeOf(key);
    Node& parent = *node.parent;
    const int row = node.row;
    beginRemoveRows(indexOf(parent), row, row);
    std::vector<const Node*> open{&node};
    while (!open.empty()) {
        const Node& removed = *open.back();
        open.pop_back();
        byKey_.erase(removed.content.key);
        for (const auto& child : removed.children) {
            open.push_back(child.get());
        }
    }
    parent.children.erase(parent.children.begin() + row);
    for (auto i = static_cast<std::size_t>(row); i < parent.children.size(); ++i) {
        parent.children[i]->row = static_cast<int>(i);
    }
    endRemoveRows();
}

std::vector<QModelIndex> TreeModel::replaceAll(std::vector<PlacedNode> nodes) {
    auto top = std::make_unique<Node>();
    NodesByKey byKey;
    byKey.reserve(nodes.size());
    std::vector<Node*> made;
    made.reserve(nodes.size());
    for (PlacedNode& placed : nodes) {
        const bool atTop = placed.parent == PlacedNode::topLevel;
        if (!atTop && placed.parent >= made.size()) {
            throw RuntimeError(errorNumber::subscriptOutOfRange);
        }
        Node& parent = atTop ? *top : *made[placed.parent];
        Node& node = *parent.children.emplace_back(std::make_unique<Node>());
        node.content = std::move(placed.content);
        node.tag = std::move(placed.tag);
        node.parent = &parent;
        node.row = static_cast<int>(parent.children.size()) - 1;
        node.hasPlaceholder = placed.hasPlaceholder;
        refuseKnown(!byKey.emplace(node.content.key, &node).second, node.content.key);
        made.push_back(&node);
    }
    beginResetModel();
    top_.swap(top);
    byKey_.swap(byKey);
    endResetModel();
    std::vector<QModelIndex> indexes;
    indexes.reserve(made.size());
    std::transform(made.begin(), made.end(), std::back_inserter(indexes),
                   [this](const Node* node) { return indexOf(*node); });
    return indexes;
}

void TreeModel::addPlaceholder(std::string_view parentKey) {
    Node& parent = nodeOf(parentKey);
    refuseKnown(parent.hasPlaceholder, modNodeKeys::placeholderOf(parentKey));
    parent.hasPlaceholder = true;
    if (parent.children.empty()) {
        Q_EMIT expandMarksChanged();
    }
}

void TreeModel::removePlaceholder(std::string_view placeholderKey) {
    if (!contains(placeholderKey) || byKey_.contains(placeholderKey)) {
        throw RuntimeError::about(errorNumber::elementNotFound, platform::displayPath(placeholderKey));
    }
    Node& parent = nodeOf(modNodeKeys::parentOfPlaceholder(placeholderKey));
    parent.hasPlaceholder = false;
    if (parent.children.empty()) {
        Q_EMIT expandMarksChanged();
    }
}

QString TreeModel::text(std::string_view key) const {
    return nodeOf(key).content.text;
}

void TreeModel::setText(std::string_view key, const QString& text) {
    Node& node = nodeOf(key);
    node.content.text = text;
    Q_EMIT dataChanged(indexOf(node), indexOf(node));
}

QString TreeModel::tag(std::string_view key) const {
    return nodeOf(key).tag;
}

void TreeModel::setTag(std::string_view key, const QString& tag) {
    nodeOf(key).tag = tag;
}

void TreeModel::setImages(std::string_view key, const QIcon& image, const QIcon& selectedImage) {
    Node& node = nodeOf(key);
    node.content.image = image;
    node.content.selectedImage = selectedImage;
    Q_EMIT dataChanged(indexOf(node), indexOf(node), {Qt::DecorationRole, SelectedImageRole});
}

std::string TreeModel::parentKey(std::string_view key) const {
    return nodeOf(key).parent->content.key;
}

std::vector<std::string> TreeModel::childKeys(std::string_view parentKey) const {
    std::vector<std::string> keys;
    for (const auto& child : parentOf(parentKey).children) {
        keys.push_back(child->content.key);
    }
    return keys;
}

std::vector<PlacedNode> TreeModel::allNodes() const {
    std::vector<PlacedNode> nodes;
    nodes.reserve(byKey_.size());
    std::vector<std::pair<const Node*, std::size_t>> open; // with the positions of their parents
    const auto openChildren = [&open](const Node& parent, std::size_t position) {
        std::transform(parent.children.rbegin(), parent.children.rend(), std::back_inserter(open),
                       [position](const auto& child) { return std::pair(child.get(), position); });
    };
    openChildren(*top_, PlacedNode::topLevel);
    while (!open.empty()) {
        const auto [node, parent] = open.back();
        open.pop_back();
        openChildren(*node, nodes.size());
        nodes.push_back({node->content, node->tag, parent, node->hasPlaceholder});
    }
    return nodes;
}

// --- As Qt's views see it ---------------------------------------------------------------------------------

const TreeModel::Node& TreeModel::at(const QModelIndex& index) const {
    return index.isValid() ? *static_cast<const Node*>(index.constInternalPointer()) : *top_;
}

QModelIndex TreeModel::indexOf(const Node& node) const {
    return &node == top_.get() ? QModelIndex() : createIndex(node.row, 0, &node);
}

QModelIndex TreeModel::indexOf(std::string_view key) const {
    return indexOf(nodeOf(key));
}

std::string TreeModel::keyOf(const QModelIndex& index) const {
    return at(index).content.key;
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    return hasIndex(row, column, parent) ? indexOf(*at(parent).children[static_cast<std::size_t>(row)])
                                         : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? indexOf(*at(child).parent) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(at(parent).children.size());
}

int TreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

bool TreeModel::hasChildren(const QModelIndex& parent) const {
    const Node& node = at(parent);
    return node.hasPlaceholder || !node.children.empty();
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const TreeNode& node = at(index).content;
    switch (role) {
    case Qt::DisplayRole:
        return shownText(node);
    case Qt::DecorationRole:
        return node.image;
    case SelectedImageRole:
        return node.selectedImage.isNull() ? node.image : node.selectedImage;
    case Qt::ToolTipRole:
        return modNodeKeys::isFolderKey(node.key) ? modQt::tip(pathAndSpace(node.key)) : QString();
    case Qt::FontRole: {
        QFont font;
        font.setBold(node.bold);
        return node.bold ? QVariant(font) : QVariant();
    }
    case Qt::ForegroundRole:
        return node.text.endsWith(QStringLiteral("(Access Denied)"), Qt::CaseInsensitive) ||
                       node.text.endsWith(QStringLiteral("(not answering)"))
                   ? QGuiApplication::palette().brush(QPalette::PlaceholderText)
                   : QVariant();
    default:
        return {};
    }
}
