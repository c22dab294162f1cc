#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// One item of a treemap.
struct TreemapNode {
    enum class Kind : std::uint8_t {
        folder,
        file,
        gathered, // several items of a folder that are too small for places of their own
    };

    std::string name; // internal, without "\"; empty for what is gathered
    double size = 0;  // bytes, above 0
    std::uint32_t parent = 0;
    std::uint32_t first = 0; // of its children
    std::uint32_t count = 0; // of its children; 0 also for a folder that is too small to be looked into
    std::uint32_t type = 0;  // of a file, or of files gathered
    std::uint32_t items = 1; // how many are gathered
    Kind kind = Kind::file;
};

// What a treemap shows of a folder: the items at every depth that can be told apart in an area of so many
// pixels. The children of a node stand together, largest first.
class TreemapTree {
public:
    static constexpr std::uint32_t mixed = 0; // the type of folders, and of different things gathered

    // Pixels. No place is made for less than the one, and no folder is looked into that has less than the
    // other.
    static constexpr double leastArea = 16;
    static constexpr double leastOpened = 100;

    struct Type {
        std::string extension;
        double size = 0; // of what was read
    };

    // Nothing to show.
    TreemapTree() = default;
    // `folder` is an internal path with a trailing "\", `area` the pixels that it is to be shown in.
    TreemapTree(std::string_view folder, double area);

    [[nodiscard]] const std::string& folder() const noexcept { return folder_; }
    [[nodiscard]] double area() const noexcept { return area_; }
    // The first is the folder itself; there are none if it has no size.
    [[nodiscard]] const std::vector<TreemapNode>& nodes() const noexcept { return nodes_; }
    [[nodiscard]] bool isEmpty() const noexcept { return nodes_.size() < 2; }
    [[nodiscard]] const std::vector<Type>& types() const noexcept { return types_; }
    // The types, largest first, at most so many.
    [[nodiscard]] std::vector<std::uint32_t> largestTypes(std::size_t most) const;

    // The internal path; that of a folder ends in "\". What is gathered has its folder's.
    [[nodiscard]] std::string path(std::uint32_t node) const;

    // --- while it is made ---------------------------------------------------------------------------------
    [[nodiscard]] std::uint32_t typeOf(std::string_view extension);
    void addToType(std::uint32_t type, double size) { types_[type].size += size; }
    // Once for each parent. The root takes their sum as its size.
    void addChildren(std::uint32_t parent, std::vector<TreemapNode>&& children);

private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    std::string folder_;
    double area_ = 0;
    std::vector<TreemapNode> nodes_;
    std::vector<Type> types_{Type()};
    std::unordered_map<std::string, std::uint32_t, TextHash, std::equal_to<>> typeIndexes_;
};

// The items directly in one folder, of which only those are kept that have room in it. Only items with a size
// count.
class TreemapGathering {
public:
    // The folder's area in pixels, and the size of those of its items that have their places already.
    explicit TreemapGathering(double area, double placed = 0)
        : share_(TreemapTree::leastArea / area), sum_(placed) {}

    // Whether the next item, of which the size is given, has to be kept. If not, it is to be gathered.
    [[nodiscard]] bool keeps(double size) const noexcept { return size >= (sum_ + size) * share_; }
    void keep(TreemapNode node);
    void gather(std::uint32_t type, double size, std::uint32_t items = 1);

    // Largest first, without parents.
    [[nodiscard]] std::vector<TreemapNode> take();

private:
    void purge();

    double share_; // of all, below which an item has no place
    double sum_;
    std::size_t mostKept_ = 1024; // before the next purge
    std::vector<TreemapNode> kept_;
    std::unordered_map<std::uint32_t, TreemapNode> gathered_; // by type
};
