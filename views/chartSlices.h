#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "views/quickSort.h"

// One slice of the pie.
struct ChartSlice {
    static constexpr int rest = -1;

    int index = rest; // the entry's index; `rest` for the slice of all entries without their own
    int entries = 1;  // the number of entries in this slice
    double size = 0;  // bytes
    double share = 0; // of the whole pie; above 0, at most 1
};

// The slices for the entries (ascending by size), largest first. If there are too many slices, or they are
// too thin to tell apart, the last slice, the rest, combines them. Entries whose size is zero or negative
// have no slice; there may be no slices at all.
[[nodiscard]] std::vector<ChartSlice> chartSlices(std::span<const ChartEntry> entries);

// The slice to draw first from the top of the pie, if the slices follow each other clockwise. It is chosen so
// that both sides have about the same number of slices, because each side has the same room for labels.
[[nodiscard]] std::size_t chartSliceOnTop(std::span<const ChartSlice> slices);
