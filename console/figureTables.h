#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "export/folderHistory.h"
#include "scan/figureGaps.h"
#include "views/findQuery.h"
#include "views/folderFigures.h"
#include "views/quickSort.h"

// The views of a folder as text tables with at most `top` rows (0 for all); a last line counts the rows left
// out. Names are made safe for a terminal (terminalText.h).

// One bar per entry, largest first, within `width` columns.
[[nodiscard]] std::string barChart(const std::vector<ChartEntry>& entries, std::size_t top,
                                   std::size_t width);

// Largest first.
[[nodiscard]] std::string groupTable(const std::string& nameHeader, std::vector<modFigures::FileGroup> groups,
                                     std::size_t top);

// What was found, in its order. Names and folders are not cut.
[[nodiscard]] std::string foundTable(const modFind::FindQuery& found);

// A line for each saved scan, with a bar for the folder's size, within `width` columns if they suffice.
[[nodiscard]] std::string historyTable(const modExport::FolderHistory& history, std::size_t width);

// The folders that were skipped in a scan of the folder, and the files in it that could not be read, with the
// reasons, each on a line.
[[nodiscard]] std::string gapTable(const FigureGaps& gaps, std::string_view folder);
