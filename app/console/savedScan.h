#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"

// Finding one's way in a scan that was made earlier, perhaps on another machine.
namespace modSavedScan {

// The key (internal path with trailing "\") under which the scan knows a typed folder, by the drives of its
// own rows; empty when it has neither the folder nor anything in it.
[[nodiscard]] std::string findFolder(Database& database, std::string_view typedPath);

// The keys of the folders that hold all the rest: those that rows lie in and that have no row of their own.
[[nodiscard]] std::vector<std::string> topFolders(Database& database);

} // namespace modSavedScan
