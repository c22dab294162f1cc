#include "window/menu/menuIconsCanvas.h"

#include <QtMath>
#include <algorithm>
#include <functional>

namespace modMenuIcons {

namespace {

constexpr qreal units = 16;

QPainterPath slicePath(const QRectF& box, qreal start, qreal span) {
    QPainterPath path(box.center());
    path.arcTo(box, start, span);
    path.closeSubpath();
    return path;
}

} // namespace

Canvas::Canvas(QPainter& painter, int side, const Colours& colours)
    : painter_(painter), colours_(colours), scale_(side / units), width_(std::max(1, qRound(1.1 * scale_))) {
    painter_.setRenderHint(QPainter::Antialiasing);
}

// The centre of the line whose left edge is on a whole pixel.
qreal Canvas::pixel(qreal unit) const {
    return std::round(unit * scale_ - width_ / 2) + width_ / 2;
}

QRectF Canvas::pixels(const Box& box) const {
    return {QPointF(pixel(box.left), pixel(box.top)), QPointF(pixel(box.right), pixel(box.bottom))};
}

QPainterPath Canvas::path(std::initializer_list<QPointF> points) const {
    QPolygonF polygon;
    for (const QPointF& point : points) {
        polygon.append(QPointF(pixel(point.x()), pixel(point.y())));
    }
    QPainterPath result;
    result.addPolygon(polygon);
    return result;
}

const QColor& Canvas::colour(Ink ink) const {
    switch (ink) {
    case Ink::accent:
        return colours_.accent;
    case Ink::tint:
        return colours_.tint;
    case Ink::outline:
        break;
    }
    return colours_.outline;
}

void Canvas::stroke(Ink ink, const QPainterPath& path, qreal width) {
    painter_.strokePath(path, QPen(colour(ink), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

// A line that does not follow a row of pixels looks thinner than one that does.
void Canvas::curve(Ink ink, const QPainterPath& path) {
    stroke(ink, path, width_ * 1.2);
}

void Canvas::line(Ink ink, std::initializer_list<QPointF> points) {
    const auto isSlanted = [](const QPointF& from, const QPointF& to) {
        return from.x() != to.x() && from.y() != to.y();
    };
    const bool straight =
        std::adjacent_find(points.begin(), points.end(), std::not_fn(isSlanted)) != points.end();
    if (straight) {
        stroke(ink, path(points), width_);
    } else {
        curve(ink, path(points));
    }
}

void Canvas::lineApart(Ink ink, std::initializer_list<QPointF> points) {
    const QPainterPath line = path(points);
    painter_.setCompositionMode(QPainter::CompositionMode_Clear);
    stroke(ink, line, width_ * 4);
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    stroke(ink, line, width_ * 1.5);
}

void Canvas::rectangle(Ink ink, const Box& box, qreal radius) {
    QPainterPath path;
    path.addRoundedRect(pixels(box), radius * scale_, radius * scale_);
    stroke(ink, path, width_);
}

void Canvas::ellipse(Ink ink, const Box& box) {
    QPainterPath path;
    path.addEllipse(pixels(box));
    curve(ink, path);
}

void Canvas::arc(Ink ink, const Box& box, qreal start, qreal span) {
    const QRectF bounds = pixels(box);
    QPainterPath path;
    path.arcMoveTo(bounds, start);
    path.arcTo(bounds, start, span);
    curve(ink, path);
}

void Canvas::slice(Ink ink, const Box& box, qreal start, qreal span) {
    curve(ink, slicePath(pixels(box), start, span));
}

void Canvas::fillRectangle(Ink ink, const Box& box, qreal radius) {
    QPainterPath path;
    path.addRoundedRect(pixels(box), radius * scale_, radius * scale_);
    painter_.fillPath(path, colour(ink));
}

void Canvas::fillEllipse(Ink ink, const Box& box) {
    QPainterPath path;
    path.addEllipse(pixels(box));
    painter_.fillPath(path, colour(ink));
}

void Canvas::fillSlice(Ink ink, const Box& box, qreal start, qreal span) {
    painter_.fillPath(slicePath(pixels(box), start, span), colour(ink));
}

void Canvas::dot(Ink ink, QPointF centre) {
    const qreal radius = std::max(width_ / 2, 0.7 * scale_);
    QPainterPath path;
    path.addEllipse(QPointF(pixel(centre.x()), pixel(centre.y())), radius, radius);
    painter_.fillPath(path, colour(ink));
}

} // namespace modMenuIcons
