#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "db/scanRecords.h"
#include "platform/drives.h"
#include "scan/figureGaps.h"
#include "views/overviewFigures.h"

// The parts of an overview page (overviewPage.h) that are about one folder.
namespace modExport {

// What is told about a folder. Paths are internal.
struct OverviewSection {
    struct Gap {
        std::string path;
        std::string reason;
    };

    std::size_t number = 1; // of the folder on the page
    std::string key;
    modFigures::Overview figures;
    bool isOnDisk = false;                     // figures are what is taken on the disk
    bool isLoaded = false;                     // rows came from a saved scan
    std::optional<modScans::Scan> scan;        // which that was, if it says so
    Unreadable unreadable;                     // how much could not be read, as far as it is known
    std::int64_t wrapped = 0;                  // files whose size was recorded as its low 32 bits, likewise
    std::vector<Gap> firstGaps;                // some of them
    std::vector<std::string> excludes;         // patterns of what was left out, likewise
    std::optional<platform::DriveSpace> drive; // nothing if it is not known, or not that of the scan
};

// How much is told, so that a page does not become larger than it may.
struct OverviewDetail {
    std::array<std::size_t, 3> folders; // at each level
    std::size_t rows = 0;               // of each table
    std::size_t longestName = 0;        // in characters
    std::size_t longestPath = 0;
};

void appendSection(std::string& html, const OverviewSection& section, const OverviewDetail& detail);

// Parts of it, each with its heading.
void appendFacts(std::string& html, const OverviewSection& section, const OverviewDetail& detail);
void appendLargestFolders(std::string& html, const OverviewSection& section, const OverviewDetail& detail);
void appendTables(std::string& html, const OverviewSection& section, const OverviewDetail& detail);

} // namespace modExport
