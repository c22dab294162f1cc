#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"
#include "platform/clock.h"

// Table `scans`: the scans that the rows of table `details` come from.
namespace modScans {

// One row. What is not known is empty, or 0.
struct Scan {
    std::string host;
    std::string system;
    std::string path; // the key of the folder with which the scan began
    std::optional<platform::Seconds> started;
    std::optional<platform::Seconds> finished;
    bool cancelled = false;
    bool exact = false; // real sizes of large files
    bool withOwners = false;
    bool onDisk = false;  // with the room that files take on the disk
    std::string excludes; // patterns, one a line
    std::int64_t unreadableFolders = 0;
    std::int64_t unreadableFiles = 0;
    std::string programVersion;
    std::string uniqueId; // no other scan has it
};

// How many are read: the last ones.
inline constexpr std::size_t mostRead = 1000;

// In the order of scanning.
[[nodiscard]] std::vector<Scan> all(Database& database);
// Of a file that is not trusted (see Database::OpenStored); none if it has no such table.
[[nodiscard]] std::vector<Scan> stored(Database& file);

// The scan that the folder was last recorded by: of those at or above it, the deepest. Null if there is none.
[[nodiscard]] const Scan* ofFolder(const std::vector<Scan>& scans, std::string_view key);

// That one, and those of folders below: what the rows of the folder come from.
[[nodiscard]] std::vector<Scan> within(const std::vector<Scan>& scans, std::string_view key);

// Why figures that come from these and from those scans do not go together: "the saved scan was cancelled,
// they left out different items"; empty if nothing is known to be in the way.
[[nodiscard]] std::string differences(const std::vector<Scan>& before, const std::vector<Scan>& now);

// When the last of them ended; nothing if none says so.
[[nodiscard]] std::optional<platform::Seconds> lastFinished(const std::vector<Scan>& scans);

// For `Scan::uniqueId`: 32 random digits, 0 to f.
[[nodiscard]] std::string newUniqueId();

void append(Database& database, const Scan& scan);

// Appends a scan that has recorded its folder. It replaces those of the same folder and of the folders below
// that it has recorded anew: with rows numbered higher than `lastRowBefore`.
void record(Database& database, const Scan& scan, std::int64_t lastRowBefore);

// Whether the path is the folder's or that of a folder below it.
[[nodiscard]] bool isAtOrBelow(std::string_view path, std::string_view folder);

// Removes the scans of the folder and of those below it, or all.
void forget(Database& database, std::string_view folder);
void forgetAll(Database& database);

} // namespace modScans
