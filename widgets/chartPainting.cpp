#include "widgets/chartPainting.h"

#include <QLinearGradient>

#include "widgets/chartBarPainter.h"
#include "widgets/chartLook.h"
#include "widgets/chartPiePainter.h"

namespace {

void paintPanel(QPainter& painter, const ChartFrame& frame, const ChartColours& colours) {
    QLinearGradient gradient(frame.panel.topLeft(), frame.panel.bottomRight());
    gradient.setColorAt(0, QColor::fromRgb(colours.panelStart));
    gradient.setColorAt(1, QColor::fromRgb(colours.panelEnd));
    painter.setPen(QPen(QColor::fromRgb(colours.panelBorder), 1));
    painter.setBrush(gradient);
    painter.drawRect(frame.panel.adjusted(0.5, 0.5, -0.5, -0.5));
}

void paintTitle(QPainter& painter, const ChartFrame& frame, const ChartColours& colours) {
    painter.setFont(frame.titleFont);
    painter.setPen(QColor::fromRgb(colours.titleText));
    painter.drawText(frame.title, Qt::AlignCenter | Qt::TextSingleLine, QStringLiteral("Spannory"));
}

// A part of the folder leads back to the whole.
void paintHeading(QPainter& painter, const ChartLayout& layout, bool leadsBack) {
    const ChartFrame& frame = layout.frame();
    const ChartColours& colours = layout.colours();
    const ChartHeading& heading = layout.heading();
    constexpr int flags = Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip;
    QFont font = frame.markFont;
    font.setUnderline(leadsBack);
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(leadsBack ? colours.accentText : colours.quietText));
    painter.drawText(heading.nameArea, flags, heading.name);
    painter.setFont(frame.markFont);
    painter.setPen(QColor::fromRgb(colours.quietText));
    painter.drawText(heading.figuresArea, flags, heading.figures);
}

void paintHint(QPainter& painter, const ChartFrame& frame, const ChartState& state) {
    painter.setFont(frame.labelFont);
    painter.setPen(QColor::fromRgba(state.colours.quietText));
    const QRectF room = state.style == ChartStyle::bar ? frame.backWall() : frame.pieRoom;
    const double inset = frame.length(2 * chartLook::gap);
    painter.drawText(room.adjusted(inset, 0, -inset, 0), Qt::AlignCenter | Qt::TextWordWrap, state.hint);
}

// Texts have their own direction; the chart has none.
void prepare(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LeftToRight);
}

} // namespace

void chartPainting::paintBackground(QPainter& painter, const ChartLayout& layout) {
    painter.save();
    prepare(painter);
    const ChartFrame& frame = layout.frame();
    paintPanel(painter, frame, layout.colours());
    if (frame.hasRoom) {
        paintTitle(painter, frame, layout.colours());
    }
    if (layout.bars()) {
        chartBarPainter::paintWalls(painter, frame, layout.colours());
    }
    if (layout.pie() && !layout.isEmpty()) {
        chartPiePainter::paintPie(painter, frame, *layout.pie(), layout.colours());
    }
    painter.restore();
}

void chartPainting::paintContent(QPainter& painter, const ChartLayout& layout, const ChartState& state) {
    painter.save();
    prepare(painter);
    paintHeading(painter, layout, !state.part.isEmpty());
    if (layout.isEmpty()) {
        paintHint(painter, layout.frame(), state);
    } else if (layout.bars()) {
        chartBarPainter::paintAxis(painter, layout.frame(), *layout.bars(), state.colours);
        chartBarPainter::paintBars(painter, layout.frame(), *layout.bars(), state);
    } else if (layout.pie()) {
        chartPiePainter::paintHighlights(painter, layout.frame(), *layout.pie(), state);
    }
    painter.restore();
}

void chartPainting::paint(QPainter& painter, const QRectF& rectangle, const ChartState& state) {
    const ChartLayout layout(ChartFrame(rectangle, state), state);
    paintBackground(painter, layout);
    paintContent(painter, layout, state);
}
