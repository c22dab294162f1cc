#include "widgets/chartLayout.h"

#include <algorithm>

ChartLayout::ChartLayout(const ChartFrame& frame, const ChartState& state)
    : frame_(frame), colours_(state.colours), content_(contentOf(frame, state)),
      heading_(frame, state, shown()) {}

ChartLayout::Content ChartLayout::contentOf(const ChartFrame& frame, const ChartState& state) {
    if (!frame.hasRoom) {
        return {};
    }
    return state.style == ChartStyle::bar ? Content(ChartBars(frame, state)) : ChartPie(frame, state);
}

// The number of entries with a bar or slice of their own.
std::size_t ChartLayout::shown() const {
    if (bars()) {
        return bars()->bars.size();
    }
    return pie() ? static_cast<std::size_t>(
                       std::count_if(pie()->slices.begin(), pie()->slices.end(),
                                     [](const ChartPieSlice& slice) { return slice.index >= 0; }))
                 : 0;
}

bool ChartLayout::isEmpty() const {
    return bars() ? bars()->bars.empty() : pie() ? pie()->slices.empty() : false;
}

ChartLayout ChartLayout::withBarsBetween(double top, double bottom) const {
    ChartLayout result(*this);
    if (auto* const all = std::get_if<ChartBars>(&result.content_)) {
        std::erase_if(all->bars, [&](const ChartBar& bar) {
            const double middle = bar.front.center().y();
            return middle < top || middle >= bottom;
        });
    }
    return result;
}

ChartHit ChartLayout::hit(QPointF point) const {
    return bars() ? bars()->hit(point) : pie() ? pie()->hit(point) : ChartHit();
}

QRectF ChartLayout::markOf(int index) const {
    return bars() ? bars()->markOf(index) : pie() ? pie()->markOf(index) : QRectF();
}
