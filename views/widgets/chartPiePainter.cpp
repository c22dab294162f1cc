#include "views/widgets/chartPiePainter.h"

#include <QRadialGradient>
#include <algorithm>
#include <array>

#include "views/widgets/chartLook.h"

namespace {

void paintShadow(QPainter& painter, const ChartPie& pie) {
    const QRectF area = pie.top.translated(0, pie.depth * 1.6);
    painter.save();
    painter.translate(area.center());
    painter.scale(1, area.height() / area.width());
    const double radius = area.width() / 2 * 1.08;
    QRadialGradient gradient(QPointF(), radius);
    gradient.setColorAt(0.85, QColor(40, 50, 70, 90));
    gradient.setColorAt(1, QColor(40, 50, 70, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(QPointF(), radius, radius);
    painter.restore();
}

void paintSlice(QPainter& painter, const ChartPieSlice& slice, const ChartFrame& frame, const ChartPie& pie,
                bool highlighted) {
    const QColor colour = highlighted ? slice.colour.lighter(118) : slice.colour;
    QPen edge(highlighted ? QColor::fromRgb(chartLook::titleText) : QColor(Qt::white),
              frame.length(highlighted ? 2 : 1.2));
    edge.setJoinStyle(Qt::RoundJoin);
    painter.setPen(QPen(colour.darker(150), frame.length(0.6)));
    painter.setBrush(colour.darker(140));
    painter.drawPath(pie.sideOf(slice));
    QRadialGradient gradient(pie.top.center() - QPointF(pie.top.width(), pie.top.height()) * 0.15,
                             pie.top.width() * 0.7);
    gradient.setColorAt(0, colour.lighter(116));
    gradient.setColorAt(1, colour);
    painter.setPen(edge);
    painter.setBrush(gradient);
    painter.drawPath(pie.topOf(slice));
}

void paintLabel(QPainter& painter, const ChartPieSlice& slice, const ChartFrame& frame, const ChartPie& pie,
                bool hovered, bool selected) {
    const bool right = slice.from + slice.to < 1;
    painter.setPen(QPen(slice.colour.darker(130), frame.length(1)));
    painter.drawPolyline(std::array{slice.labelFrom, slice.elbow, slice.labelTo}.data(), 3);
    const double padding = frame.length(3);
    if (selected) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgb(chartLook::accent));
        painter.drawRoundedRect(slice.label.adjusted(-padding, 0, padding, 0), padding, padding);
    }
    const Qt::Alignment side = right ? Qt::AlignLeft : Qt::AlignRight;
    const int flags = static_cast<int>(side | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextSingleLine;
    const QColor text = QColor::fromRgb(selected  ? qRgb(255, 255, 255)
                                        : hovered ? chartLook::accent
                                                  : chartLook::labelText);
    QRectF line = slice.label;
    line.setHeight(frame.labelHeight);
    painter.setFont(frame.labelFont);
    painter.setPen(text);
    painter.drawText(line, flags, slice.name);
    if (pie.twoLines) {
        painter.setFont(frame.markFont);
        painter.drawText(line.translated(0, frame.labelHeight), flags, slice.value);
    }
}

} // namespace

void chartPiePainter::paint(QPainter& painter, const ChartFrame& frame, const ChartPie& pie,
                            const ChartState& state) {
    paintShadow(painter, pie);
    const auto isHighlighted = [&state](const ChartPieSlice& slice) {
        return slice.index >= 0 && (slice.index == state.hovered || slice.index == state.selected);
    };
    // Highlighted slices last, so that their edges are whole.
    for (const bool highlighted : {false, true}) {
        for (const ChartPieSlice& slice : pie.slices) {
            if (isHighlighted(slice) == highlighted) {
                paintSlice(painter, slice, frame, pie, highlighted);
            }
        }
    }
    for (const ChartPieSlice& slice : pie.slices) {
        if (!slice.label.isNull()) {
            paintLabel(painter, slice, frame, pie, slice.index >= 0 && slice.index == state.hovered,
                       slice.index >= 0 && slice.index == state.selected);
        }
    }
}
