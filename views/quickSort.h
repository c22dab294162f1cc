#pragma once

#include <cstddef>
#include <span>
#include <string>

// One bar of the folder chart.
struct ChartEntry {
    std::string label;
    double size = 0;         // bytes
    bool unfinished = false; // a subfolder of which a running scan has recorded only this much
};

namespace modQuickSort {

// Sorts entries[low..high], inclusive, ascending by size; entries of equal size may change their order. Does
// nothing if high is not above low. Bounds outside the entries are logged and change nothing.
void quickSortUDT(std::span<ChartEntry> entries, std::ptrdiff_t low, std::ptrdiff_t high);

} // namespace modQuickSort
