#pragma once

#include <variant>

#include "views/widgets/chartBars.h"
#include "views/widgets/chartFrame.h"
#include "views/widgets/chartPie.h"

// Where everything of the chart lies, in either style. Highlights do not matter to it.
class ChartLayout {
public:
    ChartLayout(const ChartFrame& frame, const ChartState& state);

    [[nodiscard]] const ChartFrame& frame() const { return frame_; }
    // Null in the other style, or when there is no room for bars or slices.
    [[nodiscard]] const ChartBars* bars() const { return std::get_if<ChartBars>(&content_); }
    [[nodiscard]] const ChartPie* pie() const { return std::get_if<ChartPie>(&content_); }
    // Nothing to show: no bars, or no slices since nothing has a size.
    [[nodiscard]] bool isEmpty() const;

    [[nodiscard]] ChartHit hit(QPointF point) const;
    // Where the tip of an entry belongs; null when it is not in view.
    [[nodiscard]] QRectF markOf(int index) const;

private:
    ChartFrame frame_;
    std::variant<std::monostate, ChartBars, ChartPie> content_;
};
