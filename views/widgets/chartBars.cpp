#include "views/widgets/chartBars.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "views/chartPaging.h"
#include "views/widgets/chartLook.h"

namespace {

double megabytesOf(double bytes) {
    return bytes / 1024 / 1024;
}

// The finest axis whose labels keep a distance.
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

ChartBars::ChartBars(const ChartFrame& frame, const ChartState& state) {
    const auto count = static_cast<int>(state.entries.size());
    const ChartPaging paging(count, frame.barRoom());
    const int last = count - paging.clamped(state.position);
    const QFontMetricsF labelMetrics(frame.labelFont);
    const QFontMetricsF markMetrics(frame.markFont);
    double markWidth = 0;
    for (int index = last - paging.visible(); index < last; ++index) {
        const ChartEntry& entry = state.entries[static_cast<std::size_t>(index)];
        ChartBar bar;
        bar.index = index;
        bar.megabytes = megabytesOf(entry.size);
        bar.label = labelMetrics.elidedText(QString::fromStdString(entry.label), Qt::ElideMiddle,
                                            frame.length(chartLook::labelLength));
        bar.value = QString::fromStdString(chartMarkText(bar.megabytes));
        bar.mark.setSize({std::ceil(markMetrics.horizontalAdvance(bar.value)) +
                              2 * std::round(frame.length(chartLook::markPadding)),
                          frame.markHeight});
        markWidth = std::max(markWidth, bar.mark.width());
        bars.push_back(bar);
    }
    if (!bars.empty()) {
        setRange(frame, markWidth);
        place(frame);
    }
}

// Leaves room for the marks beyond the longest bars; both ends of the range count, for sizes may be negative.
void ChartBars::setRange(const ChartFrame& frame, double markWidth) {
    const double least = std::min(bars.front().megabytes, 0.0);
    const double greatest = std::max(bars.back().megabytes, 0.0);
    const double markRoom =
        std::min(markWidth + frame.length(chartLook::calloutLength + chartLook::gap) + frame.depth.x() / 2,
                 frame.plot.width() * 0.6);
    const double leftRoom = least < 0 ? std::min(markRoom, frame.plot.width() * 0.3) : 0;
    const double rightRoom = least < 0 ? std::min(markRoom, frame.plot.width() * 0.3) : markRoom;
    if (greatest > least) {
        pixelsPerMegabyte = (frame.plot.width() - leftRoom - rightRoom) / (greatest - least);
    }
    zero = std::round(frame.plot.left() + leftRoom - least * pixelsPerMegabyte);
    if (pixelsPerMegabyte > 0) {
        axis = roomyAxis((frame.plot.left() - zero) / pixelsPerMegabyte,
                         (frame.plot.right() - zero) / pixelsPerMegabyte, pixelsPerMegabyte,
                         QFontMetricsF(frame.labelFont), frame.length(2 * chartLook::gap));
    }
}

void ChartBars::place(const ChartFrame& frame) {
    const double slot = frame.plot.height() / static_cast<double>(bars.size());
    const double thickness = std::max(
        std::round(std::min(frame.plot.height() * chartLook::barThickness, slot * chartLook::barShareOfSlot)),
        2.0);
    // No deeper than the gap, so that no bar hides a part of the one above it.
    const double across =
        std::min(std::round(frame.depth.x() * chartLook::barDepth), std::floor(slot - thickness));
    depth = QPointF(across, -across);
    const QPointF inset = (frame.depth - depth) / 2;
    const double callout = std::round(frame.length(chartLook::calloutLength));
    const double gap = std::round(frame.length(chartLook::gap));
    for (std::size_t i = 0; i < bars.size(); ++i) {
        ChartBar& bar = bars[i];
        const double middle = frame.plot.bottom() - (static_cast<double>(i) + 0.5) * slot;
        const double end = std::round(x(bar.megabytes));
        const double top = std::round(middle - thickness / 2 + inset.y() - depth.y() / 2);
        bar.front = QRectF(QPointF(std::min(zero, end) + std::round(inset.x()), top),
                           QSizeF(std::max(std::fabs(end - zero), 1.0), thickness));
        const bool toTheLeft = bar.megabytes < 0;
        const double centre = std::round(bar.front.center().y() + depth.y() / 2);
        bar.markFrom = QPointF(toTheLeft ? bar.front.left() : bar.front.right() + depth.x() / 2, centre);
        bar.markTo =
            QPointF(toTheLeft ? bar.front.left() - callout : bar.front.right() + depth.x() + callout, centre);
        bar.mark.moveTop(std::round(centre - bar.mark.height() / 2));
        bar.mark.moveLeft(std::round(toTheLeft ? bar.markTo.x() - bar.mark.width() : bar.markTo.x()));
        const double width = std::round(frame.length(chartLook::labelLength));
        bar.labelArea =
            QRectF(frame.plot.left() - gap - width,
                   std::round(bar.front.center().y() - frame.labelHeight / 2), width, frame.labelHeight);
    }
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
