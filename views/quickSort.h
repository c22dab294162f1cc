#pragma once

#include <cstddef>
#include <span>
#include <string>

// One bar of the folder chart.
struct ChartEntry {
    std::string label;
    double size = 0; // bytes
};

namespace modQuickSort {

// Sorts entries[low..high], both included, ascending by size; equal sizes keep no particular order. Nothing
// to do when high is not above low. Bounds outside the entries are logged and leave them as they are.
void quickSortUDT(std::span<ChartEntry> entries, std::ptrdiff_t low, std::ptrdiff_t high);

} // namespace modQuickSort
