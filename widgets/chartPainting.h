#pragma once

#include <QPainter>
#include <QRectF>

#include "widgets/chartLayout.h"
#include "widgets/chartState.h"

// Paints the chart on any device, at any size. Stateless.
namespace chartPainting {

// The whole chart within the rectangle.
void paint(QPainter& painter, const QRectF& rectangle, const ChartState& state);

// The same in two steps. First the part that can be cached: the walls, which do not change while the frame
// stays the same, or the pie, which does not change while the layout stays the same...
void paintBackground(QPainter& painter, const ChartLayout& layout);
// ...then everything else, on top.
void paintContent(QPainter& painter, const ChartLayout& layout, const ChartState& state);

} // namespace chartPainting
