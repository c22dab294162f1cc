#pragma once

#include <QPainter>

#include "views/widgets/chartFrame.h"
#include "views/widgets/chartPie.h"
#include "views/widgets/chartState.h"

// The pie style's pictures.
namespace chartPiePainter {

// The pie without highlights: it takes a while on a large screen, and may be kept.
void paintPie(QPainter& painter, const ChartFrame& frame, const ChartPie& pie);
// The highlighted slices, over it.
void paintHighlights(QPainter& painter, const ChartFrame& frame, const ChartPie& pie,
                     const ChartState& state);

} // namespace chartPiePainter
