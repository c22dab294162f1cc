#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "app/clsSettings.h"
#include "app/clsUserInterface.h"
#include "platform/folders.h"
#include "platform/owners.h"
#include "scan/clsFile.h"
#include "scan/clsSearch.h"
#include "scan/dateTexts.h"

// One depth-first walk below a starting folder. Keeps its own stack of folders, so that the depth of a tree
// is bounded by the length of paths alone, and no folder is open while another is read.
class FolderWalk {
public:
    // `startTick` is when the scan began. Nothing is owned.
    FolderWalk(clsSearch& search, const clsSettings& settings, clsUserInterface& userInterface,
               std::int64_t startTick);

    // Records the folder, given with trailing "\", and all below it. An error in one folder is logged under
    // the routine's name and ends that folder only.
    void run(std::string_view path, const platform::EntryFacts& facts);

    [[nodiscard]] std::int64_t unreadableFolders() const noexcept { return unreadableFolders_; }
    [[nodiscard]] const std::string& firstUnreadable() const noexcept { return firstUnreadable_; }

private:
    // A folder whose entries are being recorded.
    struct Level {
        platform::FolderListing entries;
        std::size_t next = 0;
        std::size_t pathLength = 0;
        platform::EntryFacts facts;
        double size = 0; // of what was recorded in it so far
    };

    void enterFolder(const platform::EntryFacts& facts);
    void requireRecordable();
    void recordEntry(Level& level);
    void leaveFolder(Level& level);
    void showProgress();
    [[nodiscard]] std::string_view accessedText(const platform::EntryFacts& facts);
    [[nodiscard]] std::string_view modifiedText(const platform::EntryFacts& facts);
    [[nodiscard]] std::string_view ownerOf(const platform::EntryFacts& facts);

    clsSearch& search_;
    clsUserInterface& userInterface_;
    const bool withOwners_; // as set when the scan began, whatever is chosen while it runs
    const bool wholeSizes_;
    const std::int64_t startTick_;

    std::string path_;                           // of the folder on top, or of its entry being recorded
    std::vector<std::unique_ptr<Level>> levels_; // those beyond depth_ are kept for their memory
    std::size_t depth_ = 0;
    clsFile file_;
    platform::FolderReader reader_;
    platform::OwnerNames owners_;
    DateTexts accessed_;
    DateTexts modified_;
    std::unordered_set<std::string> mountPoints_;
    std::string status_;
    int visits_ = 0; // folders since the throughput was shown
    std::int64_t unreadableFolders_ = 0;
    std::string firstUnreadable_;
};
