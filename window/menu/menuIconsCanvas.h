#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPointF>
#include <initializer_list>

namespace modMenuIcons {

enum class Ink { outline, accent, tint };

struct Colours {
    QColor outline;
    QColor accent;
    QColor tint; // a transparent accent colour, for areas
};

// Draws on a grid of 16 by 16 units, whatever the picture's size in pixels, always with the same line width.
// Lines whose coordinates end in .5 are moved to whole pixels, so that they are sharp at any size; all
// outlines are rounded.
class Canvas {
public:
    // Draws with the painter on a square with this many pixels per side. The canvas sets up the painter; the
    // caller keeps it.
    Canvas(QPainter& painter, int side, const Colours& colours);

    struct Box {
        qreal left, top, right, bottom;
    };

    void line(Ink ink, std::initializer_list<QPointF> points);
    // The same with a clear rim, to be drawn over something else.
    void lineApart(Ink ink, std::initializer_list<QPointF> points);
    void rectangle(Ink ink, const Box& box, qreal radius);
    void ellipse(Ink ink, const Box& box);
    // A part of the ellipse in the box; degrees are anticlockwise from three o'clock.
    void arc(Ink ink, const Box& box, qreal start, qreal span);
    // The same as a slice, including its two sides.
    void slice(Ink ink, const Box& box, qreal start, qreal span);

    void fillRectangle(Ink ink, const Box& box, qreal radius);
    void fillEllipse(Ink ink, const Box& box);
    void fillSlice(Ink ink, const Box& box, qreal start, qreal span);
    // A dot as wide as a line, or slightly wider if there is room.
    void dot(Ink ink, QPointF centre);

private:
    [[nodiscard]] qreal pixel(qreal unit) const;
    [[nodiscard]] QRectF pixels(const Box& box) const;
    [[nodiscard]] QPainterPath path(std::initializer_list<QPointF> points) const;
    [[nodiscard]] const QColor& colour(Ink ink) const;
    void stroke(Ink ink, const QPainterPath& path, qreal width);
    void curve(Ink ink, const QPainterPath& path);

    QPainter& painter_;
    Colours colours_;
    qreal scale_;
    qreal width_; // line width in whole pixels
};

} // namespace modMenuIcons
