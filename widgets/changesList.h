#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "views/changes.h"
#include "widgets/listModel.h"

// The list of what differs between two scans. A row's key is the full path (for a folder, ending in "\"), its
// tag "FOLDER" or "FILE", or "GONEFOLDER" or "GONEFILE" if it is only in the earlier one.
namespace modChangesList {

// Counted from 1, as the list's headers are. Balance shows the change as a bar from the middle of its cell,
// to the left if less is there now, and sorts by the amount of the change.
enum Column { name = 1, before, now, change, state, balance };

[[nodiscard]] std::span<const ListColumn> columns() noexcept;

// The widest bar is that of the largest change among them.
[[nodiscard]] std::vector<ListRow> rows(std::span<const modChanges::Change> changes);

[[nodiscard]] bool isGone(std::string_view rowTag) noexcept;

} // namespace modChangesList
