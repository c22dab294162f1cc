#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/clsFile.h"
#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "platform/folders.h"
#include "platform/owners.h"
#include "scan/clsSearch.h"
#include "scan/dateTexts.h"
#include "scan/excludedEntries.h"
#include "scan/readAhead.h"

// A depth-first walk below a starting folder. It keeps its own stack of folders, so that only the length of
// paths limits the depth of a tree, and no folder is open while another is read.
class FolderWalk {
public:
    // `elapsed` returns the milliseconds since the scan began. Nothing else is owned.
    FolderWalk(clsSearch& search, const clsSettings& settings, clsUserInterface& userInterface,
               std::function<std::int64_t()> elapsed);

    // Records the folder (given with a trailing "\") and everything below it. An error in one folder is
    // logged under the routine's name and ends only that folder.
    void run(std::string_view path, const platform::EntryFacts& facts);

    [[nodiscard]] std::int64_t unreadableFolders() const noexcept { return unreadableFolders_; }
    [[nodiscard]] std::int64_t unreadableFiles() const noexcept { return unreadableFiles_; }
    // Entries that were left out, and the start if it was.
    [[nodiscard]] std::int64_t excluded() const noexcept { return excluded_; }
    [[nodiscard]] std::int64_t wrappedFiles() const noexcept { return wrappedFiles_; }

private:
    // A folder whose entries are being recorded.
    struct Level {
        ReadAhead::FolderPtr folder;
        std::size_t next = 0;
        std::size_t pathLength = 0;
        platform::EntryFacts facts;
        modFolderRows::Totals items;               // those recorded or found in it so far
        bool isNew = true;                         // neither it nor anything in it had a row before
        modFolderRows::RecordedFolders subfolders; // its subfolders that had rows
    };

    void readAhead();
    void enterFolder(const platform::EntryFacts& facts);
    void beginFolder(const platform::EntryFacts& facts, const modFolderRows::RecordedFolder& recorded);
    void replaceRecorded(Level& level, const modFolderRows::RecordedFolder& recorded);
    [[nodiscard]] modFolderRows::RecordedFolder recordedFolder();
    [[nodiscard]] ReadAhead::FolderPtr read(bool isNew);
    [[nodiscard]] bool isExcluded() const { return excludes_ && excludes_->contain(path_); }
    [[nodiscard]] bool isWalked(const platform::FolderEntry& entry) const;
    [[nodiscard]] bool isOtherVolume(const platform::FolderEntry& entry) const;
    [[nodiscard]] bool isRecordable();
    void skipUnreadable(std::string_view reason);
    void recordEntry(Level& level);
    void recordOtherVolume(Level& level, const platform::EntryFacts& facts);
    void leaveFolder(Level& level);
    void showProgress();
    [[nodiscard]] std::string_view accessedText(const platform::EntryFacts& facts);
    [[nodiscard]] std::string_view modifiedText(const platform::EntryFacts& facts);
    [[nodiscard]] std::string_view ownerOf(const platform::EntryFacts& facts);

    clsSearch& search_;
    clsUserInterface& userInterface_;
    const bool withOwners_; // fixed when the scan begins, even if the setting changes
    const bool wholeSizes_;
    const int readers_;
    const std::shared_ptr<const Excludes> patterns_;
    const std::function<std::int64_t()> elapsed_;

    std::string path_;                           // of the current folder, or of its entry being recorded
    std::vector<std::unique_ptr<Level>> levels_; // levels beyond depth_ are kept to reuse their memory
    std::size_t depth_ = 0;
    clsFile file_;
    std::unique_ptr<ReadAhead> ahead_;
    platform::OwnerNames owners_;
    DateTexts accessed_;
    DateTexts modified_;
    std::shared_ptr<const platform::PathSet> mountPoints_; // also kept by the readers
    std::shared_ptr<const ExcludedEntries> excludes_;      // likewise; null if nothing is excluded
    std::string status_;
    int visits_ = 0; // folders since the throughput was last shown
    std::int64_t unreadableFolders_ = 0;
    std::int64_t unreadableFiles_ = 0;
    std::int64_t wrappedFiles_ = 0;
    std::int64_t excluded_ = 0;
};
