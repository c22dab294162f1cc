#pragma once

#include <span>
#include <vector>

// Labels that stand below each other in one column.
namespace modChartSpread {

// Where their upper ends come to lie, from top to bottom: each as near to the place it wants as the others
// and the column's ends let it. All have the same height, and the column has room for them.
[[nodiscard]] std::vector<double> spread(std::span<const double> wanted, double height, double top,
                                         double bottom);

} // namespace modChartSpread
