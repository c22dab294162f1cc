#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"

// What a page about a folder tells, read from table `details` in one pass over the folder's rows. `key` is as
// in folderFigures.h. Database errors are thrown.
namespace modFigures {

// Files with one extension, or of one owner; unlike the lists of the window, one group for each name.
struct OverviewGroup {
    std::string name; // as stored; empty for none
    double size = 0;  // bytes
    std::int64_t files = 0;
};

struct OverviewFile {
    std::string path; // internal
    double size = 0;
    std::string modified; // as stored
};

// A folder with the largest of its subfolders.
struct OverviewFolder {
    std::string name; // internal, without "\"
    double size = 0;
    double ownFilesSize = 0; // of the files directly in it
    std::int64_t ownFiles = 0;
    std::size_t subfolders = 0;          // all there are
    double subfoldersSize = 0;           // of all
    std::vector<OverviewFolder> largest; // of them, largest first
};

struct OverviewLimits {
    std::vector<std::size_t> largestFolders{15, 8, 5}; // at each level
    std::size_t groups = 25;                           // of types, and of owners
    std::size_t largestFiles = 50;
    std::size_t oldestFiles = 50;
    std::size_t emptyFolders = 50;
};

struct Overview {
    OverviewFolder folder; // with its subfolders
    std::int64_t files = 0;
    std::int64_t folders = 0;
    std::int64_t otherVolumes = 0;    // roots of volumes below it, which were not read with it
    bool isComplete = false;          // all of it was scanned, as far as its rows tell
    bool hasNegativeSizes = false;    // files whose size was recorded as its low 32 bits
    std::string recorded;             // when its last row was recorded, as stored
    std::vector<OverviewGroup> types; // largest first
    std::size_t typeCount = 0;        // all there are
    std::vector<OverviewGroup> owners;
    std::size_t ownerCount = 0;
    std::vector<OverviewFile> largestFiles;
    // Those that were modified longest ago, among the largest tenth of the files: at least 50, at most 1,000.
    std::vector<OverviewFile> oldestFiles;
    std::size_t consideredFiles = 0;       // the largest ones, of which the oldest were taken
    double leastConsidered = 0;            // the size of the smallest of them
    std::vector<std::string> emptyFolders; // internal paths, in the order of recording
    std::size_t emptyFolderCount = 0;
};

// `isUnread` tells of which folders nothing is known, so that they are not taken for empty ones; `rowRead` is
// called now and then.
[[nodiscard]] Overview overview(Database& database, std::string_view key, const OverviewLimits& limits,
                                const std::function<bool(std::string_view folder)>& isUnread,
                                const std::function<void()>& rowRead);

} // namespace modFigures
