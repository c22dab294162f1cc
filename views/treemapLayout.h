#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "views/squarify.h"
#include "views/treemapTree.h"

// How folders are framed. Lengths in pixels.
struct TreemapLook {
    double titleHeight = 16;
    double leastTitled = 40; // width of a folder with a title
    double leastTitledHeight = 48;

    // The margin around the contents of a folder with this shorter side.
    [[nodiscard]] static double marginOf(double side) noexcept { return side < 16 ? 0 : side < 48 ? 1 : 2; }

    // About the most that remains of a folder's area for its contents.
    [[nodiscard]] static double roomInside(double area);
};

// The slopes of a shaded surface: at x and y, they are the first plus the second times the place.
using TreemapCushion = std::array<double, 4>; // x, y, both by the place

// The place of one item.
struct TreemapTile {
    static constexpr std::uint32_t none = static_cast<std::uint32_t>(-1);

    TreemapRect area;
    TreemapRect inside; // of a folder whose contents are shown: their room
    TreemapCushion cushion{};
    double size = 0;           // bytes
    std::uint32_t node = none; // none for what only this layout has gathered
    std::uint32_t parent = none;
    std::uint32_t first = 0; // of the tiles in it
    std::uint32_t count = 0; // of them; 0 unless it is a folder whose contents are shown
    std::uint32_t type = TreemapTree::mixed;
    std::uint32_t items = 1; // of what is gathered
    TreemapNode::Kind kind = TreemapNode::Kind::folder;
    bool isTitled = false;
};

// The places of a tree's items in a rectangle. Tiles lie inside their parents' and do not overlap; those of
// one folder have areas proportional to their sizes. What would be smaller than TreemapTree::leastArea is
// gathered, files by their types.
class TreemapLayout {
public:
    enum class Direction { left, right, up, down };

    TreemapLayout() = default;
    TreemapLayout(std::shared_ptr<const TreemapTree> tree, TreemapRect room, const TreemapLook& look);

    // The first is the folder's own; none if there is nothing to show. Parents come before their contents.
    [[nodiscard]] const std::vector<TreemapTile>& tiles() const noexcept { return tiles_; }
    // May be null if there are no tiles.
    [[nodiscard]] const std::shared_ptr<const TreemapTree>& tree() const noexcept { return tree_; }

    // The innermost tile there, or none.
    [[nodiscard]] std::uint32_t at(double x, double y) const;
    // The nearest innermost tile beyond the middle of that edge, or none.
    [[nodiscard]] std::uint32_t neighbour(std::uint32_t tile, Direction direction) const;

    // The item's path; that of a folder ends in "\". What is gathered has its folder's path, "|" and its
    // type's name, which no item has.
    [[nodiscard]] std::string pathOf(std::uint32_t tile) const;
    // The path of the folder that the item is in, or that it is.
    [[nodiscard]] std::string folderOf(std::uint32_t tile) const;
    // The tile of that path, or none.
    [[nodiscard]] std::uint32_t find(std::string_view path) const;

private:
    void fill(std::uint32_t parent, const TreemapLook& look);

    std::shared_ptr<const TreemapTree> tree_;
    std::vector<TreemapTile> tiles_;
};
