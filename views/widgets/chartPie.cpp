#include "views/widgets/chartPie.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "app/pictures.h"
#include "views/chartAxis.h"
#include "views/chartSlices.h"
#include "views/widgets/chartLook.h"

namespace {

double labelWidth(const ChartFrame& frame) {
    return std::clamp(frame.pieRoom.width() * 0.27, 60.0, frame.length(220));
}

QString shareText(double share) {
    const bool tiny = share < 0.0005;
    return QString::fromStdString((tiny ? "<" : "") +
                                  modFormat::formatNumber(tiny ? 0.1 : share * 100, "0.0")) +
           QLatin1Char('%');
}

QString nameOf(const ChartSlice& slice, const ChartState& state) {
    return slice.index >= 0
               ? QString::fromStdString(state.entries[static_cast<std::size_t>(slice.index)].label)
               : QStringLiteral("Other (%1)")
                     .arg(QString::fromStdString(modFormat::formatNumber(slice.entries, "#,##0")));
}

} // namespace

ChartPie::ChartPie(const ChartFrame& frame, const ChartState& state) {
    const double side = labelWidth(frame) + frame.length(chartLook::calloutLength + 2 * chartLook::gap);
    const double radius = std::max(
        std::min(frame.pieRoom.width() / 2 - side, frame.pieRoom.height() / 2 / (chartLook::pieTilt + 0.1)),
        1.0);
    depth = std::round(2 * radius * chartLook::depth);
    const QPointF centre = frame.pieRoom.center() - QPointF(0, depth / 2);
    const QPointF corner(radius, radius * chartLook::pieTilt);
    top = QRectF(centre - corner, centre + corner);

    const QFontMetricsF metrics(frame.labelFont);
    double turn = 0;
    for (const ChartSlice& part : chartSlices(state.entries)) {
        ChartPieSlice slice;
        slice.index = part.index;
        slice.megabytes = part.size / 1024 / 1024;
        slice.from = turn;
        turn = slice.to = turn + part.share;
        slice.colour =
            QColor::fromRgb(part.index < 0 ? chartLook::restSlice : chartLook::slices.at(slices.size()));
        slice.name = metrics.elidedText(nameOf(part, state), Qt::ElideMiddle, labelWidth(frame));
        slice.value = QString::fromStdString(chartMarkText(slice.megabytes)) + QStringLiteral(", ") +
                      shareText(part.share);
        slices.push_back(slice);
    }
    const double lineHeight = frame.labelHeight;
    const auto rightOnes = std::count_if(
        slices.begin(), slices.end(), [](const ChartPieSlice& slice) { return slice.from + slice.to < 1; });
    const auto mostOnASide = std::max(rightOnes, static_cast<std::ptrdiff_t>(slices.size()) - rightOnes);
    twoLines = static_cast<double>(mostOnASide) * (2 * lineHeight + 2) <= frame.pieRoom.height();
    placeLabels(frame, true);
    placeLabels(frame, false);
}

QPointF ChartPie::onEdge(double turn, double radius) const {
    const double angle = turn * 2 * std::numbers::pi;
    return top.center() +
           QPointF(std::sin(angle) * top.width(), -std::cos(angle) * top.height()) / 2 * radius;
}

// Labels stand below each other beside their slices, each as near to its own as the others let it.
void ChartPie::placeLabels(const ChartFrame& frame, bool right) {
    const double height = twoLines ? 2 * frame.labelHeight + 2 : frame.labelHeight + 1;
    const auto room = static_cast<std::size_t>(std::max(frame.pieRoom.height() / height, 0.0));
    std::vector<ChartPieSlice*> column;
    for (ChartPieSlice& slice : slices) {
        // The largest come first: those for which no room is left are the smallest of this side.
        if ((slice.from + slice.to < 1) == right && column.size() < room) {
            column.push_back(&slice);
        }
    }
    if (!right) {
        std::reverse(column.begin(), column.end()); // from the top down, as on the other side
    }
    const double width = labelWidth(frame);
    const double left = right ? frame.pieRoom.right() - width : frame.pieRoom.left();
    double next = frame.pieRoom.top();
    for (ChartPieSlice* const slice : column) {
        const double middle = (slice->from + slice->to) / 2;
        const double drop = std::cos(middle * 2 * std::numbers::pi) < 0 ? depth / 2 : 0;
        slice->labelFrom = onEdge(middle, 1) + QPointF(0, drop);
        slice->elbow = onEdge(middle, 1.08) + QPointF(0, drop);
        const double y = std::max(slice->elbow.y() - height / 2, next);
        slice->label = QRectF(left, std::round(y), width, height);
        next = y + height;
    }
    double lowest = frame.pieRoom.bottom();
    for (auto slice = column.rbegin(); slice != column.rend(); ++slice) {
        QRectF& label = (*slice)->label;
        label.moveBottom(std::min(label.bottom(), lowest));
        lowest = label.top();
        const double x = right ? label.left() - frame.length(chartLook::gap)
                               : label.right() + frame.length(chartLook::gap);
        (*slice)->labelTo = QPointF(x, label.center().y());
    }
}

QPainterPath ChartPie::topOf(const ChartPieSlice& slice) const {
    QPainterPath path;
    if (slice.to - slice.from > 0.9999) {
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
        const QPainterPath side = sideOf(slice);
        if (face.contains(point) || side.contains(point)) {
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
