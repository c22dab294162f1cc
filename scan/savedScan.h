#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"

// Finds folders in an earlier scan, possibly from another machine.
namespace modSavedScan {

// The keys (internal paths with a trailing "\") that a typed folder may have in a scan: where its drive ends
// cannot be told from the text. It may be typed as on this machine or as on the scanned one.
[[nodiscard]] std::vector<std::string> possibleKeys(std::string_view typedPath);

// The first of the keys of which the scan has the folder or something in it; empty if there is none.
[[nodiscard]] std::string findFolder(Database& database, const std::vector<std::string>& keys);
[[nodiscard]] std::string findFolder(Database& database, std::string_view typedPath);

// The keys of the top folders: those that contain rows but have no row of their own.
[[nodiscard]] std::vector<std::string> topFolders(Database& database);

// The keys of the scanned folders, at most `most` of them: each of the top folders that was itself scanned,
// and for each other one the folders in it.
[[nodiscard]] std::vector<std::string> scannedFolders(Database& database, std::size_t most);

// The paths of the folder's subfolders, according to the rows, each ending in "\".
[[nodiscard]] std::vector<std::string> subfolders(Database& database, std::string_view key);

// True if the rows up to `lastRow` (an idx) show that the folder was scanned, at least in part: it contains
// files or, for a drive's root, which never has its own row, more than one folder.
[[nodiscard]] bool wasWalked(Database& database, std::string_view key, std::int64_t lastRow);

} // namespace modSavedScan
