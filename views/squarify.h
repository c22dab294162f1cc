#pragma once

#include <span>
#include <vector>

struct TreemapRect {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double right() const noexcept { return left + width; }
    [[nodiscard]] double bottom() const noexcept { return top + height; }
    [[nodiscard]] double area() const noexcept { return width * height; }
    [[nodiscard]] bool contains(double x, double y) const noexcept {
        return x >= left && y >= top && x < right() && y < bottom();
    }

    friend bool operator==(const TreemapRect&, const TreemapRect&) = default;
};

// Parts the room among the sizes, which are positive, finite and largest first: in rows along the shorter
// side, as long as that brings the rectangles of a row nearer to squares (Bruls, Huizing and van Wijk, 2000).
// They cover all of the room, do not overlap, and their areas are proportional to the sizes; without a room,
// they are empty.
[[nodiscard]] std::vector<TreemapRect> squarified(std::span<const double> sizes, TreemapRect room);
