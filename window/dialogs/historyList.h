#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "export/folderHistory.h"
#include "widgets/listModel.h"

// The list of what saved scans tell of a folder, with the texts of its reports.
namespace modHistoryList {

enum Column { date = 1 }; // counted from 1, as the list's headers are

[[nodiscard]] std::span<const ListColumn> columns() noexcept;

// A row's key is its place in the history.
[[nodiscard]] std::vector<ListRow> rows(const modExport::FolderHistory& history);

} // namespace modHistoryList
