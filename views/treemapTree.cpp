#include "views/treemapTree.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace {

bool isLarger(const TreemapNode& left, const TreemapNode& right) {
    return left.size > right.size;
}

} // namespace

TreemapTree::TreemapTree(std::string_view folder, double area) : folder_(folder), area_(area), nodes_(1) {
    nodes_.front().kind = TreemapNode::Kind::folder;
}

std::vector<std::uint32_t> TreemapTree::largestTypes(std::size_t most) const {
    std::vector<std::uint32_t> result(types_.size() - 1);
    std::iota(result.begin(), result.end(), mixed + 1);
    std::stable_sort(result.begin(), result.end(),
                     [this](std::uint32_t a, std::uint32_t b) { return types_[a].size > types_[b].size; });
    result.resize(std::min(result.size(), most));
    return result;
}

std::string TreemapTree::path(std::uint32_t node) const {
    std::vector<std::uint32_t> way;
    for (std::uint32_t at = node; at != 0; at = nodes_[at].parent) {
        way.push_back(at);
    }
    std::string result = folder_;
    std::reverse(way.begin(), way.end());
    for (const std::uint32_t at : way) {
        result += nodes_[at].name;
        result += nodes_[at].kind == TreemapNode::Kind::folder ? "\\" : "";
    }
    return result;
}

std::uint32_t TreemapTree::typeOf(std::string_view extension) {
    if (const auto known = typeIndexes_.find(extension); known != typeIndexes_.end()) {
        return known->second;
    }
    const auto type = static_cast<std::uint32_t>(types_.size());
    types_.push_back({std::string(extension)});
    typeIndexes_.emplace(extension, type);
    return type;
}

void TreemapTree::addChildren(std::uint32_t parent, std::vector<TreemapNode>&& children) {
    nodes_[parent].first = static_cast<std::uint32_t>(nodes_.size());
    nodes_[parent].count = static_cast<std::uint32_t>(children.size());
    if (parent == 0) {
        nodes_[0].size =
            std::accumulate(children.begin(), children.end(), 0.0,
                            [](double sum, const TreemapNode& child) { return sum + child.size; });
    }
    for (TreemapNode& child : children) {
        child.parent = parent;
    }
    std::move(children.begin(), children.end(), std::back_inserter(nodes_));
}

void TreemapGathering::keep(TreemapNode node) {
    sum_ += node.size;
    kept_.push_back(std::move(node));
    if (kept_.size() >= mostKept_) {
        purge();
        mostKept_ = std::max(mostKept_, kept_.size() * 2);
    }
}

void TreemapGathering::gather(std::uint32_t type, double size, std::uint32_t items) {
    sum_ += size;
    TreemapNode& group = gathered_[type];
    group.items = (group.size > 0 ? group.items : 0) + items;
    group.size += size;
    group.type = type;
    group.kind = TreemapNode::Kind::gathered;
}

// What was large enough beside the items before it may not be beside all of them.
void TreemapGathering::purge() {
    const double least = sum_ * share_;
    std::erase_if(kept_, [&](const TreemapNode& node) {
        const bool goes = node.size < least;
        if (goes) {
            sum_ -= node.size; // which the gathering adds again
            gather(node.kind == TreemapNode::Kind::file ? node.type : TreemapTree::mixed, node.size);
        }
        return goes;
    });
}

std::vector<TreemapNode> TreemapGathering::take() {
    purge();
    TreemapNode rest;
    rest.kind = TreemapNode::Kind::gathered;
    rest.items = 0;
    for (auto& [type, group] : gathered_) {
        if (type != TreemapTree::mixed && group.size >= sum_ * share_) {
            kept_.push_back(std::move(group));
        } else {
            rest.size += group.size;
            rest.items += group.items;
        }
    }
    if (rest.items > 0) {
        kept_.push_back(std::move(rest));
    }
    // Names decide between equals, so that the same rows give the same picture.
    std::sort(kept_.begin(), kept_.end(), [](const TreemapNode& left, const TreemapNode& right) {
        return isLarger(left, right) ||
               (left.size == right.size && std::pair(std::string_view(left.name), left.type) <
                                               std::pair(std::string_view(right.name), right.type));
    });
    return std::move(kept_);
}
