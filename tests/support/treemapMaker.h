#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "views/treemapTree.h"

// A tree of `C:\` made by hand: each folder's contents are added once, largest first.
class TreemapMaker {
public:
    explicit TreemapMaker(double area = 1e6) : tree_("C:\\", area) {}

    // The index of the first of them.
    std::uint32_t add(std::uint32_t parent, std::vector<TreemapNode> children) {
        const auto first = static_cast<std::uint32_t>(tree_.nodes().size());
        for (const TreemapNode& child : children) {
            tree_.addToType(child.type, child.size);
        }
        tree_.addChildren(parent, std::move(children));
        return first;
    }
    [[nodiscard]] TreemapNode file(std::string name, double size, const char* extension = "txt") {
        return {.name = std::move(name), .size = size, .type = tree_.typeOf(extension)};
    }
    [[nodiscard]] static TreemapNode folder(std::string name, double size) {
        return {.name = std::move(name), .size = size, .kind = TreemapNode::Kind::folder};
    }
    [[nodiscard]] std::shared_ptr<const TreemapTree> take() {
        return std::make_shared<const TreemapTree>(std::move(tree_));
    }

private:
    TreemapTree tree_;
};
