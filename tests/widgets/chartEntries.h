#pragma once

#include <QApplication>
#include <string>
#include <vector>

#include "views/quickSort.h"
#include "widgets/chartState.h"

// Entries for a chart: "folder 0" of one megabyte, "folder 1" of two, and so on.
inline std::vector<ChartEntry> ascending(int count) {
    std::vector<ChartEntry> entries;
    for (int i = 0; i < count; ++i) {
        entries.push_back({"folder " + std::to_string(i), (i + 1) * 1048576.0});
    }
    return entries;
}

// The state of a chart with these entries, which must outlive it, scrolled to its largest bars.
inline ChartState stateOf(const std::vector<ChartEntry>& entries, ChartStyle style = ChartStyle::bar) {
    ChartState state;
    state.entries = entries;
    state.style = style;
    state.font = QApplication::font();
    return state;
}
