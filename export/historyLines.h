#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "export/readHistories.h"
#include "views/timeChart.h"

// Histories as people see them in a chart.
namespace modExport {

// The folder is 0, the first subfolder 1.
[[nodiscard]] const FolderHistory& historyOf(const FolderHistories& histories, std::size_t number);

// Its folder without the separator at the end, which only a root keeps.
[[nodiscard]] std::string_view shownFolderOf(const FolderHistory& history);

// A line for each folder (its group is the folder's number), if there are several machines for each of them
// (its pattern is the machine's number). A point's row is its place in the history. Where the folder was not,
// its size is 0.
[[nodiscard]] std::vector<modTimeChart::Line> historyLines(const FolderHistories& histories);

// The machines, the one of the oldest scan first.
[[nodiscard]] std::vector<std::string> hostsOf(const FolderHistories& histories);

// What is told about a point, in lines: "/home/me", "01/31/2026 06:00:00 PM", "2.0 Kb (2,048 bytes)", "12
// files, 3 folders", "+1.0 Kb since the scan before", "cancelled", "Machine: vm".
[[nodiscard]] std::string pointText(const FolderHistory& history, std::size_t row, bool namesHost);

// What is to be known about the whole, in sentences: how many scans there are, why there are none, what could
// not be read, that there are several machines. `files`: how many there were to read.
[[nodiscard]] std::string historyRemark(const FolderHistories& histories, std::size_t files);

} // namespace modExport
