#include "views/timeChart.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "views/timeAxis.h"

namespace modTimeChart {

namespace {

// The years 1 to 9999. Dates of saved scans are other people's.
constexpr platform::Seconds firstSecond = -62'135'596'800;
constexpr platform::Seconds lastSecond = 253'402'300'799;
constexpr platform::Seconds halfDay = 43'200;
constexpr int roomShare = 50; // of the time, at either end

} // namespace

TimeChart::TimeChart(std::vector<Line> lines) : lines_(std::move(lines)) {
    for (Line& line : lines_) {
        for (Point& point : line.points) {
            point.moment = std::clamp(point.moment, firstSecond, lastSecond);
        }
    }
    span();
}

void TimeChart::setShown(std::size_t line, bool isShown) {
    lines_.at(line).isShown = isShown;
    span();
}

void TimeChart::span() {
    const bool any = std::any_of(lines_.begin(), lines_.end(),
                                 [](const Line& line) { return line.isShown && !line.points.empty(); });
    platform::Seconds first = lastSecond;
    platform::Seconds last = firstSecond;
    largest_ = 0;
    for (const Line& line : lines_) {
        for (const Point& point : line.points) {
            if (line.isShown || !any) {
                first = std::min(first, point.moment);
                last = std::max(last, point.moment);
                largest_ = std::max(largest_, point.size);
            }
        }
    }
    const platform::Seconds room =
        last > first ? std::max<platform::Seconds>((last - first) / roomShare, 1) : halfDay;
    from_ = first > last ? 0 : first - room;
    to_ = first > last ? halfDay : last + room;
    largest_ = largest_ > 0 ? largest_ : 1;
    greatest_ = largest_;
}

void TimeChart::fit(int mostLabels) {
    greatest_ = sizeLabels(largest_, mostLabels).back().size;
}

double TimeChart::x(platform::Seconds moment) const noexcept {
    return static_cast<double>(moment - from_) / static_cast<double>(to_ - from_);
}

double TimeChart::y(double size) const noexcept {
    return std::max(size, 0.0) / greatest_;
}

const Point& TimeChart::at(const Place& place) const {
    return lines_.at(place.line).points.at(place.point);
}

Position TimeChart::position(const Place& place) const {
    const Point& point = at(place);
    return {x(point.moment), y(point.size)};
}

bool TimeChart::isShown(const Place& place) const noexcept {
    return place.line < lines_.size() && lines_[place.line].isShown &&
           place.point < lines_[place.line].points.size();
}

std::optional<Place> TimeChart::nearest(Position position, double width, double height, double reach) const {
    std::optional<Place> result;
    double least = reach;
    for (std::size_t number = count(); number-- > 0;) { // of two at one place, that of the first line
        const Place place = placeOf(number);
        const Position there = this->position(place);
        const double distance = std::hypot((there.x - position.x) * width, (there.y - position.y) * height);
        if (distance <= least) {
            least = distance;
            result = place;
        }
    }
    return result;
}

std::size_t TimeChart::nearestInTime(std::size_t line, platform::Seconds moment) const {
    const std::vector<Point>& points = lines_[line].points;
    const auto nearest =
        std::min_element(points.begin(), points.end(), [&](const Point& left, const Point& right) {
            return std::abs(left.moment - moment) < std::abs(right.moment - moment);
        });
    return static_cast<std::size_t>(nearest - points.begin());
}

// Among lines of one size, the first is the largest, so that each is come by.
Place TimeChart::across(const Place& from, bool larger) const {
    const auto rank = [&](const Place& place) {
        return std::pair(at(place).size, -static_cast<double>(place.line));
    };
    Place result = from;
    for (std::size_t line = 0; line < lines_.size(); ++line) {
        if (line == from.line || !lines_[line].isShown || lines_[line].points.empty()) {
            continue;
        }
        const Place other{line, nearestInTime(line, at(from).moment)};
        const bool isBeyond = larger ? rank(other) > rank(from) : rank(other) < rank(from);
        const bool isNearer =
            result == from || (larger ? rank(other) < rank(result) : rank(other) > rank(result));
        if (isBeyond && isNearer) {
            result = other;
        }
    }
    return result;
}

std::optional<Place> TimeChart::moved(std::optional<Place> from, Direction direction) const {
    if (!from || !isShown(*from)) {
        for (std::size_t line = 0; line < lines_.size(); ++line) {
            if (lines_[line].isShown && !lines_[line].points.empty()) {
                return Place{line, lines_[line].points.size() - 1};
            }
        }
        return {};
    }
    const std::size_t last = lines_[from->line].points.size() - 1;
    switch (direction) {
    case Direction::earlier:
        return Place{from->line, from->point - (from->point > 0 ? 1 : 0)};
    case Direction::later:
        return Place{from->line, std::min(from->point + 1, last)};
    case Direction::first:
        return Place{from->line, 0};
    case Direction::last:
        return Place{from->line, last};
    default:
        return across(*from, direction == Direction::larger);
    }
}

std::size_t TimeChart::count() const noexcept {
    std::size_t result = 0;
    for (const Line& line : lines_) {
        result += line.isShown ? line.points.size() : 0;
    }
    return result;
}

Place TimeChart::placeOf(std::size_t number) const {
    for (std::size_t line = 0; line < lines_.size(); ++line) {
        const std::size_t points = lines_[line].isShown ? lines_[line].points.size() : 0;
        if (number < points) {
            return {line, number};
        }
        number -= points;
    }
    return {lines_.size(), 0};
}

std::size_t TimeChart::numberOf(const Place& place) const {
    std::size_t result = place.point;
    for (std::size_t line = 0; line < std::min(place.line, lines_.size()); ++line) {
        result += lines_[line].isShown ? lines_[line].points.size() : 0;
    }
    return result;
}

} // namespace modTimeChart
