#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The tables and views on a server, and the statements that make them. Both ClickHouse 18.16 and newer ones
// take them. Names of databases and clusters are plain (isPlainName).
//
// `details`: a row for each file and folder of every attempt to send a scan. Of one, only the rows count
// whose attempt a row of `counted` names; those of attempts that were broken off stay and count nothing.
//   host, scan, attempt   whose row it is; `scan` is the scan's id
//   started               of the scan, UTC; for the partitions
//   idx                   the order of recording
//   drive, parentFolder, fileName
//                         as on the disk, bytes and all: `/home/`, `/home/me/`, `notes`. Folders end in the
//                         separator, but not their `fileName`.
//   fullPath              the two together (an alias)
//   isFolder              1 or 0
//   size, sizeOnDisk      bytes; a folder's with all below it
//   fileCount, folderCount  of a folder: what is below it; else 0
//   extension, description, owner
//                         as in the working database, but for the extension's characters (as on the disk)
//   dateModified, dateAccessed, dateInserted, scanCompleteTime
//                         the time that the machine's clock showed; 1970-01-01 00:00:00 for none
//   odd                   empty, or what the other columns do not tell of the row (collect/rowForm.h)
//
// `scans`: a row for each scan that is there completely, sent last. It may be there twice.
//   host, scan, attempt, system, programVersion
//   path                  as on the disk; `drive` is the part of it that is the drive
//   separator             of its paths: `/`, or `\` for Windows'
//   started, finished     UTC
//   exact, withOwners, onDisk, foldersOnly   1 or 0
//   excludes, unreadableFolders, unreadableFiles
//   rows                  how many it has in `details`
//   size, sizeOnDisk, fileCount, folderCount   of its folder
//   sent                  when, UTC
//   records               the rows of the working database's table `scans` (collect/rowForm.h)
//
// Views: `counted` has one row of `scans` for each scan. `newest` has those of them that are the newest of
// their host and path; `outermost`, of these, those that lie in no other. `latest` is `details` of `newest`;
// `owners` and `types` add up the files of `outermost`, for each host; `growth` has a row with the figures of
// each scan. `schemaVersion` has the one column `version`.
namespace modSchema {

inline constexpr int version = 1;

// A text as a literal of a statement, whatever bytes it has.
[[nodiscard]] std::string literal(std::string_view bytes);

// `database`.`table`.
[[nodiscard]] std::string qualified(std::string_view database, std::string_view table);

// In the order in which rows are sent and read, separated by commas.
[[nodiscard]] std::string_view detailsColumns();
[[nodiscard]] std::string_view scansColumns();

struct Wanted {
    std::string database;
    std::string cluster;            // empty for none
    bool hasLowCardinality = false; // the server knows such columns
};

// What makes all that is missing, and changes nothing that is there. In this order; the version comes last,
// so that it says that all is there.
[[nodiscard]] std::vector<std::string> definitions(const Wanted& wanted);

// Answer with one number: whether there is the view `schemaVersion` (0 or 1), and what it says.
[[nodiscard]] std::string hasVersion(std::string_view database);
[[nodiscard]] std::string askVersion(std::string_view database);
// Likewise whether `details` is there and no part of a cluster's.
[[nodiscard]] std::string isOnOneServer(std::string_view database);

} // namespace modSchema
