#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "export/folderHistory.h"

// Reads what saved scans tell, without loading any.
namespace modExport {

// The history of a folder, and those of its largest subfolders.
struct FolderHistories {
    FolderHistory folder;
    // The largest in the newest scan that has the folder, the largest first. Of files that do not store the
    // numbers of items, those of subfolders are not counted.
    std::vector<FolderHistory> subfolders;
    std::size_t files = 0; // that were read or tried
};

struct HistoryWish {
    std::size_t mostSubfolders = 0;
    // Asked before each file and while reading one takes long; if it says no, the rest is left out.
    std::function<bool()> goesOn;
    std::function<void(std::size_t files)> progress; // that are done; may be empty
};

// Opens each file once, unless their times of change do not tell which one holds the newest scan.
[[nodiscard]] FolderHistories readHistories(const std::vector<std::string>& files, std::string_view typedPath,
                                            const HistoryWish& wish);

// Of the folder alone.
[[nodiscard]] FolderHistory readHistory(const std::vector<std::string>& files, std::string_view typedPath,
                                        const std::function<bool()>& goesOn);

} // namespace modExport
