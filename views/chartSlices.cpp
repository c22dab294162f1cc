#include "views/chartSlices.h"

#include <algorithm>

#include "base/numberFormat.h"

namespace {

constexpr std::size_t mostSlices = 15;
constexpr std::size_t fewestSlices = 5; // even if they are thin
constexpr double thinnestShare = 0.006; // about two degrees

} // namespace

std::vector<ChartSlice> chartSlices(std::span<const ChartEntry> entries) {
    const auto first =
        std::find_if(entries.begin(), entries.end(), [](const ChartEntry& e) { return e.size > 0; });
    double total = 0;
    for (auto entry = first; entry != entries.end(); ++entry) {
        total += entry->size;
    }
    std::vector<ChartSlice> slices;
    const auto sized = static_cast<std::size_t>(entries.end() - first);
    double used = 0;
    for (std::size_t rank = 0; rank < sized; ++rank) {
        const std::size_t index = entries.size() - 1 - rank;
        const double size = entries[index].size;
        const std::size_t left = sized - rank;
        // Grouping a single entry as the rest would only hide its name.
        const bool tooThin = rank >= fewestSlices && size < total * thinnestShare;
        if (left > 1 && (rank >= mostSlices || tooThin)) {
            const double rest = std::max(total - used, 0.0);
            slices.push_back({ChartSlice::rest, static_cast<int>(left), rest, rest / total});
            break;
        }
        slices.push_back({static_cast<int>(index), 1, size, size / total});
        used += size;
    }
    return slices;
}

std::string chartRestName(int entries) {
    return "Other (" + modFormat::formatNumber(entries, "#,##0") + ")";
}

// A rest is never the only slice.
std::size_t chartRestCount(std::span<const ChartSlice> slices) {
    const bool hasRest = !slices.empty() && slices.back().index == ChartSlice::rest;
    return hasRest ? static_cast<std::size_t>(slices[slices.size() - 2].index) : 0;
}

std::size_t chartSliceOnTop(std::span<const ChartSlice> slices) {
    const std::size_t count = slices.size();
    std::size_t best = 0;
    std::size_t leastDifference = count + 1;
    for (std::size_t top = 0; top < count; ++top) {
        std::size_t right = 0;
        double turn = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const double share = slices[(top + i) % count].share;
            right += turn + share / 2 < 0.5 ? 1 : 0;
            turn += share;
        }
        const std::size_t difference = 2 * right > count ? 2 * right - count : count - 2 * right;
        if (difference < leastDifference) {
            leastDifference = difference;
            best = top;
        }
    }
    return best;
}
