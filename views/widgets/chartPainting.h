#pragma once

#include <QPainter>
#include <QRectF>

#include "views/widgets/chartLayout.h"
#include "views/widgets/chartState.h"

// Paints the chart on any device, at any size. Stateless.
namespace chartPainting {

// The whole chart within the rectangle.
void paint(QPainter& painter, const QRectF& rectangle, const ChartState& state);

// The same in two steps: first what may be kept for a while, namely walls, which stay the same as long as the
// frame does, or the pie, which stays the same as long as the layout does...
void paintBackground(QPainter& painter, const ChartLayout& layout);
// ...then the rest, over it.
void paintContent(QPainter& painter, const ChartLayout& layout, const ChartState& state);

} // namespace chartPainting
