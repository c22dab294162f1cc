#pragma once

#include <QPainter>
#include <QRectF>

#include "views/widgets/chartFrame.h"
#include "views/widgets/chartLayout.h"
#include "views/widgets/chartState.h"

// Paints the chart on any device, at any size. Stateless.
namespace chartPainting {

// The whole chart within the rectangle.
void paint(QPainter& painter, const QRectF& rectangle, const ChartState& state);

// The same in two steps: first what stays the same while only entries, position and highlights change...
void paintBackground(QPainter& painter, const ChartFrame& frame, ChartStyle style);
// ...then the rest, over it.
void paintContent(QPainter& painter, const ChartLayout& layout, const ChartState& state);

} // namespace chartPainting
