#include "widgets/historyPainter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "views/timeAxis.h"

namespace modHistoryPainter {

namespace {

using modTimeChart::Line;
using modTimeChart::Place;
using modTimeChart::Point;

constexpr std::string_view widestSize = "1,023.9 Mb";
constexpr double lineWidth = 2;
constexpr double strongWidth = 3;
constexpr double markSide = 7;
constexpr double roomPerMark = 1.8; // of its side, so that marks are told apart

// The first line is the folder's, the others as the chart has them.
QColor colourOf(std::size_t group, const ChartColours& colours) {
    const auto& slices = chartLook::slices;
    return group == 0 ? QColor::fromRgb(colours.labelText)
                      : colours.lineOf(QColor::fromRgb(slices.at((group - 1) % slices.size())));
}

QPen penOf(const Line& line, const ChartColours& colours, double width) {
    constexpr std::array patterns{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                  Qt::DashDotDotLine};
    return {colourOf(line.group, colours), width, patterns.at(line.pattern % patterns.size()), Qt::FlatCap,
            Qt::RoundJoin};
}

// Another shape for each of four lines, for whoever does not tell colours apart.
void paintMark(QPainter& painter, QPointF middle, double side, std::size_t group) {
    const double half = side / 2;
    const QRectF box(middle - QPointF(half, half), QSizeF(side, side));
    const std::array<QPointF, 4> diamond{middle + QPointF(0, -half * 1.3), middle + QPointF(half * 1.3, 0),
                                         middle + QPointF(0, half * 1.3), middle + QPointF(-half * 1.3, 0)};
    const std::array<QPointF, 3> triangle{box.bottomLeft(), box.bottomRight(),
                                          QPointF(middle.x(), box.top())};
    switch (group % 4) {
    case 0:
        painter.drawEllipse(box);
        break;
    case 1:
        painter.drawRect(box);
        break;
    case 2:
        painter.drawConvexPolygon(triangle.data(), static_cast<int>(triangle.size()));
        break;
    default:
        painter.drawConvexPolygon(diamond.data(), static_cast<int>(diamond.size()));
    }
}

// Hollow if the scan was cancelled or the folder was not there.
void paintPoint(QPainter& painter, const Scene& scene, const QRectF& plot, const Place& place, double side) {
    const Line& line = scene.chart.lines()[place.line];
    const Point& point = line.points[place.point];
    const QColor colour = colourOf(line.group, scene.colours);
    painter.setPen(QPen(colour, lineWidth * 0.75));
    painter.setBrush(point.isThere && point.isComplete ? colour : QColor::fromRgb(scene.colours.panelEnd));
    paintMark(painter, pointIn(plot, scene.chart, place), side, line.group);
}

bool hasRoomForMarks(const Line& line, const QRectF& plot, const modTimeChart::TimeChart& chart) {
    if (line.points.size() < 2) {
        return true;
    }
    const double width =
        (chart.x(line.points.back().moment) - chart.x(line.points.front().moment)) * plot.width();
    return width / static_cast<double>(line.points.size() - 1) >= markSide * roomPerMark;
}

void paintLine(QPainter& painter, const Scene& scene, const QRectF& plot, std::size_t number) {
    const Line& line = scene.chart.lines()[number];
    const bool isStrong = scene.selected && scene.selected->line == number;
    QPolygonF polygon;
    for (std::size_t i = 0; i < line.points.size(); ++i) {
        polygon << pointIn(plot, scene.chart, {number, i});
    }
    painter.setPen(penOf(line, scene.colours, isStrong || line.group == 0 ? strongWidth : lineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(polygon);
    if (hasRoomForMarks(line, plot, scene.chart)) {
        for (std::size_t i = 0; i < line.points.size(); ++i) {
            paintPoint(painter, scene, plot, {number, i}, markSide);
        }
    }
}

void paintSizes(QPainter& painter, const Scene& scene, const QRectF& plot) {
    const double height = scene.metrics.height();
    for (const modTimeChart::SizeLabel& label :
         modTimeChart::sizeLabels(scene.chart.greatest(), mostSizes(plot, scene.metrics))) {
        const double y = std::round(plot.bottom() - scene.chart.y(label.size) * plot.height()) + 0.5;
        painter.setPen(QColor::fromRgba(label.size > 0 ? scene.colours.gridLine : scene.colours.zeroLine));
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter.setPen(QColor::fromRgb(scene.colours.labelText));
        const QRectF place(scene.area.left(), y - height / 2, plot.left() - scene.area.left() - height / 3,
                           height);
        painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip,
                         QString::fromStdString(label.text));
    }
}

void paintDates(QPainter& painter, const Scene& scene, const QRectF& plot) {
    const double height = scene.metrics.height();
    const double widest = scene.metrics.horizontalAdvance(QStringLiteral("12/28/2028")) + height;
    const int most = std::max(1, static_cast<int>(plot.width() / widest));
    for (const modTimeChart::TimeLabel& label :
         modTimeChart::timeLabels(scene.chart.from(), scene.chart.to(), most)) {
        const double x = std::round(plot.left() + scene.chart.x(label.moment) * plot.width()) + 0.5;
        painter.setPen(QColor::fromRgba(scene.colours.gridLine));
        painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom() + height / 4));
        const QString text = QString::fromStdString(label.text);
        const double width = scene.metrics.horizontalAdvance(text);
        const double left = std::clamp(x - width / 2, scene.area.left(),
                                       std::max(scene.area.left(), scene.area.right() - width));
        painter.setPen(QColor::fromRgb(scene.colours.labelText));
        painter.drawText(QRectF(left, plot.bottom() + height / 3, width, height),
                         Qt::AlignCenter | Qt::TextDontClip, text);
    }
}

void paintStrong(QPainter& painter, const Scene& scene, const QRectF& plot, const Place& place,
                 bool withRing) {
    paintPoint(painter, scene, plot, place, markSide * 1.5);
    if (withRing) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor::fromRgb(scene.colours.accentText), lineWidth));
        painter.drawEllipse(pointIn(plot, scene.chart, place), markSide * 1.4, markSide * 1.4);
    }
}

} // namespace

QRectF plotOf(const QRectF& area, const QFontMetricsF& metrics) {
    const double height = metrics.height();
    const double sizes = metrics.horizontalAdvance(
        QString::fromUtf8(widestSize.data(), static_cast<qsizetype>(widestSize.size())));
    return area.adjusted(sizes + height, height * 0.75, -height, -height * 1.75);
}

int mostSizes(const QRectF& plot, const QFontMetricsF& metrics) {
    constexpr int most = 8;
    return std::clamp(static_cast<int>(plot.height() / (metrics.height() * 2)), 2, most);
}

QPointF pointIn(const QRectF& plot, const modTimeChart::TimeChart& chart, const Place& place) {
    const modTimeChart::Position position = chart.position(place);
    return {plot.left() + position.x * plot.width(), plot.bottom() - position.y * plot.height()};
}

void paint(QPainter& painter, const Scene& scene) {
    painter.fillRect(scene.area, QColor::fromRgb(scene.colours.panelEnd));
    const QRectF plot = plotOf(scene.area, scene.metrics);
    if (plot.width() < 1 || plot.height() < 1 || scene.chart.lines().empty()) {
        return;
    }
    paintSizes(painter, scene, plot);
    paintDates(painter, scene, plot);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t line = scene.chart.lines().size(); line-- > 0;) { // the folder's is on top
        if (scene.chart.lines()[line].isShown) {
            paintLine(painter, scene, plot, line);
        }
    }
    if (scene.hovered && scene.chart.isShown(*scene.hovered)) {
        paintStrong(painter, scene, plot, *scene.hovered, false);
    }
    if (scene.selected && scene.chart.isShown(*scene.selected)) {
        paintStrong(painter, scene, plot, *scene.selected, scene.hasFocus);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void paintSample(QPainter& painter, const QRectF& area, const Line& line, const ChartColours& colours) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(penOf(line, colours, line.group == 0 ? strongWidth : lineWidth));
    painter.drawLine(QPointF(area.left(), area.center().y()), QPointF(area.right(), area.center().y()));
    const QColor colour = colourOf(line.group, colours);
    painter.setPen(colour);
    painter.setBrush(colour);
    paintMark(painter, area.center(), markSide, line.group);
}

} // namespace modHistoryPainter
