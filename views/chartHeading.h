#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "views/chartAxis.h"
#include "views/quickSort.h"

// What the line below the chart's title says of these entries: their total size, and how many of them have a
// bar or a slice of their own in view, such as "3.2 Gb · 15 of 52 shown".
[[nodiscard]] std::string chartHeadingFigures(std::span<const ChartEntry> entries, std::size_t shown,
                                              ChartValues values);
