#pragma once

#include <string>
#include <vector>

#include "db/workingDatabase.h"
#include "window/dialogs/propertyRows.h"

// What the Properties box says of files and folders.
namespace modProperties {

// Of one item, what the disk and the scan tell; of several, their number and total. Items are internal paths;
// a folder's ends in "\".
[[nodiscard]] PropertyRows rows(const WorkingDatabase& database, const std::vector<std::string>& items);

} // namespace modProperties
