#pragma once

#include <span>
#include <vector>

// Labels below each other in one column.
namespace modChartSpread {

// The places of their upper ends, from top to bottom: each as near to the wanted place as the other labels
// and the ends of the column allow. All labels have the same height, and the column is tall enough for them.
[[nodiscard]] std::vector<double> spread(std::span<const double> wanted, double height, double top,
                                         double bottom);

} // namespace modChartSpread
