#include "views/treemapReader.h"

#include <utility>

#include "base/formatSize.h"
#include "db/folderRows.h"
#include "platform/locale.h"
#include "views/treemapLayout.h"

namespace {

constexpr int rowsPerLook = 256; // at the clock

} // namespace

TreemapReader::TreemapReader(std::string_view folder, double area, modFigures::ScanState state)
    : tree_(folder, area), unread_{{0, area}}, looksForUnfinished_(state == modFigures::ScanState::running) {}

bool TreemapReader::readUntil(Database& database, modTreemap::Time end) {
    if (std::exchange(looksForUnfinished_, false)) {
        findUnfinished(database);
    }
    while (next_ < unread_.size()) {
        if (!readFolder(database, end)) {
            return false;
        }
        finishFolder();
        if (std::chrono::steady_clock::now() >= end) {
            return next_ == unread_.size();
        }
    }
    return true;
}

// Goes on behind the last row that was read of the folder. False if there are more.
bool TreemapReader::readFolder(Database& database, modTreemap::Time end) {
    const auto& [node, area] = unread_[next_];
    const std::string folder = tree_.path(node);
    if (!contents_) {
        contents_.emplace(TreemapLook::roomInside(area));
        addUnfinished(folder);
    }
    const auto rows = database.OpenRecordset(
        "select idx,isFolder,extension,fileName," + database.sizeColumn() + " from details where " +
        modFolderRows::directlyIn(folder) +
        (lastRow_ ? " and idx>" + std::to_string(*lastRow_) : std::string()) + " order by idx");
    const Field& idx = rows->Fields(0);
    const Field& isFolder = rows->Fields(1);
    const Field& extension = rows->Fields(2);
    const Field& fileName = rows->Fields(3);
    const Field& sizeField = rows->Fields(4);
    for (int left = rowsPerLook; !rows->EndOfFile(); rows->MoveNext()) {
        const double size = modLvw::soundSize(sizeField.number());
        if (size > 0) {
            const bool folderRow = isFolder.number() != 0;
            const std::uint32_t type = folderRow ? TreemapTree::mixed : tree_.typeOf(extension.text());
            tree_.addToType(type, size);
            if (contents_->keeps(size)) {
                std::string_view name = fileName.text();
                name.remove_suffix(name.ends_with('\\') ? 1 : 0);
                contents_->keep({.name = std::string(name),
                                 .size = size,
                                 .type = type,
                                 .kind = folderRow ? TreemapNode::Kind::folder : TreemapNode::Kind::file});
            } else {
                contents_->gather(type, size);
            }
        }
        if (--left == 0) {
            left = rowsPerLook;
            if (std::chrono::steady_clock::now() >= end) {
                lastRow_ = static_cast<std::int64_t>(idx.number());
                return false;
            }
        }
    }
    lastRow_.reset();
    return true;
}

void TreemapReader::finishFolder() {
    const Unread done = unread_[next_++];
    std::vector<TreemapNode> children = contents_->take();
    contents_.reset();
    const auto first = static_cast<std::uint32_t>(tree_.nodes().size());
    tree_.addChildren(done.node, std::move(children));
    double sum = 0;
    for (std::size_t i = first; i < tree_.nodes().size(); ++i) {
        sum += tree_.nodes()[i].size;
    }
    const double room = TreemapLook::roomInside(done.area);
    for (std::uint32_t i = first; i < tree_.nodes().size(); ++i) {
        const double area = tree_.nodes()[i].size / sum * room;
        if (tree_.nodes()[i].kind == TreemapNode::Kind::folder && area >= TreemapTree::leastOpened) {
            unread_.push_back({i, area});
        }
    }
}

// What is recorded of the folders on the way to the last row that have no row of their own: what is directly
// in them, and the next one.
void TreemapReader::findUnfinished(Database& database) {
    const std::string last = modFigures::lastFolder(database);
    const std::size_t top = tree_.folder().size();
    if (last.size() <= top || !platform::sameName(std::string_view(last).substr(0, top), tree_.folder())) {
        return;
    }
    double below = 0;
    for (std::size_t end = last.size(); end > top; end = last.rfind('\\', end - 2) + 1) {
        const std::string folder = tree_.folder() + last.substr(top, end - top);
        if (modFolderRows::find(database, folder).hasOwnRow) {
            below = 0; // it is part of what is directly in the next one
            continue;
        }
        below += modLvw::soundSize(modFolderRows::countedSize(database, folder, {}));
        unfinished_[folder] = below;
    }
}

void TreemapReader::addUnfinished(const std::string& folder) {
    for (const auto& [path, size] : unfinished_) {
        const bool isHere = path.size() > folder.size() && path.starts_with(folder) &&
                            path.find('\\', folder.size()) == path.size() - 1;
        if (isHere && size > 0) {
            contents_->keep({.name = path.substr(folder.size(), path.size() - folder.size() - 1),
                             .size = size,
                             .kind = TreemapNode::Kind::folder});
        }
    }
}
