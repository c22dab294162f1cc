#include "widgets/chartPie.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/numberFormat.h"
#include "views/chartAxis.h"
#include "views/chartSlices.h"
#include "views/chartSpread.h"
#include "widgets/chartLabel.h"
#include "widgets/chartLook.h"

namespace {

QString shareText(double share) {
    const bool tiny = share < 0.0005;
    return QString::fromStdString((tiny ? "<" : "") +
                                  modFormat::formatNumber(tiny ? 0.1 : share * 100, "0.0")) +
           QLatin1Char('%');
}

QString nameOf(const ChartSlice& slice, const ChartState& state) {
    if (slice.index >= 0) {
        return chartLabel(state.entries[static_cast<std::size_t>(slice.index)]);
    }
    return QString::fromStdString(chartRestName(slice.entries));
}

// The height of labels with this many lines, including the space between them.
double labelHeight(const ChartFrame& frame, int lines) {
    return lines * frame.labelHeight + std::round(frame.length(lines == 1 ? 1 : 5));
}

} // namespace

ChartPie::ChartPie(const ChartFrame& frame, const ChartState& state) {
    const std::vector<ChartSlice> parts = chartSlices(state.entries);
    const std::size_t onTop = chartSliceOnTop(parts);
    double turn = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::size_t rank = (onTop + i) % parts.size();
        const ChartSlice& part = parts[rank];
        ChartPieSlice slice;
        slice.index = part.index;
        slice.megabytes = part.size / 1024 / 1024;
        slice.from = turn;
        turn = slice.to = turn + part.share;
        slice.colour = QColor::fromRgb(part.index < 0 ? state.colours.restSlice : chartLook::slices.at(rank));
        slice.name = nameOf(part, state);
        slice.value = shareText(part.share);
        slices.push_back(slice);
    }
    const auto right =
        std::count_if(slices.begin(), slices.end(), [](const auto& slice) { return slice.isRight(); });
    const auto mostOnASide = std::max(right, static_cast<std::ptrdiff_t>(slices.size()) - right);
    // Taller labels would be pushed so far from their slices that their lines would cross the pie.
    twoLines = static_cast<double>(mostOnASide) * labelHeight(frame, 2) <= frame.pieRoom.height() * 0.6;
    const double width = writeLabels(frame);
    placePie(frame, width);
    placeLabels(frame, width, true);
    placeLabels(frame, width, false);
}

// Writes the labels' texts; returns the width of the column that they need. Names matter most: values are
// shortened to shares, or left out, if they do not fit.
double ChartPie::writeLabels(const ChartFrame& frame) {
    const QFontMetricsF nameMetrics(frame.labelFont);
    const QFontMetricsF valueMetrics(frame.markFont);
    const double most = std::clamp(frame.pieRoom.width() * 0.25, 60.0, frame.length(240));
    const double gap = frame.length(chartLook::gap);
    const auto longValue = [](const ChartPieSlice& slice) {
        return QString::fromStdString(chartMarkText(slice.megabytes)) + QStringLiteral(" \u00b7 ") +
               slice.value;
    };
    const bool longValues =
        twoLines && std::all_of(slices.begin(), slices.end(), [&](const ChartPieSlice& slice) {
            return valueMetrics.horizontalAdvance(longValue(slice)) <= most;
        });
    const bool noValues =
        !twoLines && std::any_of(slices.begin(), slices.end(), [&](const ChartPieSlice& slice) {
            const double name = nameMetrics.horizontalAdvance(slice.name);
            return name <= most && name + gap + valueMetrics.horizontalAdvance(slice.value) > most;
        });
    double widest = 0;
    for (ChartPieSlice& slice : slices) {
        slice.value = longValues ? longValue(slice) : noValues ? QString() : slice.value;
        const double value = valueMetrics.horizontalAdvance(slice.value);
        const double beside = twoLines || noValues ? 0 : value + gap;
        slice.name = nameMetrics.elidedText(slice.name, Qt::ElideMiddle, most - beside);
        widest = std::max({widest, value, nameMetrics.horizontalAdvance(slice.name) + beside});
    }
    return std::ceil(widest) + 1;
}

void ChartPie::placePie(const ChartFrame& frame, double labelWidth) {
    const double beside = labelWidth + frame.length(chartLook::calloutLength + chartLook::gap);
    const double above = frame.labelHeight; // for lines that bend above the pie
    const double radius =
        std::max(std::min(frame.pieRoom.width() / 2 - beside,
                          (frame.pieRoom.height() - above) / 2 / (chartLook::pieTilt + chartLook::depth)),
                 1.0);
    depth = std::round(2 * radius * chartLook::depth);
    const QPointF centre = frame.pieRoom.center() - QPointF(0, depth / 2);
    const QPointF corner(radius, radius * chartLook::pieTilt);
    top = QRectF(centre - corner, centre + corner);
}

QPointF ChartPie::onEdge(double turn, double distance) const {
    const double angle = turn * 2 * std::numbers::pi;
    return top.center() + QPointF(std::sin(angle) * (top.width() / 2 + distance),
                                  -std::cos(angle) * (top.height() / 2 + distance));
}

// Labels are below each other, beside their slices.
void ChartPie::placeLabels(const ChartFrame& frame, double width, bool right) {
    const double height = labelHeight(frame, twoLines ? 2 : 1);
    const auto room = static_cast<std::size_t>(std::max(frame.pieRoom.height() / height, 0.0));
    std::vector<ChartPieSlice*> column;
    for (ChartPieSlice& slice : slices) {
        if (slice.isRight() == right) {
            column.push_back(&slice);
        }
    }
    if (!right) {
        std::reverse(column.begin(), column.end()); // from top to bottom, as on the other side
    }
    while (column.size() > room) { // the thinnest slices get no label
        column.erase(std::min_element(column.begin(), column.end(), [](const auto* one, const auto* other) {
            return one->to - one->from < other->to - other->from;
        }));
    }
    std::vector<double> wanted;
    for (ChartPieSlice* const slice : column) {
        // In front, lines start at the pie's side face.
        const bool inFront = slice->middle() > 0.25 && slice->middle() < 0.75;
        const QPointF drop(0, inFront ? depth / 2 : 0);
        slice->labelFrom = onEdge(slice->middle()) + drop;
        slice->elbow = onEdge(slice->middle(), frame.length(chartLook::calloutLength / 2)) + drop;
        wanted.push_back(slice->elbow.y() - height / 2);
    }
    const std::vector<double> tops =
        modChartSpread::spread(wanted, height, frame.pieRoom.top(), frame.pieRoom.bottom());
    const double beside = frame.length(chartLook::calloutLength + chartLook::gap);
    const double left = std::round(right ? top.right() + beside : top.left() - beside - width);
    for (std::size_t i = 0; i < column.size(); ++i) {
        ChartPieSlice& slice = *column[i];
        slice.label = QRectF(left, std::round(tops[i]), width, height);
        slice.labelTo =
            QPointF(right ? left - frame.length(chartLook::gap) : left + width + frame.length(chartLook::gap),
                    slice.label.center().y());
    }
}

QPainterPath ChartPie::topOf(const ChartPieSlice& slice) const {
    QPainterPath path;
    if (slice.isWhole()) {
        path.addEllipse(top); // without the seam
        return path;
    }
    path.moveTo(top.center());
    path.arcTo(top, 90 - slice.from * 360, (slice.from - slice.to) * 360);
    path.closeSubpath();
    return path;
}

QPainterPath ChartPie::sideOf(const ChartPieSlice& slice) const {
    const double from = std::max(slice.from, 0.25);
    const double to = std::min(slice.to, 0.75);
    QPainterPath path;
    if (from < to) {
        path.arcMoveTo(top, 90 - from * 360);
        path.arcTo(top, 90 - from * 360, (from - to) * 360);
        path.arcTo(top.translated(0, depth), 90 - to * 360, (to - from) * 360);
        path.closeSubpath();
    }
    return path;
}

ChartHit ChartPie::hit(QPointF point) const {
    for (const ChartPieSlice& slice : slices) {
        const QPainterPath face = topOf(slice);
        if (face.contains(point) || sideOf(slice).contains(point)) {
            return {ChartHit::Part::value, slice.index, slice.megabytes, face.boundingRect()};
        }
        if (slice.label.contains(point)) {
            return {ChartHit::Part::label, slice.index, slice.megabytes, slice.label};
        }
    }
    return {};
}

QRectF ChartPie::markOf(int index) const {
    for (const ChartPieSlice& slice : slices) {
        if (slice.index == index) {
            return slice.label.isNull() ? topOf(slice).boundingRect() : slice.label;
        }
    }
    return {};
}
