#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "platform/clock.h"
#include "scan/clsSearch.h"

// The scan driver: walks a folder tree depth-first, records every file and folder in table `details`, and
// totals each folder from the rows of its contents.
namespace modProcessFiles {

// The objects that a scan uses. None is owned.
struct Dependencies {
    clsSearch& search;
    const clsSettings& settings;
    clsUserInterface& userInterface;
    // Handles the tree node with this key; called for the node queued during the scan.
    std::function<void(const std::string& nodeKey)> handleNode = {};
    // The clock, in milliseconds.
    std::function<std::int64_t()> tickCount = platform::tickCount;
};

// The outcome of a scan.
struct ScanResult {
    double files = 0; // the number of files recorded, without folders
    double seconds = 0;
    bool cancelled = false;
    bool stored = false;                // false if the database could not store it; the error has been logged
    std::int64_t unreadableFolders = 0; // of those that this scan tried to read
    std::int64_t unreadableFiles = 0;   // recorded with their names alone
    std::int64_t excluded = 0;          // entries that were left out, with all that is in them
    std::int64_t wrappedFiles = 0;      // files whose size was recorded as its low 32 bits
};

// Scans a folder or drive root (an internal path, with or without a trailing "\") in one transaction. Folders
// that have already been scanned completely are skipped. Status texts: the folder being read, " files/sec"
// now and then, and "Finished in " and what the figures lack at the end. Errors are logged, not thrown.
ScanResult processMain(std::string_view path, const Dependencies& dependencies);

// A file time as local-time text, mm/dd/yyyy hh:nn:ss AMPM; empty if it is beyond the calendar.
[[nodiscard]] std::string getFolderFileDate(platform::Seconds fileTime);

// "3 files of 2 GB or more are counted with wrapped sizes."
[[nodiscard]] std::string wrappedText(std::int64_t files);

// "Finished in 1.5 seconds." or "Finished in 2.3 minutes."
[[nodiscard]] std::string finishedText(double seconds);

} // namespace modProcessFiles
