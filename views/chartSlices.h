#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "views/quickSort.h"

// One slice of the pie.
struct ChartSlice {
    static constexpr int rest = -2; // neither an index nor the -1 of no entry

    int index = rest; // the entry's index; `rest` for the slice of all entries without their own
    int entries = 1;  // the number of entries in this slice
    double size = 0;  // bytes
    double share = 0; // of the whole pie; above 0, at most 1
};

// The slices for the entries (ascending by size), largest first. If there are too many slices, or they are
// too thin to tell apart, the last slice, the rest, combines them. Entries whose size is zero or negative
// have no slice; there may be no slices at all.
[[nodiscard]] std::vector<ChartSlice> chartSlices(std::span<const ChartEntry> entries);

// The name of a rest with this many entries: "Other (52)".
[[nodiscard]] std::string chartRestName(int entries);

// The number of entries in and below the rest, which are the first of the entries; 0 if there is no rest.
[[nodiscard]] std::size_t chartRestCount(std::span<const ChartSlice> slices);

// The slice to draw first from the top of the pie, if the slices follow each other clockwise. It is chosen so
// that both sides have about the same number of slices, because each side has the same room for labels.
[[nodiscard]] std::size_t chartSliceOnTop(std::span<const ChartSlice> slices);
