#pragma once

#include <QPainter>

#include "views/widgets/chartBars.h"
#include "views/widgets/chartFrame.h"
#include "views/widgets/chartState.h"

// The bar style's pictures, in the order in which they cover each other.
namespace chartBarPainter {

void paintWalls(QPainter& painter, const ChartFrame& frame);
void paintAxis(QPainter& painter, const ChartFrame& frame, const ChartBars& bars);
void paintBars(QPainter& painter, const ChartFrame& frame, const ChartBars& bars, const ChartState& state);

} // namespace chartBarPainter
