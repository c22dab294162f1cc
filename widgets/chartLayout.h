#pragma once

#include <variant>

#include "widgets/chartBars.h"
#include "widgets/chartFrame.h"
#include "widgets/chartPie.h"

// The places of everything in the chart, in either style, regardless of highlights.
class ChartLayout {
public:
    ChartLayout(const ChartFrame& frame, const ChartState& state);

    [[nodiscard]] const ChartFrame& frame() const { return frame_; }
    // Null in the other style, or if there is no room for bars or slices.
    [[nodiscard]] const ChartBars* bars() const { return std::get_if<ChartBars>(&content_); }
    [[nodiscard]] const ChartPie* pie() const { return std::get_if<ChartPie>(&content_); }
    // True if there is nothing to show: no bars, or no slices because nothing has a size.
    [[nodiscard]] bool isEmpty() const;

    [[nodiscard]] ChartHit hit(QPointF point) const;
    // The place for the tip of an entry; null if the entry is not in view.
    [[nodiscard]] QRectF markOf(int index) const;

private:
    ChartFrame frame_;
    std::variant<std::monostate, ChartBars, ChartPie> content_;
};
