#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "views/quickSort.h"

// One slice of the pie.
struct ChartSlice {
    static constexpr int rest = -1;

    int index = rest; // of the entry; `rest` for all those that have no slice of their own
    int entries = 1;  // how many entries it stands for
    double size = 0;  // bytes
    double share = 0; // of the whole pie, above 0 and at most 1
};

// The pie of the entries (ascending by size), largest slice first. Slices that would be too many or too thin
// to be told apart are one last slice, the rest. What has no size, or a negative one, has no slice; there may
// be none.
[[nodiscard]] std::vector<ChartSlice> chartSlices(std::span<const ChartEntry> entries);

// Which slice begins at the top of the pie, when they follow each other clockwise: the one that leaves the
// two sides with the same number of slices, or nearly so, since each side has the same room for labels.
[[nodiscard]] std::size_t chartSliceOnTop(std::span<const ChartSlice> slices);
