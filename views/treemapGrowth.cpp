#include "views/treemapGrowth.h"

#include <algorithm>
#include <utility>

#include "base/formatSize.h"
#include "views/treemapLayout.h"

namespace {

constexpr int rowsPerLook = 256; // at the clock

} // namespace

TreemapGrowth::TreemapGrowth(std::string_view folder, double area)
    : types_(folder, area), folders_(1), lastPath_(folder) {
    indexes_.emplace(folder, 0);
}

bool TreemapGrowth::readUntil(Database& database, modTreemap::Time end) {
    const auto rows =
        database.OpenRecordset("select idx,isFolder,extension,parentFolder," + database.sizeColumn() +
                               " from details where idx>" + std::to_string(lastRow_) + " order by idx");
    const Field& idx = rows->Fields(0);
    const Field& isFolder = rows->Fields(1);
    const Field& extension = rows->Fields(2);
    const Field& parentFolder = rows->Fields(3);
    const Field& sizeField = rows->Fields(4);
    for (int left = rowsPerLook; !rows->EndOfFile(); rows->MoveNext()) {
        const double size = modLvw::soundSize(sizeField.number());
        if (size > 0 && isFolder.number() == 0 && parentFolder.text().starts_with(folder())) {
            if (parentFolder.text() != lastPath_) {
                lastPath_ = parentFolder.text();
                last_ = folderOf(lastPath_);
            }
            const std::uint32_t type = types_.typeOf(extension.text());
            types_.addToType(type, size);
            count(folders_[last_], type, size);
        }
        lastRow_ = static_cast<std::int64_t>(idx.number());
        if (--left == 0) {
            left = rowsPerLook;
            if (std::chrono::steady_clock::now() >= end) {
                return false; // there may be more
            }
        }
    }
    return true;
}

// Makes it, and those above it, if they are not known yet.
std::uint32_t TreemapGrowth::folderOf(const std::string& path) {
    std::size_t known = path.size();
    while (!indexes_.contains(path.substr(0, known))) {
        known = path.rfind('\\', known - 2) + 1;
    }
    std::uint32_t index = indexes_.at(path.substr(0, known));
    while (known < path.size()) {
        const std::size_t end = std::min(path.find('\\', known), path.size() - 1);
        const auto next = static_cast<std::uint32_t>(folders_.size());
        folders_.push_back({path.substr(known, end - known), index, {}, {}});
        folders_[index].subfolders.push_back(next);
        known = end + 1;
        indexes_.emplace(path.substr(0, known), next);
        index = next;
    }
    return index;
}

void TreemapGrowth::count(Folder& folder, std::uint32_t type, double size) {
    auto group = std::find_if(folder.groups.begin(), folder.groups.end(),
                              [type](const Group& each) { return each.type == type; });
    if (group == folder.groups.end()) {
        group = folder.groups.insert(group, {type, 0, 0});
    }
    ++group->files;
    group->size += size;
}

TreemapTree TreemapGrowth::tree() const {
    std::vector<double> totals(folders_.size());
    for (std::size_t i = folders_.size(); i-- > 0;) {
        for (const Group& group : folders_[i].groups) {
            totals[i] += group.size;
        }
        if (i > 0) {
            totals[folders_[i].parent] += totals[i];
        }
    }
    struct Open {
        std::uint32_t node;
        std::uint32_t folder;
        double area;
    };
    TreemapTree result = types_;
    std::vector<Open> open{{0, 0, types_.area()}};
    for (std::size_t next = 0; next < open.size(); ++next) {
        const Open at = open[next];
        const Folder& folder = folders_[at.folder];
        const double room = TreemapLook::roomInside(at.area);
        TreemapGathering contents(room);
        for (const Group& group : folder.groups) {
            contents.gather(group.type, group.size, group.files);
        }
        // A node carries the folder's index as its type until it is placed.
        for (const std::uint32_t subfolder : folder.subfolders) {
            if (contents.keeps(totals[subfolder])) {
                contents.keep({.name = folders_[subfolder].name,
                               .size = totals[subfolder],
                               .type = subfolder,
                               .kind = TreemapNode::Kind::folder});
            } else {
                contents.gather(TreemapTree::mixed, totals[subfolder]);
            }
        }
        std::vector<TreemapNode> children = contents.take();
        auto node = static_cast<std::uint32_t>(result.nodes().size());
        for (TreemapNode& child : children) {
            if (child.kind == TreemapNode::Kind::folder) {
                const double share = child.size / totals[at.folder] * room;
                if (share >= TreemapTree::leastOpened) {
                    open.push_back({node, child.type, share});
                }
                child.type = TreemapTree::mixed;
            }
            ++node;
        }
        result.addChildren(at.node, std::move(children));
    }
    return result;
}
