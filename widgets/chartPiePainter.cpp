#include "widgets/chartPiePainter.h"

#include <QPaintEngine>
#include <QRadialGradient>
#include <algorithm>
#include <array>

#include "widgets/chartLook.h"

namespace {

enum class LabelLook { plain, hovered, selected };

// Gradients that fade out become opaque on a PDF page.
bool hasFading(const QPainter& painter) {
    return painter.paintEngine()->type() != QPaintEngine::Pdf;
}

void paintShadow(QPainter& painter, const ChartPie& pie) {
    const QRectF area = pie.top.translated(0, pie.depth * 1.6);
    painter.save();
    painter.translate(area.center());
    painter.scale(1, area.height() / area.width());
    const double radius = area.width() / 2 * 1.08;
    constexpr double inner = 0.85;
    const QColor dark(40, 50, 70, 90);
    painter.setPen(Qt::NoPen);
    if (hasFading(painter)) {
        QRadialGradient gradient(QPointF(), radius);
        gradient.setColorAt(inner, dark);
        gradient.setColorAt(1, QColor(dark.red(), dark.green(), dark.blue(), 0));
        painter.setBrush(gradient);
        painter.drawEllipse(QPointF(), radius, radius);
    } else {
        constexpr int discs = 18; // on top of each other
        painter.setBrush(QColor(dark.red(), dark.green(), dark.blue(), dark.alpha() / discs));
        for (int i = 1; i <= discs; ++i) {
            const double disc = radius * (inner + (1 - inner) * i / discs);
            painter.drawEllipse(QPointF(), disc, disc);
        }
    }
    painter.restore();
}

QPen edgePen(const QColor& colour, double width) {
    QPen pen(colour, width);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

void paintSides(QPainter& painter, const ChartFrame& frame, const ChartPie& pie) {
    for (const ChartPieSlice& slice : pie.slices) {
        painter.setPen(edgePen(slice.colour.darker(150), frame.length(0.6)));
        painter.setBrush(slice.colour.darker(140));
        painter.drawPath(pie.sideOf(slice));
    }
}

// Plain colours and plain lines under one light, which is much faster than outlined gradients.
void paintTops(QPainter& painter, const ChartFrame& frame, const ChartPie& pie, const ChartColours& colours) {
    painter.setPen(Qt::NoPen);
    for (const ChartPieSlice& slice : pie.slices) {
        painter.setBrush(slice.colour);
        painter.drawPath(pie.topOf(slice));
    }
    if (hasFading(painter)) {
        QRadialGradient light(pie.top.center() - QPointF(pie.top.width(), pie.top.height()) * 0.2,
                              pie.top.width() * 0.75);
        light.setColorAt(0, QColor(255, 255, 255, 64));
        light.setColorAt(0.7, QColor(255, 255, 255, 0));
        light.setColorAt(1, QColor(0, 0, 0, 24));
        painter.setBrush(light);
        painter.drawEllipse(pie.top);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(edgePen(QColor::fromRgb(colours.sliceEdge), frame.length(1.2)));
    painter.drawEllipse(pie.top);
    for (const ChartPieSlice& slice : pie.slices) {
        if (!slice.isWhole()) {
            painter.drawLine(pie.top.center(), pie.onEdge(slice.from));
        }
    }
}

void paintLabel(QPainter& painter, const ChartPieSlice& slice, const ChartFrame& frame, const ChartPie& pie,
                const ChartColours& colours, LabelLook look) {
    painter.setPen(QPen(colours.lineOf(slice.colour), frame.length(1)));
    painter.drawPolyline(std::array{slice.labelFrom, slice.elbow, slice.labelTo}.data(), 3);
    if (look != LabelLook::plain) {
        const double padding = frame.length(4);
        painter.setPen(Qt::NoPen);
        painter.setBrush(
            QColor::fromRgb(look == LabelLook::selected ? colours.selectedFill : colours.hoveredFill));
        painter.drawRoundedRect(slice.label.adjusted(-padding, 0, padding, 0), padding, padding);
    }
    // The name above the value, or both in one line with the name next to the pie.
    const bool right = slice.isRight();
    const auto flags = [](bool left) {
        return static_cast<int>((left ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignAbsolute |
                                Qt::AlignVCenter) |
               Qt::TextSingleLine;
    };
    QRectF name = slice.label;
    QRectF value = slice.label;
    if (pie.twoLines) {
        const double middle = slice.label.center().y();
        name = QRectF(name.left(), middle - frame.labelHeight, name.width(), frame.labelHeight);
        value = name.translated(0, frame.labelHeight);
    } else {
        painter.setFont(frame.labelFont);
        const double besideName =
            painter.fontMetrics().horizontalAdvance(slice.name) + frame.length(chartLook::gap);
        value.adjust(right ? besideName : 0, 0, right ? 0 : -besideName, 0);
    }
    painter.setPen(QColor::fromRgb(look == LabelLook::selected ? colours.selectedText : colours.labelText));
    painter.setFont(frame.labelFont);
    painter.drawText(name, flags(right), slice.name);
    painter.setFont(frame.markFont);
    painter.drawText(value, flags(right), slice.value);
}

} // namespace

void chartPiePainter::paintPie(QPainter& painter, const ChartFrame& frame, const ChartPie& pie,
                               const ChartColours& colours) {
    paintShadow(painter, pie);
    paintSides(painter, frame, pie);
    paintTops(painter, frame, pie, colours);
    for (const ChartPieSlice& slice : pie.slices) {
        if (!slice.label.isNull()) {
            paintLabel(painter, slice, frame, pie, colours, LabelLook::plain);
        }
    }
}

void chartPiePainter::paintHighlights(QPainter& painter, const ChartFrame& frame, const ChartPie& pie,
                                      const ChartState& state) {
    for (const ChartPieSlice& slice : pie.slices) {
        const bool selected = slice.index == state.selected;
        if (!selected && slice.index != state.hovered) {
            continue;
        }
        painter.setPen(edgePen(QColor::fromRgb(state.colours.titleText), frame.length(2)));
        painter.setBrush(slice.colour.lighter(118));
        painter.drawPath(pie.topOf(slice));
        if (!slice.label.isNull()) {
            paintLabel(painter, slice, frame, pie, state.colours,
                       selected ? LabelLook::selected : LabelLook::hovered);
        }
    }
}
