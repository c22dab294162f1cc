#pragma once

#include <cstddef>
#include <variant>

#include "widgets/chartBars.h"
#include "widgets/chartFrame.h"
#include "widgets/chartHeading.h"
#include "widgets/chartPie.h"

// The places of everything in the chart, in either style, regardless of highlights.
class ChartLayout {
public:
    ChartLayout(const ChartFrame& frame, const ChartState& state);

    [[nodiscard]] const ChartFrame& frame() const { return frame_; }
    [[nodiscard]] const ChartColours& colours() const { return colours_; }
    // Null in the other style, or if there is no room for bars or slices.
    [[nodiscard]] const ChartBars* bars() const { return std::get_if<ChartBars>(&content_); }
    [[nodiscard]] const ChartPie* pie() const { return std::get_if<ChartPie>(&content_); }
    [[nodiscard]] const ChartHeading& heading() const { return heading_; }
    // True if there is nothing to show: no bars, or no slices because nothing has a size.
    [[nodiscard]] bool isEmpty() const;

    // The same, with only the bars whose middles are from `top` to above `bottom`.
    [[nodiscard]] ChartLayout withBarsBetween(double top, double bottom) const;

    [[nodiscard]] ChartHit hit(QPointF point) const;
    // The place for the tip of an entry; null if the entry is not in view.
    [[nodiscard]] QRectF markOf(int index) const;

private:
    using Content = std::variant<std::monostate, ChartBars, ChartPie>;

    [[nodiscard]] static Content contentOf(const ChartFrame& frame, const ChartState& state);
    [[nodiscard]] std::size_t shown() const;

    ChartFrame frame_;
    ChartColours colours_;
    Content content_;
    ChartHeading heading_;
};
