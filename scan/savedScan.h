#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"

// Finding one's way in a scan that was made earlier, perhaps on another machine.
namespace modSavedScan {

// The key (internal path with trailing "\") under which the scan knows a typed folder, by the drives of its
// own rows, whether typed as here or as the machine that was scanned has it; empty when it has neither the
// folder nor anything in it.
[[nodiscard]] std::string findFolder(Database& database, std::string_view typedPath);

// The keys of the folders that hold all the rest: those that rows lie in and that have no row of their own.
[[nodiscard]] std::vector<std::string> topFolders(Database& database);

// The keys of the folders that were scanned, so many at most: those of topFolders that were walked
// themselves, and of the others the folders that lie in them.
[[nodiscard]] std::vector<std::string> scannedFolders(Database& database, std::size_t most);

// The paths of the folders that lie in the folder, by their rows, each ending in "\".
[[nodiscard]] std::vector<std::string> subfolders(Database& database, std::string_view key);

// True when the rows up to that one (its idx) show that the folder was walked, be it in part: files lie in
// it, or, as far as it is a drive's root, which never has a row of its own, more than one folder does.
[[nodiscard]] bool wasWalked(Database& database, std::string_view key, std::int64_t lastRow);

} // namespace modSavedScan
