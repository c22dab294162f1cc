#include "scan/foldersAbove.h"

#include <algorithm>

#include "base/clsFile.h"
#include "db/folderRows.h"

namespace {

bool isRoot(std::string_view folder) {
    return clsFile(folder).fullPathNoDrive().empty();
}

bool isIn(std::string_view path, std::string_view folder) {
    return platform::sameName(path.substr(0, folder.size()), folder);
}

} // namespace

void FoldersAbove::prepare(Database& database, std::string_view folder) {
    for (std::string above(folder); !isRoot(above);) {
        above = std::string(clsFile(above).parentFolder());
        if (ownSizes_.contains(above)) {
            continue;
        }
        const modFolderRows::RecordedFolder row = modFolderRows::find(database, above);
        if (row.hasOwnRow) {
            ownSizes_[above] = row.totals.sizeOnDisk - modFolderRows::totals(database, above).sizeOnDisk;
        }
    }
}

void FoldersAbove::follow(Database& database, std::string_view folder, bool isComplete) {
    if (isComplete) {
        std::erase_if(unfinished_, [&](const std::string& other) { return isIn(other, folder); });
    } else if (!isRoot(folder)) {
        unfinished_.emplace(folder);
    }
    for (std::string above(folder); !isRoot(above);) {
        above = std::string(clsFile(above).parentFolder());
        const modFolderRows::RecordedFolder row = modFolderRows::find(database, above);
        if (!row.hasOwnRow) { // a drive's root, or a folder that was not scanned
            continue;
        }
        modFolderRows::Totals totals = modFolderRows::totals(database, above);
        totals.sizeOnDisk += ownSizes_[above];
        if (totals != row.totals) {
            modFolderRows::setTotals(database, above, totals);
        }
        if (!isComplete && !row.stamp.empty()) {
            holdStamp(database, above, row.stamp);
        } else if (isComplete && row.stamp.empty()) {
            giveBackStamp(database, above);
        }
    }
}

void FoldersAbove::holdStamp(Database& database, const std::string& folder, const std::string& stamp) {
    held_.insert_or_assign(folder, stamp);
    modFolderRows::setStamp(database, folder, {});
}

void FoldersAbove::giveBackStamp(Database& database, const std::string& folder) {
    const auto held = held_.find(folder);
    const bool isFinished = std::none_of(unfinished_.begin(), unfinished_.end(),
                                         [&](const std::string& other) { return isIn(other, folder); });
    if (held != held_.end() && isFinished) {
        modFolderRows::setStamp(database, folder, held->second);
        held_.erase(held);
    }
}

void FoldersAbove::forget() noexcept {
    unfinished_.clear();
    held_.clear();
    ownSizes_.clear();
}
