#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"
#include "views/quickSort.h"

// The figures that the views show for a folder, queried from table `details`. `key` is the folder's internal
// path with a trailing "\", inserted into the statements unchanged. Database errors are thrown.
namespace modFigures {

// The chart's entry for the files directly in the folder. No folder can have this name.
inline constexpr std::string_view filesLabel = "|Files|";

// A group of files with the same extension or the same owner.
struct FileGroup {
    std::string name; // as stored; empty for NULL
    double size = 0;  // bytes
    std::string count;
};

// The chart's entries, ascending by size: filesLabel for the files directly in the folder, and each
// subfolder. A subfolder's row is written when all that it contains has been read; while a scan is running,
// the one that it is in takes part with what is recorded of it.
enum class ScanState { ended, running };
[[nodiscard]] std::vector<ChartEntry> chartEntries(Database& database, std::string_view key,
                                                   ScanState state = ScanState::ended);

// The folder that the row recorded last lies in; empty if there are no rows. While a scan is running, this
// folder and those above it may have contents and no row of their own yet, and no others.
[[nodiscard]] std::string lastFolder(Database& database);

// The files of the whole subtree grouped by extension and description.
[[nodiscard]] std::vector<FileGroup> fileTypes(Database& database, std::string_view key);

// The files of the whole subtree grouped by owner.
[[nodiscard]] std::vector<FileGroup> owners(Database& database, std::string_view key);

// "17 items.": the number of rows in the whole table.
[[nodiscard]] std::string itemsText(Database& database);
[[nodiscard]] std::string itemsText(std::int64_t count);

} // namespace modFigures
