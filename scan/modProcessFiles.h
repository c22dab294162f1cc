#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "app/clsSettings.h"
#include "app/clsUserInterface.h"
#include "platform/clock.h"
#include "scan/clsSearch.h"

// The scan driver: walks a folder tree depth-first and records every file and folder in table `details`,
// totalling each folder from the rows of its contents.
namespace modProcessFiles {

// What a scan works with. Nothing is owned.
struct Surroundings {
    clsSearch& search;
    const clsSettings& settings;
    clsUserInterface& userInterface;
    // Handles the tree node of this key; called for the node that was queued while the scan ran.
    std::function<void(const std::string& nodeKey)> handleNode = {};
};

// How a scan went.
struct ScanResult {
    double files = 0; // recorded, folders not counted
    double seconds = 0;
    bool cancelled = false;
    bool stored = false; // false when the database could not take it; the error has been logged
    std::int64_t unreadableFolders = 0;
    std::string firstUnreadable; // internal path
};

// Scans a folder or drive root, given by internal path with or without trailing "\", as one transaction.
// Leaves out what was completely scanned before. Status texts: the folder being read, " files/sec" now and
// then, and "Finished in " at the end. Errors are logged, none is thrown.
ScanResult processMain(std::string_view path, const Surroundings& surroundings);

// A file time as local-time text, mm/dd/yyyy hh:nn:ss AMPM; empty when it lies beyond the calendar.
[[nodiscard]] std::string getFolderFileDate(platform::Seconds fileTime);

// "Finished in 1.5 seconds." or "Finished in 2.3 minutes."
[[nodiscard]] std::string finishedText(double seconds);

} // namespace modProcessFiles
