#include "views/chartHeading.h"

#include <numeric>

#include "base/formatSize.h"
#include "base/numberFormat.h"

std::string chartHeadingFigures(std::span<const ChartEntry> entries, std::size_t shown, ChartValues values) {
    const auto counted = [](std::size_t count) {
        return modFormat::formatNumber(static_cast<double>(count), "#,##0");
    };
    const double total =
        std::accumulate(entries.begin(), entries.end(), 0.0,
                        [](double sum, const ChartEntry& entry) { return sum + entry.size; });
    return (values == ChartValues::sizes ? modLvw::formatSize(total) : modLvw::formatChange(total)) +
           " \u00b7 " + counted(shown) + " of " + counted(entries.size()) + " shown";
}
