#pragma once

#include <QPainter>

#include "widgets/chartFrame.h"
#include "widgets/chartPie.h"
#include "widgets/chartState.h"

// The pictures of the pie style.
namespace chartPiePainter {

// The pie without highlights. It takes a while on a large screen and can be cached.
void paintPie(QPainter& painter, const ChartFrame& frame, const ChartPie& pie, const ChartColours& colours);
// The highlighted slices, on top of the pie.
void paintHighlights(QPainter& painter, const ChartFrame& frame, const ChartPie& pie,
                     const ChartState& state);

} // namespace chartPiePainter
