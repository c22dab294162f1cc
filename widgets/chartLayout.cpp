#include "widgets/chartLayout.h"

ChartLayout::ChartLayout(const ChartFrame& frame, const ChartState& state) : frame_(frame) {
    if (frame.hasRoom && state.style == ChartStyle::bar) {
        content_.emplace<ChartBars>(frame, state);
    } else if (frame.hasRoom) {
        content_.emplace<ChartPie>(frame, state);
    }
}

bool ChartLayout::isEmpty() const {
    return bars() ? bars()->bars.empty() : pie() ? pie()->slices.empty() : false;
}

ChartHit ChartLayout::hit(QPointF point) const {
    return bars() ? bars()->hit(point) : pie() ? pie()->hit(point) : ChartHit();
}

QRectF ChartLayout::markOf(int index) const {
    return bars() ? bars()->markOf(index) : pie() ? pie()->markOf(index) : QRectF();
}
