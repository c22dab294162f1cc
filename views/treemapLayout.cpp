#include "views/treemapLayout.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>

namespace {

using Kind = TreemapNode::Kind;

// Each level of folders bends the surface less than the one above it. Below a title the surface is flat
// again: there the frame tells what belongs together.
constexpr double firstRidge = 0.35;
constexpr double ridgeOfNext = 0.6;

// Adds a ridge along the middle of the area, as van Wijk and van de Wetering (1999) do.
void addRidge(TreemapCushion& cushion, const TreemapRect& area, double height) {
    const auto add = [height](double& slope, double& bend, double from, double length) {
        if (length > 0) {
            slope += 4 * height * (from + from + length) / length;
            bend -= 8 * height / length;
        }
    };
    add(cushion[0], cushion[2], area.left, area.width);
    add(cushion[1], cushion[3], area.top, area.height);
}

TreemapTile tileOf(const TreemapNode& node, std::uint32_t index) {
    TreemapTile tile;
    tile.size = node.size;
    tile.node = index;
    tile.type = node.type;
    tile.items = node.items;
    tile.kind = node.kind;
    return tile;
}

// A folder's contents, with what has no room in that area gathered. Largest first.
std::vector<TreemapTile> contentsOf(const TreemapTree& tree, std::uint32_t folder, double area) {
    const TreemapNode& parent = tree.nodes()[folder];
    std::vector<TreemapTile> result;
    double total = 0;
    for (std::uint32_t i = parent.first; i < parent.first + parent.count; ++i) {
        result.push_back(tileOf(tree.nodes()[i], i));
        total += result.back().size;
    }
    const double least = total * TreemapTree::leastArea / area;
    if (result.back().size >= least) {
        return result;
    }
    const auto stays = [&](const TreemapTile& tile) {
        return tile.size >= least && tile.kind != Kind::gathered;
    };
    const auto small = std::stable_partition(result.begin(), result.end(), stays);
    const double placed = std::accumulate(
        result.begin(), small, 0.0, [](double sum, const TreemapTile& tile) { return sum + tile.size; });
    TreemapGathering gathering(area, placed);
    std::for_each(small, result.end(), [&](const TreemapTile& tile) {
        gathering.gather(tile.kind == Kind::folder ? TreemapTree::mixed : tile.type, tile.size, tile.items);
    });
    result.erase(small, result.end());
    for (const TreemapNode& node : gathering.take()) {
        result.push_back(tileOf(node, TreemapTile::none));
    }
    std::stable_sort(result.begin(), result.end(), [](const TreemapTile& left, const TreemapTile& right) {
        return left.size > right.size;
    });
    return result;
}

TreemapRect insideOf(const TreemapTile& tile, const TreemapLook& look) {
    const TreemapRect& area = tile.area;
    const double margin = TreemapLook::marginOf(std::min(area.width, area.height));
    const double top = tile.isTitled ? look.titleHeight : margin;
    return {area.left + margin, area.top + top, area.width - 2 * margin, area.height - top - margin};
}

} // namespace

double TreemapLook::roomInside(double area) {
    const double side = std::sqrt(area);
    const double inside = side - 2 * marginOf(side);
    return inside * inside;
}

TreemapLayout::TreemapLayout(std::shared_ptr<const TreemapTree> tree, TreemapRect room,
                             const TreemapLook& look)
    : tree_(std::move(tree)) {
    if (!tree_ || tree_->isEmpty() || !(room.area() >= TreemapTree::leastOpened)) {
        return;
    }
    tiles_.push_back(tileOf(tree_->nodes().front(), 0));
    tiles_.front().area = room;
    for (std::uint32_t parent = 0; parent < tiles_.size(); ++parent) {
        fill(parent, look);
    }
}

void TreemapLayout::fill(std::uint32_t parent, const TreemapLook& look) {
    TreemapTile& tile = tiles_[parent];
    if (tile.kind != Kind::folder || tree_->nodes()[tile.node].count == 0) {
        return;
    }
    tile.isTitled = tile.area.width >= look.leastTitled && tile.area.height >= look.leastTitledHeight;
    const TreemapRect inside = insideOf(tile, look);
    if (inside.area() < TreemapTree::leastArea || tile.area.area() < TreemapTree::leastOpened) {
        tile.isTitled = false;
        return;
    }
    std::vector<TreemapTile> contents = contentsOf(*tree_, tile.node, inside.area());
    std::vector<double> sizes;
    sizes.reserve(contents.size());
    for (const TreemapTile& each : contents) {
        sizes.push_back(each.size);
    }
    const std::vector<TreemapRect> areas = squarified(sizes, inside);
    tile.inside = inside;
    tile.first = static_cast<std::uint32_t>(tiles_.size());
    tile.count = static_cast<std::uint32_t>(contents.size());
    const TreemapCushion cushion = tile.isTitled ? TreemapCushion() : tile.cushion;
    double height = firstRidge;
    for (std::uint32_t above = parent; !tiles_[above].isTitled && above != 0; above = tiles_[above].parent) {
        height *= ridgeOfNext;
    }
    for (std::size_t i = 0; i < contents.size(); ++i) {
        contents[i].parent = parent;
        contents[i].area = areas[i];
        contents[i].cushion = cushion;
        addRidge(contents[i].cushion, areas[i], height);
        tiles_.push_back(contents[i]);
    }
}

std::uint32_t TreemapLayout::at(double x, double y) const {
    if (tiles_.empty() || !tiles_.front().area.contains(x, y)) {
        return TreemapTile::none;
    }
    std::uint32_t found = 0;
    for (bool goesOn = true; goesOn;) {
        const TreemapTile& tile = tiles_[found];
        goesOn = false;
        for (std::uint32_t i = tile.first; i < tile.first + tile.count && !goesOn; ++i) {
            if (tiles_[i].area.contains(x, y)) {
                found = i;
                goesOn = true;
            }
        }
    }
    return found;
}

std::uint32_t TreemapLayout::neighbour(std::uint32_t tile, Direction direction) const {
    constexpr double step = 1;
    const TreemapRect& area = tiles_[tile].area;
    const TreemapRect& all = tiles_.front().area;
    const bool flat = direction == Direction::left || direction == Direction::right;
    const double way = direction == Direction::left || direction == Direction::up ? -step : step;
    double x = !flat ? area.left + area.width / 2 : way < 0 ? area.left - step / 2 : area.right() + step / 2;
    double y = flat ? area.top + area.height / 2 : way < 0 ? area.top - step / 2 : area.bottom() + step / 2;
    while (all.contains(x, y)) {
        const std::uint32_t found = at(x, y);
        if (tiles_[found].count == 0) {
            return found;
        }
        // A frame is passed over, but its title must not lead past all that is in it.
        const TreemapRect& inside = tiles_[found].inside;
        if (!tiles_[found].area.contains(area.left + area.width / 2, area.top + area.height / 2)) {
            double& across = flat ? y : x;
            const double from = flat ? inside.top : inside.left;
            const double to = flat ? inside.bottom() : inside.right();
            across = std::clamp(across, from + step / 2, std::max(from, to - step) + step / 2);
        }
        (flat ? x : y) += way;
    }
    return TreemapTile::none;
}

std::string TreemapLayout::pathOf(std::uint32_t tile) const {
    const TreemapTile& shown = tiles_[tile];
    return shown.kind == Kind::gathered ? folderOf(tile) + "|" + tree_->types()[shown.type].extension
                                        : tree_->path(shown.node);
}

std::string TreemapLayout::folderOf(std::uint32_t tile) const {
    const TreemapTile& shown = tiles_[tile];
    const std::uint32_t folder = shown.kind == Kind::folder ? tile : shown.parent;
    return tree_->path(tiles_[folder].node);
}

std::uint32_t TreemapLayout::find(std::string_view path) const {
    if (tiles_.empty() || !path.starts_with(tree_->folder())) {
        return TreemapTile::none;
    }
    std::uint32_t found = 0;
    std::string_view rest = path.substr(tree_->folder().size());
    while (!rest.empty()) {
        const bool isFolder = rest.find('\\') != std::string_view::npos;
        const std::string_view name = rest.substr(0, rest.find('\\'));
        const TreemapTile& tile = tiles_[found];
        std::uint32_t next = tile.first;
        const std::uint32_t end = tile.first + tile.count;
        for (; next < end; ++next) {
            const TreemapTile& each = tiles_[next];
            const bool isIt =
                each.kind == Kind::gathered
                    ? name.starts_with('|') && name.substr(1) == tree_->types()[each.type].extension
                    : tree_->nodes()[each.node].name == name && (each.kind == Kind::folder) == isFolder;
            if (isIt) {
                break;
            }
        }
        if (next == end) {
            return TreemapTile::none;
        }
        found = next;
        rest = isFolder ? rest.substr(name.size() + 1) : std::string_view();
    }
    return found;
}
