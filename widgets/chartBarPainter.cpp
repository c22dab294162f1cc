#include "widgets/chartBarPainter.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>
#include <array>
#include <cmath>

#include "widgets/chartLook.h"

namespace {

const QPointF halfPixel(0.5, 0.5); // lines run through the centres of pixels

QPen hairline(QRgb colour, const ChartFrame& frame) {
    return {QColor::fromRgba(colour), std::max(1.0, std::floor(frame.scale))};
}

QLinearGradient gradient(QPointF from, QPointF to, QRgb start, QRgb end) {
    QLinearGradient result(from, to);
    result.setColorAt(0, QColor::fromRgb(start));
    result.setColorAt(1, QColor::fromRgb(end));
    return result;
}

// The face between an edge and the same edge shifted by the depth.
QPolygonF face(QPointF from, QPointF to, QPointF depth) {
    return QPolygonF({from, to, to + depth, from + depth});
}

void paintLabel(QPainter& painter, const ChartBar& bar, const ChartFrame& frame, const ChartState& state) {
    const ChartColours& colours = state.colours;
    const bool hovered = bar.index == state.hovered;
    const bool selected = bar.index == state.selected;
    if (selected) {
        const double padding = frame.length(3);
        const double width =
            std::min(painter.fontMetrics().horizontalAdvance(bar.label) + 0.0, bar.labelArea.width());
        QRectF area = bar.labelArea;
        area.setLeft(area.right() - width);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgb(colours.selectedFill));
        painter.drawRoundedRect(area.adjusted(-padding, 0, padding, 0), padding, padding);
    }
    painter.setPen(QColor::fromRgb(selected  ? colours.selectedText
                                   : hovered ? colours.accentText
                                             : colours.labelText));
    painter.drawText(bar.labelArea,
                     Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine, bar.label);
}

void paintBox(QPainter& painter, const ChartBar& bar, const ChartFrame& frame, const ChartBars& bars,
              const ChartColours& colours, bool highlighted) {
    const QRgb start = highlighted ? colours.highlightStart : colours.barStart;
    const QRgb end = highlighted ? colours.highlightEnd : colours.barEnd;
    const QRectF front = bar.front.translated(halfPixel).adjusted(0, 0, -1, -1);
    QPen edge = hairline(highlighted ? colours.accentText : colours.barEdge, frame);
    edge.setJoinStyle(Qt::RoundJoin);
    painter.setPen(edge);
    const auto along = [&](int lightness) {
        return gradient(front.topLeft(), front.topRight(), QColor::fromRgb(start).lighter(lightness).rgb(),
                        QColor::fromRgb(end).lighter(lightness).rgb());
    };
    painter.setBrush(along(108));
    painter.drawPolygon(face(front.topLeft(), front.topRight(), bars.depth));
    painter.setBrush(QColor::fromRgb(end).darker(118));
    painter.drawPolygon(face(front.topRight(), front.bottomRight(), bars.depth));
    painter.setBrush(along(100));
    painter.drawRect(front);
}

// Bars without edges, which may touch, are painted as one shape so that no seams are visible.
void paintThinBars(QPainter& painter, const ChartFrame& frame, const ChartBars& bars,
                   const ChartColours& colours) {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const ChartBar& bar : bars.bars) {
        path.addRect(bar.front);
    }
    painter.setPen(Qt::NoPen);
    QLinearGradient colour =
        gradient({bars.zero, 0}, {frame.plot.right(), 0}, colours.thinStart, colours.thinEnd);
    colour.setSpread(QGradient::ReflectSpread); // to the left of zero
    painter.setBrush(colour);
    painter.drawPath(path);
}

void paintMark(QPainter& painter, const ChartBar& bar, const ChartFrame& frame, const ChartColours& colours,
               bool highlighted) {
    painter.setPen(hairline(highlighted ? colours.accentText : colours.markEdge, frame));
    painter.drawLine(bar.markFrom + halfPixel, bar.markTo + halfPixel);
    painter.setBrush(QColor::fromRgb(colours.markFill));
    painter.drawRoundedRect(bar.mark.translated(halfPixel).adjusted(0, 0, -1, -1), frame.length(2),
                            frame.length(2));
    painter.setPen(QColor::fromRgb(colours.labelText));
    painter.drawText(bar.mark, Qt::AlignCenter | Qt::TextSingleLine, bar.value);
}

} // namespace

void chartBarPainter::paintWalls(QPainter& painter, const ChartFrame& frame, const ChartColours& colours) {
    const QRectF front = frame.plot.translated(halfPixel).adjusted(0, 0, -1, -1);
    const QRectF back = front.translated(frame.depth);
    painter.setPen(hairline(colours.wallEdge, frame));
    painter.setBrush(
        gradient(front.topLeft(), front.bottomLeft(), colours.sideWallStart, colours.sideWallEnd));
    painter.drawPolygon(face(front.topLeft(), front.bottomLeft(), frame.depth));
    painter.setBrush(
        gradient(front.bottomLeft(), front.bottomRight(), colours.sideWallStart, colours.sideWallEnd));
    painter.drawPolygon(face(front.bottomLeft(), front.bottomRight(), frame.depth));
    painter.setBrush(gradient(back.topLeft(), back.bottomLeft(), colours.backWallStart, colours.backWallEnd));
    painter.drawRect(back);
}

void chartBarPainter::paintAxis(QPainter& painter, const ChartFrame& frame, const ChartBars& bars,
                                const ChartColours& colours) {
    painter.setFont(frame.labelFont);
    for (int i = bars.axis.first; i <= bars.axis.last; ++i) {
        const double x = std::round(bars.x(bars.axis.value(i)));
        const QPointF foot = QPointF(x, frame.plot.bottom() - 1) + halfPixel;
        const QPointF corner = foot + frame.depth;
        const QPointF head(corner.x(), frame.backWall().top());
        painter.setPen(hairline(i == 0 ? colours.zeroLine : colours.gridLine, frame));
        painter.drawPolyline(std::array{foot + QPointF(0, frame.length(3)), foot, corner, head}.data(), 4);

        const QString text = QString::fromStdString(chartAxisText(bars.axis.value(i)));
        const double width = painter.fontMetrics().horizontalAdvance(text);
        const QRectF area(x - width / 2, frame.plot.bottom() + frame.length(4), width + 1, frame.labelHeight);
        if (area.right() < frame.panel.right() - 2) {
            painter.setPen(QColor::fromRgb(colours.labelText));
            painter.drawText(area, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, text);
        }
    }
}

void chartBarPainter::paintBars(QPainter& painter, const ChartFrame& frame, const ChartBars& bars,
                                const ChartState& state) {
    painter.setFont(frame.labelFont);
    for (const ChartBar& bar : bars.bars) {
        if (bar.hasTexts()) {
            paintLabel(painter, bar, frame, state);
        }
    }
    if (!bars.boxes) {
        paintThinBars(painter, frame, bars, state.colours);
    }
    painter.setFont(frame.markFont);
    for (const ChartBar& bar : bars.bars) {
        const bool highlighted = bar.index == state.hovered || bar.index == state.selected;
        if (bars.boxes) {
            paintBox(painter, bar, frame, bars, state.colours, highlighted);
        }
        if (bar.hasTexts()) {
            paintMark(painter, bar, frame, state.colours, highlighted);
        }
    }
}
