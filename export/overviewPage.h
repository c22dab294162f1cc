#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/excludes.h"
#include "db/dao.h"
#include "scan/figureGaps.h"

class clsUserInterface;

// One HTML 5 page about folders, for people: the largest folders with three levels below folded, file types,
// owners, large and old files, empty folders. It takes nothing from outside, works without scripts, and
// allows itself by its content security policy no more than its own style and script.
namespace modExport {

inline constexpr std::size_t largestOverview = 1U << 20; // in bytes, whatever the scan holds
inline constexpr std::size_t mostOverviewFolders = 12;

// Nothing is owned.
struct OverviewContext {
    Database& database;
    clsUserInterface& userInterface;
    const FigureGaps& gaps;
    const Excludes& excludes;         // of the scans
    std::vector<std::string> folders; // keys; the page is about the first ones (mostOverviewFolders)
};

// The page's text; for tests.
[[nodiscard]] std::string overviewPage(const OverviewContext& context);

// Writes the page and opens it. True if it was written; any problem has been shown or logged, and an existing
// file is then unchanged.
bool exportOverview(const OverviewContext& context, std::string_view fileName);

} // namespace modExport
