#pragma once

#include <span>
#include <string>
#include <vector>

#include "views/findQuery.h"
#include "widgets/listModel.h"

// The list of files and folders that were found. A row's key is the full path (for a folder, ending in "\"),
// its tag "FOLDER" or "FILE", or as in modChangesList if it is gone.
namespace modFoundList {

// Counted from 1, as the list's headers are.
enum Column { name = 1, folder, size, owner, modified, accessed };

[[nodiscard]] std::span<const ListColumn> columns() noexcept;

[[nodiscard]] std::vector<ListRow> rows(std::span<const modFind::Item> items);

} // namespace modFoundList
