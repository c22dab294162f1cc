#pragma once

#include <QPainter>
#include <optional>

#include "views/timeChart.h"
#include "widgets/chartColours.h"

// Paints a chart of sizes over time.
namespace modHistoryPainter {

struct Scene {
    const modTimeChart::TimeChart& chart;
    const ChartColours& colours;
    QFontMetricsF metrics;
    QRectF area; // with the axes' labels
    std::optional<modTimeChart::Place> selected;
    std::optional<modTimeChart::Place> hovered;
    bool hasFocus = false;
};

// Where the lines are.
[[nodiscard]] QRectF plotOf(const QRectF& area, const QFontMetricsF& metrics);
// How many labels the axis of sizes has room for.
[[nodiscard]] int mostSizes(const QRectF& plot, const QFontMetricsF& metrics);
// The middle of a point.
[[nodiscard]] QPointF pointIn(const QRectF& plot, const modTimeChart::TimeChart& chart,
                              const modTimeChart::Place& place);

void paint(QPainter& painter, const Scene& scene);

// A short piece of a line, with a point.
void paintSample(QPainter& painter, const QRectF& area, const modTimeChart::Line& line,
                 const ChartColours& colours);

} // namespace modHistoryPainter
