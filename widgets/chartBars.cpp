#include "widgets/chartBars.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "views/chartPaging.h"
#include "widgets/chartLabel.h"
#include "widgets/chartLook.h"

namespace {

double megabytesOf(double bytes) {
    return bytes / 1024 / 1024;
}

// The finest axis whose labels keep their distance.
ChartAxis roomyAxis(double least, double greatest, double pixelsPerMegabyte, const QFontMetricsF& metrics,
                    double distance) {
    constexpr int mostSteps = 10;
    ChartAxis axis;
    for (int steps = mostSteps; steps > 0; --steps) {
        axis = chartAxis(least, greatest, steps);
        double widest = 0;
        for (int i = axis.first; i <= axis.last; ++i) {
            widest = std::max(
                widest, metrics.horizontalAdvance(QString::fromStdString(chartAxisText(axis.value(i)))));
        }
        if (widest + distance <= axis.step * pixelsPerMegabyte) {
            break;
        }
    }
    return axis;
}

} // namespace

ChartBars::ChartBars(const ChartFrame& frame, const ChartState& state) : values_(state.values) {
    const auto count = static_cast<int>(state.entries.size());
    const ChartPaging paging(count, frame.barRoom());
    const int last = state.entire ? count : count - paging.clamped(state.position);
    const int first = state.entire ? 0 : last - paging.visible();
    const int entriesPerBar = std::max(static_cast<int>(std::ceil((last - first) / frame.plot.height())), 1);
    for (int index = last - 1; index >= first; index -= entriesPerBar) {
        ChartBar bar;
        bar.index = index;
        bar.megabytes = megabytesOf(state.entries[static_cast<std::size_t>(index)].size);
        bars.push_back(bar);
    }
    std::reverse(bars.begin(), bars.end());
    if (!bars.empty()) {
        slot_ = frame.plot.height() / static_cast<double>(bars.size());
        setRange(frame, writeTexts(frame, state));
        place(frame);
    }
}

// Writes labels and marks for as many bars as there is room for, beginning with the largest; returns the
// width of the widest mark.
double ChartBars::writeTexts(const ChartFrame& frame, const ChartState& state) {
    constexpr double slack = 1e-9;
    const auto barsPerText = static_cast<std::size_t>(std::ceil(frame.leastSlot() / slot_ - slack));
    const QFontMetricsF labelMetrics(frame.labelFont);
    const QFontMetricsF markMetrics(frame.markFont);
    const double padding = 2 * std::round(frame.length(chartLook::markPadding));
    double widest = 0;
    for (std::size_t rank = 0; rank < bars.size(); rank += barsPerText) {
        ChartBar& bar = bars[bars.size() - 1 - rank];
        const ChartEntry& entry = state.entries[static_cast<std::size_t>(bar.index)];
        bar.label = labelMetrics.elidedText(chartLabel(entry), Qt::ElideMiddle, frame.labelWidth);
        bar.value = QString::fromStdString(chartValueText(bar.megabytes, values_));
        bar.mark.setSize({std::ceil(markMetrics.horizontalAdvance(bar.value)) + padding, frame.markHeight});
        widest = std::max(widest, bar.mark.width());
    }
    return widest;
}

// Leaves room for the marks beyond the longest bars, at both ends of the range because sizes may be negative.
void ChartBars::setRange(const ChartFrame& frame, double markWidth) {
    const bool isBalance = values_ == ChartValues::changes;
    const double amount = std::abs(bars.back().megabytes);
    const double least = isBalance ? -amount : std::min(bars.front().megabytes, 0.0);
    const double greatest = isBalance ? amount : std::max(bars.back().megabytes, 0.0);
    const double sides = least < 0 ? 2 : 1;
    const double markRoom =
        std::min(markWidth + frame.length(chartLook::calloutLength + chartLook::gap) + frame.depth.x() / 2,
                 frame.plot.width() * chartLook::mostMarkShare / sides);
    const double leftRoom = least < 0 ? markRoom : 0;
    if (greatest > least) {
        pixelsPerMegabyte = (frame.plot.width() - leftRoom - markRoom) / (greatest - least);
    }
    zero = std::round(frame.plot.left() + leftRoom - least * pixelsPerMegabyte);
    if (pixelsPerMegabyte > 0) {
        axis = roomyAxis((frame.plot.left() - zero) / pixelsPerMegabyte,
                         (frame.plot.right() - zero) / pixelsPerMegabyte, pixelsPerMegabyte,
                         QFontMetricsF(frame.labelFont), frame.length(2 * chartLook::gap));
    }
}

void ChartBars::place(const ChartFrame& frame) {
    boxes = slot_ >= 6;
    const double share =
        std::min(frame.plot.height() * chartLook::barThickness, slot_ * chartLook::barShareOfSlot);
    const bool touching = slot_ < 3;
    const double thickness = touching ? slot_ : std::max(std::round(share), 2.0);
    // No deeper than the gap, so that no bar hides part of the one above it.
    const double across =
        boxes ? std::min(std::round(frame.depth.x() * chartLook::barDepth), std::floor(slot_ - thickness))
              : 0;
    depth = QPointF(across, -across);
    const QPointF inset = (frame.depth - depth) / 2;
    const double gap = std::round(frame.length(chartLook::gap));
    for (std::size_t i = 0; i < bars.size(); ++i) {
        ChartBar& bar = bars[i];
        const double middle = frame.plot.bottom() - (static_cast<double>(i) + 0.5) * slot_;
        const double end = std::round(x(bar.megabytes));
        const double top = middle - thickness / 2 + inset.y() - depth.y() / 2;
        bar.front =
            QRectF(QPointF(std::min(zero, end) + std::round(inset.x()), touching ? top : std::round(top)),
                   QSizeF(std::max(std::fabs(end - zero), 1.0), thickness));
        bar.labelArea = QRectF(frame.plot.left() - gap - frame.labelWidth,
                               std::round(bar.front.center().y() - frame.labelHeight / 2), frame.labelWidth,
                               frame.labelHeight);
    }
    for (std::size_t i = 0; i < bars.size(); ++i) {
        if (bars[i].hasTexts()) {
            placeMark(frame, i);
        }
    }
}

// On its side of zero, among so many above and below it.
const ChartBar& ChartBars::longestBeside(std::size_t index, std::size_t besides) const {
    const std::size_t first = index - std::min(besides, index);
    const std::size_t last = std::min(index + besides, bars.size() - 1);
    const ChartBar* longest = &bars[index];
    for (std::size_t each = first; each <= last; ++each) {
        const double megabytes = bars[each].megabytes;
        if ((megabytes < 0) == (longest->megabytes < 0) &&
            std::abs(megabytes) > std::abs(longest->megabytes)) {
            longest = &bars[each];
        }
    }
    return *longest;
}

// A mark that is taller than its bar's slot is also placed beyond the longer bars beside it. It stays within
// the panel even if the chart is too narrow for it.
void ChartBars::placeMark(const ChartFrame& frame, std::size_t index) {
    ChartBar& bar = bars[index];
    const bool toTheLeft = bar.megabytes < 0;
    const auto besides =
        slot_ < frame.leastSlot() ? static_cast<std::size_t>(std::ceil(frame.markHeight / 2 / slot_)) : 0;
    const ChartBar& longest = longestBeside(index, besides);
    const double callout = std::round(frame.length(chartLook::calloutLength));
    const double centre = std::round(bar.front.center().y() + depth.y() / 2);
    bar.markFrom = QPointF(toTheLeft ? bar.front.left() : bar.front.right() + depth.x() / 2, centre);
    const double end = toTheLeft ? longest.front.left() - callout - bar.mark.width()
                                 : longest.front.right() + depth.x() + callout;
    const double farthest =
        std::max(frame.panel.right() - frame.length(3) - bar.mark.width(), frame.plot.left());
    bar.mark.moveLeft(std::round(std::clamp(end, frame.plot.left(), farthest)));
    bar.mark.moveTop(std::round(centre - bar.mark.height() / 2));
    bar.markTo = QPointF(toTheLeft ? bar.mark.right() : bar.mark.left(), centre);
}

ChartHit ChartBars::hit(QPointF point) const {
    for (const ChartBar& bar : bars) {
        const QRectF box = bar.front.united(bar.front.translated(depth)).adjusted(-1, -1, 1, 1);
        const QRectF line = QRectF(bar.markFrom, bar.markTo).normalized().adjusted(0, -2, 0, 2);
        for (const QRectF& area : {box, bar.mark, line}) {
            if (area.contains(point)) {
                return {ChartHit::Part::value, bar.index, bar.megabytes, box.united(bar.mark)};
            }
        }
        if (bar.labelArea.contains(point)) {
            return {ChartHit::Part::label, bar.index, bar.megabytes, bar.labelArea};
        }
    }
    return {};
}

QRectF ChartBars::markOf(int index) const {
    const auto bar =
        std::find_if(bars.begin(), bars.end(), [index](const ChartBar& b) { return b.index == index; });
    return bar == bars.end() ? QRectF() : bar->mark;
}
