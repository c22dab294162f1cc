#include "widgets/treemapColours.h"

#include <algorithm>

#include "widgets/chartLook.h"
#include "widgets/qtText.h"

namespace {

// Of the chart's slices, those that stay apart when they are shaded.
constexpr std::array<QRgb, 12> palette{chartLook::slices[0], chartLook::slices[1],  chartLook::slices[2],
                                       chartLook::slices[3], chartLook::slices[5],  chartLook::slices[4],
                                       chartLook::slices[7], chartLook::slices[6],  chartLook::slices[10],
                                       chartLook::slices[8], chartLook::slices[13], chartLook::slices[12]};

} // namespace

std::vector<TreemapColours::Entry> TreemapColours::assign(const TreemapTree& tree) {
    const std::vector<std::uint32_t> largest = tree.largestTypes(palette.size());
    std::map<std::string, std::size_t> places;
    std::array<bool, palette.size()> taken{};
    for (const std::uint32_t type : largest) {
        const std::string& extension = tree.types()[type].extension;
        if (const auto known = places_.find(extension); known != places_.end()) {
            places.insert(*known);
            taken.at(known->second) = true;
        }
    }
    std::vector<Entry> result;
    for (const std::uint32_t type : largest) {
        const std::string& extension = tree.types()[type].extension;
        if (!places.contains(extension)) {
            const auto* const unused = std::find(taken.begin(), taken.end(), false);
            places[extension] = static_cast<std::size_t>(unused - taken.begin());
            taken.at(places[extension]) = true;
        }
        result.push_back({type, modQt::shownName(extension).toLower(), palette.at(places[extension])});
    }
    places_ = std::move(places);
    return result;
}
