#pragma once

#include <string>
#include <vector>

#include "views/quickSort.h"

// Entries for a chart: "folder 0" of one megabyte, "folder 1" of two, and so on.
inline std::vector<ChartEntry> ascending(int count) {
    std::vector<ChartEntry> entries;
    for (int i = 0; i < count; ++i) {
        entries.push_back({"folder " + std::to_string(i), (i + 1) * 1048576.0});
    }
    return entries;
}
