#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "db/dao.h"
#include "views/folderFigures.h"
#include "views/treemapTree.h"

namespace modTreemap {

using Time = std::chrono::steady_clock::time_point;

} // namespace modTreemap

// Reads the treemap of a folder from the rows, a little at a time: of each folder what is directly in it,
// found by the index, and nothing of folders that are too small to be looked into. Between two calls no
// statement is open, and rows may change.
class TreemapReader {
public:
    // `folder` is an internal path with a trailing "\", `area` the pixels of the largest picture to be made.
    TreemapReader(std::string_view folder, double area, modFigures::ScanState state);

    // Reads until that time, or a little longer. True if all has been read. Database errors are thrown.
    bool readUntil(Database& database, modTreemap::Time end);

    // What has been read so far. Once.
    [[nodiscard]] TreemapTree take() { return std::move(tree_); }

private:
    struct Unread {
        std::uint32_t node;
        double area;
    };
    bool readFolder(Database& database, modTreemap::Time end);
    void findUnfinished(Database& database);
    void addUnfinished(const std::string& folder);
    void finishFolder();

    TreemapTree tree_;
    std::vector<Unread> unread_; // the folders to be looked into, in the order of their nodes
    std::size_t next_ = 0;       // of them
    // Of the folder that is being read.
    std::optional<TreemapGathering> contents_;
    std::optional<std::int64_t> lastRow_; // its number; none at the beginning
    // By their paths, folders that a running scan has not come to the end of.
    std::unordered_map<std::string, double> unfinished_;
    bool looksForUnfinished_;
};
