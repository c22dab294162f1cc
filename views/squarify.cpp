#include "views/squarify.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace {

// The longest form in a row along a side, as its longer side by its shorter one.
double worstForm(double largest, double smallest, double sum, double side) {
    const double side2 = side * side;
    const double sum2 = sum * sum;
    return std::max(side2 * largest / sum2, sum2 / (side2 * smallest));
}

// Places a row along the shorter side of the room, and takes it away from there. Its last rectangle ends
// where the room does, whatever was rounded.
void placeRow(std::span<const double> areas, double sum, bool isLast, TreemapRect& room,
              std::vector<TreemapRect>& result) {
    const bool upright = room.width >= room.height; // the row stands at the left, else it lies at the top
    const double side = upright ? room.height : room.width;
    const double across = upright ? room.width : room.height;
    const double thickness = isLast || side <= 0 ? across : std::min(sum / side, across);
    double before = 0;
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const double from = side * (before / sum);
        before += areas[i];
        const double to = i + 1 == areas.size() ? side : std::min(side * (before / sum), side);
        result.push_back(upright ? TreemapRect{room.left, room.top + from, thickness, to - from}
                                 : TreemapRect{room.left + from, room.top, to - from, thickness});
    }
    if (upright) {
        room.left += thickness;
        room.width -= thickness;
    } else {
        room.top += thickness;
        room.height -= thickness;
    }
}

} // namespace

std::vector<TreemapRect> squarified(std::span<const double> sizes, TreemapRect room) {
    const double total = std::accumulate(sizes.begin(), sizes.end(), 0.0);
    if (!(room.area() > 0 && total > 0)) {
        return std::vector<TreemapRect>(sizes.size(), {room.left, room.top, 0, 0});
    }
    std::vector<double> areas(sizes.begin(), sizes.end());
    for (double& area : areas) {
        area = area / total * room.area();
    }
    std::vector<TreemapRect> result;
    result.reserve(areas.size());
    for (std::size_t start = 0; start < areas.size();) {
        const double side = std::min(room.width, room.height);
        double sum = areas[start];
        std::size_t end = start + 1;
        while (end < areas.size() && worstForm(areas[start], areas[end], sum + areas[end], side) <=
                                         worstForm(areas[start], areas[end - 1], sum, side)) {
            sum += areas[end];
            ++end;
        }
        placeRow(std::span(areas).subspan(start, end - start), sum, end == areas.size(), room, result);
        start = end;
    }
    return result;
}
