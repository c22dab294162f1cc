#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"
#include "views/quickSort.h"

// What the views show of a folder, by query over table `details`. `key` is the folder's internal path with
// trailing "\", put into the statements as it stands. Database errors are thrown.
namespace modFigures {

// The chart's entry for the files that stand in the folder itself. No folder can be called so.
inline constexpr std::string_view filesLabel = "|Files|";

// One group of files: all of one extension, or of one owner.
struct FileGroup {
    std::string name; // as stored; empty for NULL
    double size = 0;  // bytes
    std::string count;
};

// The chart's entries, ascending by size: filesLabel for the files directly in the folder, and each
// subfolder.
[[nodiscard]] std::vector<ChartEntry> chartEntries(Database& database, std::string_view key);

// The files of the whole subtree by extension and description, as the engine groups them.
[[nodiscard]] std::vector<FileGroup> fileTypes(Database& database, std::string_view key);

// The files of the whole subtree by owner. The key is a pattern's beginning here: wildcards in it count.
[[nodiscard]] std::vector<FileGroup> owners(Database& database, std::string_view key);

// "17 items.": the rows of the whole table.
[[nodiscard]] std::string itemsText(Database& database);

} // namespace modFigures
