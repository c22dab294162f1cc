#include "tree/savedNodes.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/errorLog.h"
#include "base/errorTrap.h"
#include "platform/locale.h"
#include "platform/runtimeError.h"
#include "platform/text.h"
#include "tree/folderTree.h"
#include "tree/nodeImages.h"
#include "tree/nodeKeys.h"

namespace {

constexpr std::size_t mostNodes = 300'000;
constexpr std::size_t mostBytes = std::size_t{256} << 20U;
constexpr std::uint16_t deepestLevel = 2048;

// --- Saving -----------------------------------------------------------------------------------------------

// A row of the table; its texts must live until it is written.
struct NodeRow {
    std::int64_t index;
    std::string_view key;
    std::int64_t parentIndex;
    std::string_view parentKey;
    std::string text;
    std::string tag;
    bool expanded;
    bool selected;
};

// The table, open for appending. Rows are appended field by field; in a statement, a quote would end a text.
class NodeWriter {
public:
    explicit NodeWriter(Database& database) : rows_(database.OpenRecordset("nodes")) {}

    void write(const NodeRow& row) {
        rows_->AddNew();
        index_.setInteger(row.index);
        key_.setText(row.key);
        expanded_.setInteger(row.expanded ? isTrue : 0);
        selected_.setInteger(row.selected ? isTrue : 0);
        parentIndex_.setInteger(row.parentIndex);
        setUnlessEmpty(text_, row.text);
        setUnlessEmpty(tag_, row.tag);
        setUnlessEmpty(parentKey_, row.parentKey);
        rows_->Update();
    }

private:
    static constexpr std::int64_t isTrue = -1; // all bits set

    static void setUnlessEmpty(Field& field, std::string_view text) {
        if (!text.empty()) {
            field.setText(text);
        }
    }

    std::unique_ptr<Recordset> rows_;
    Field& index_ = rows_->Fields("nodeIndex");
    Field& key_ = rows_->Fields("nodeKey");
    Field& expanded_ = rows_->Fields("expanded");
    Field& selected_ = rows_->Fields("selected");
    Field& parentIndex_ = rows_->Fields("parentIndex");
    Field& text_ = rows_->Fields("nodeText");
    Field& tag_ = rows_->Fields("nodeTag");
    Field& parentKey_ = rows_->Fields("parentKey");
};

void writeNodes(const std::vector<PlacedNode>& nodes, Database& database) {
    constexpr std::int64_t noParent = -1;
    NodeWriter writer(database);
    std::vector<std::int64_t> indexes; // of the nodes; placeholders have indexes too
    indexes.reserve(nodes.size());
    std::int64_t index = 0;
    for (const PlacedNode& node : nodes) {
        const bool atTop = node.parent == PlacedNode::topLevel;
        const std::string& key = node.content.key;
        indexes.push_back(++index);
        writer.write({index, key, atTop ? noParent : indexes[node.parent],
                      atTop ? std::string_view() : nodes[node.parent].content.key,
                      node.content.text.toStdString(), node.tag.toStdString(), node.expanded, node.selected});
        if (node.hasPlaceholder) {
            writer.write(
                {++index, modNodeKeys::placeholderOf(key), indexes.back(), key, {}, {}, false, false});
        }
    }
}

// --- Loading ----------------------------------------------------------------------------------------------

QString oneLine(std::string_view text) {
    const std::string_view kept = platform::firstCharacters(text, modNodeKeys::longest);
    QString line = QString::fromUtf8(kept.data(), static_cast<qsizetype>(kept.size()));
    for (QChar& character : line) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph) {
            character = QLatin1Char(' ');
        }
    }
    return line;
}

// The saved nodes, each checked as it is read.
class NodeReader {
public:
    NodeReader(modNodeImages::ImagesByPlace& images, std::size_t rowCount) : images_(images) {
        nodes_.reserve(std::min(rowCount, mostNodes)); // positions_ has keys that refer to them
    }

    void readTopLevel(Recordset& rows) { read(rows, true); }
    void readChildren(Recordset& rows) { read(rows, false); }

    [[nodiscard]] bool contains(std::string_view key) const { return positions_.contains(key); }
    // The number of valid rows, including placeholders.
    [[nodiscard]] std::size_t taken() const noexcept { return taken_; }
    [[nodiscard]] std::vector<PlacedNode> release() { return std::move(nodes_); }

private:
    void read(Recordset& rows, bool topLevel) {
        const Field& key = rows.Fields("nodeKey");
        const Field& text = rows.Fields("nodeText");
        const Field& tag = rows.Fields("nodeTag");
        const Field& parentKey = rows.Fields("parentKey");
        const Field& expanded = rows.Fields("expanded");
        const Field& selected = rows.Fields("selected");
        for (; !rows.EndOfFile() && nodes_.size() < mostNodes && bytes_ < mostBytes; rows.MoveNext()) {
            const std::string_view parent = topLevel ? std::string_view() : parentKey.text();
            if (PlacedNode* node = place(key.text(), parent, topLevel)) {
                node->content.text = oneLine(text.text());
                node->tag = oneLine(tag.text());
                node->expanded = expanded.number() != 0;
                node->selected = selected.number() != 0;
                const auto characters = node->content.text.size() + node->tag.size();
                bytes_ += node->content.key.size() + sizeof(QChar) * static_cast<std::size_t>(characters);
            }
        }
    }

    // Creates the node, still without its texts; null for a placeholder, which has none, and for a row that
    // is left out.
    PlacedNode* place(std::string_view key, std::string_view parentKey, bool topLevel) {
        const auto parent = positions_.find(parentKey);
        if ((parent == positions_.end()) != topLevel) {
            return nullptr;
        }
        const std::size_t parentPosition = topLevel ? PlacedNode::topLevel : parent->second;
        if (const std::string_view owner = modNodeKeys::parentOfPlaceholder(key); !owner.empty()) {
            if (owner == parentKey && !std::exchange(nodes_[parentPosition].hasPlaceholder, true)) {
                ++taken_;
            }
            return nullptr;
        }
        const int level = topLevel ? 1 : levels_[parentPosition] + 1;
        if (level > deepestLevel || !modNodeKeys::isSound(key) || contains(key)) {
            return nullptr;
        }
        PlacedNode& node = nodes_.emplace_back();
        node.content.key = key;
        node.parent = parentPosition;
        images_.give(node.content, parentKey);
        levels_.push_back(static_cast<std::uint16_t>(level));
        positions_.emplace(node.content.key, nodes_.size() - 1);
        ++taken_;
        return &node;
    }

    modNodeImages::ImagesByPlace& images_;
    std::vector<PlacedNode> nodes_;
    std::vector<std::uint16_t> levels_; // of the nodes; 1 at the top
    std::unordered_map<std::string_view, std::size_t, platform::NameHash, platform::NameEqual> positions_;
    std::size_t taken_ = 0;
    std::size_t bytes_ = 0; // used by keys and texts
};

// All rows that are left out are reported together.
void logLeftOut(std::size_t count) {
    if (count > 0) {
        modGlobal::logError(errorNumber::elementNotFound,
                            "Saved nodes left out because they do not fit into the folder tree: " +
                                std::to_string(count),
                            "modGlobal", "tvwLoadNodes", true);
    }
}

} // namespace

void modGlobal::tvwSaveNodes(const FolderTree& tree, Database& database) {
    trapped("modGlobal", "tvwSaveNodes", [&] {
        SmallTransaction transaction(database);
        clearSavedNodes(database);
        writeNodes(tree.allNodes(), database);
        transaction.commit();
    });
}

bool modGlobal::tvwLoadNodes(FolderTree& tree, Database& database, ImageList& images,
                             const modDriveEnum::DriveSource& drives) {
    modNodeImages::ImagesByPlace imagesByPlace(tree, images, drives);
    const auto rowCount = static_cast<std::size_t>(database.OpenRecordset("nodes")->RecordCount());
    NodeReader reader(imagesByPlace, rowCount);
    reader.readTopLevel(*database.OpenRecordset("select * from nodes where parentIndex=-1"));
    const bool isTree = reader.contains(modNodeKeys::root);
    if (isTree) {
        reader.readChildren(
            *database.OpenRecordset("select * from nodes where parentIndex<>-1 order by nodeIndex"));
        logLeftOut(rowCount - reader.taken());
        tree.replaceNodes(reader.release());
    }
    clearSavedNodes(database);
    return isTree;
}

void modGlobal::clearSavedNodes(Database& database) {
    database.Execute("delete * from nodes");
}
