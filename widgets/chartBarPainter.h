#pragma once

#include <QPainter>

#include "widgets/chartBars.h"
#include "widgets/chartFrame.h"
#include "widgets/chartState.h"

// The pictures of the bar style, in the order in which they cover each other.
namespace chartBarPainter {

void paintWalls(QPainter& painter, const ChartFrame& frame, const ChartColours& colours);
void paintAxis(QPainter& painter, const ChartFrame& frame, const ChartBars& bars,
               const ChartColours& colours);
void paintBars(QPainter& painter, const ChartFrame& frame, const ChartBars& bars, const ChartState& state);

} // namespace chartBarPainter
