#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"

// A chart of sizes over time, without its picture: the lines, where their points are, and the labels of the
// axes.
namespace modTimeChart {

struct Point {
    platform::Seconds moment = 0;
    double size = 0; // bytes
    bool isThere = true;
    bool isComplete = true;
    std::size_t row = 0; // of what the point was made from
};

struct Line {
    std::string name;          // as it is shown
    std::size_t group = 0;     // lines of one group have one colour
    std::size_t pattern = 0;   // and are told apart by this
    std::vector<Point> points; // by time
    bool isShown = true;
};

// One point of a line.
struct Place {
    std::size_t line = 0;
    std::size_t point = 0;
    bool operator==(const Place&) const = default;
};

// Shares of the width from the left and of the height from the bottom.
struct Position {
    double x = 0;
    double y = 0;
};

enum class Direction { earlier, later, larger, smaller, first, last };

class TimeChart {
public:
    TimeChart() = default;
    explicit TimeChart(std::vector<Line> lines);

    [[nodiscard]] const std::vector<Line>& lines() const noexcept { return lines_; }
    void setShown(std::size_t line, bool isShown);

    // What the axes span, with some room at the ends: what is shown, or all if nothing is. Sizes begin at 0.
    [[nodiscard]] platform::Seconds from() const noexcept { return from_; }
    [[nodiscard]] platform::Seconds to() const noexcept { return to_; }
    [[nodiscard]] double greatest() const noexcept { return greatest_; }
    // Makes the axis of sizes end at the last of at most so many labels (sizeLabels).
    void fit(int mostLabels);

    [[nodiscard]] double x(platform::Seconds moment) const noexcept;
    [[nodiscard]] double y(double size) const noexcept;
    [[nodiscard]] Position position(const Place& place) const;
    [[nodiscard]] const Point& at(const Place& place) const;
    [[nodiscard]] bool isShown(const Place& place) const noexcept;

    // Of the points shown, the nearest to a position in a chart of that many pixels, and no further away than
    // `reach`.
    [[nodiscard]] std::optional<Place> nearest(Position position, double width, double height,
                                               double reach) const;

    // The point that an arrow key leads to; from none, the last one of the first line. The same if there is
    // no further one. Across lines it is the point that is nearest in time.
    [[nodiscard]] std::optional<Place> moved(std::optional<Place> from, Direction direction) const;

    // The points shown, line by line, by number.
    [[nodiscard]] std::size_t count() const noexcept;
    [[nodiscard]] Place placeOf(std::size_t number) const;
    [[nodiscard]] std::size_t numberOf(const Place& place) const;

private:
    void span();
    [[nodiscard]] Place across(const Place& from, bool larger) const;
    [[nodiscard]] std::size_t nearestInTime(std::size_t line, platform::Seconds moment) const;

    std::vector<Line> lines_;
    platform::Seconds from_ = 0;
    platform::Seconds to_ = 1;
    double largest_ = 1;  // size
    double greatest_ = 1; // on the axis
};

} // namespace modTimeChart
