#pragma once

#include <QPainter>

#include "views/widgets/chartFrame.h"
#include "views/widgets/chartPie.h"
#include "views/widgets/chartState.h"

// The pie style's pictures.
namespace chartPiePainter {

void paint(QPainter& painter, const ChartFrame& frame, const ChartPie& pie, const ChartState& state);

} // namespace chartPiePainter
