#include "widgets/applicationIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <algorithm>

namespace {

// The mark is laid out on a square of 16 units.
constexpr double units = 16.0;
constexpr double barsLeft = 2.0;
constexpr double barWidth = 10.0 / 3;
constexpr double barGap = 1.0;
constexpr double barsBase = 12.0; // behind the folder's front
constexpr double barsTop = 1.0;   // the top of a bar of height 1
constexpr double barsFoot = 9.0;  // the top of a bar of height 0, which is the upper edge of the front

constexpr double detailedScale = 3.0; // pixels per unit from which fine lines are visible

struct Gradient {
    QRgb top;
    QRgb bottom;
};

constexpr Gradient backColours{0xff3d68c4, 0xff2a4c9c};
constexpr Gradient frontColours{0xff6aa0fa, 0xff2c63d2};
constexpr std::array<Gradient, 3> barColours{
    {{0xff4fd8b4, 0xff25b08c}, {0xffffd35c, 0xfff5a81c}, {0xffff8a70, 0xffe8553d}}};

class MarkPainter {
public:
    MarkPainter(QPainter& painter, int side) : painter_(painter), scale_(side / units) {}

    void back() {
        const double radius = 1.2 * scale_;
        QPainterPath sheet;
        sheet.addRoundedRect(rectangle(1, 5, 15, 14), radius, radius);
        QPainterPath tab;
        tab.addRoundedRect(rectangle(1, 4, 6, 8), radius, radius);
        fill(sheet.united(tab), backColours);
    }

    void bar(std::size_t number, double height, bool moving) {
        const double left = barsLeft + static_cast<double>(number) * (barWidth + barGap);
        QRectF shape = rectangle(left, 0, left + barWidth, barsBase);
        const double top = (barsFoot - height * (barsFoot - barsTop)) * scale_;
        shape.setTop(moving ? top : qRound(top));
        const double radius = 0.7 * scale_;
        QPainterPath path;
        path.addRoundedRect(shape, radius, radius);
        fill(path, barColours.at(number));
    }

    void front() {
        const double radius = 1.3 * scale_;
        const QRectF area = rectangle(1, 9, 15, 15);
        QPainterPath shape;
        shape.addRoundedRect(area, radius, radius);
        if (scale_ >= detailedScale) { // the shadow of the front and the light on its edge
            painter_.save();
            painter_.setOpacity(0.10);
            for (const double above : {0.15, 0.3, 0.45}) {
                painter_.fillPath(shape.translated(0, -above * scale_).subtracted(shape), Qt::black);
            }
            painter_.restore();
        }
        fill(shape, frontColours);
        if (scale_ >= detailedScale) {
            painter_.fillPath(shape.subtracted(shape.translated(0, 0.12 * scale_)),
                              QColor(255, 255, 255, 110));
        }
    }

    void gauge(double from, double to) {
        const QRectF track = rectangle(3, 11, 13, 13);
        const double radius = track.height() / 2;
        QPainterPath path;
        path.addRoundedRect(track, radius, radius);
        painter_.fillPath(path, QColor(16, 38, 96, 110));
        QPainterPath filled;
        filled.addRoundedRect(QRectF(track.left() + from * track.width(), track.top(),
                                     (to - from) * track.width(), track.height()),
                              radius, radius);
        painter_.fillPath(path.intersected(filled), Qt::white);
    }

private:
    [[nodiscard]] QRectF rectangle(double left, double top, double right, double bottom) const {
        const auto snapped = [this](double unit) { return static_cast<double>(qRound(unit * scale_)); };
        return {QPointF(snapped(left), snapped(top)), QPointF(snapped(right), snapped(bottom))};
    }

    void fill(const QPainterPath& shape, const Gradient& colours) {
        const QRectF area = shape.boundingRect();
        QLinearGradient gradient(area.topLeft(), area.bottomLeft());
        gradient.setColorAt(0, QColor(colours.top));
        gradient.setColorAt(1, QColor(colours.bottom));
        painter_.fillPath(shape, gradient);
    }

    QPainter& painter_;
    double scale_;
};

} // namespace

void paintApplicationMark(QPainter& painter, int side, const ApplicationMark& mark) {
    painter.setRenderHint(QPainter::Antialiasing);
    MarkPainter parts(painter, side);
    parts.back();
    for (std::size_t i = 0; i < mark.bars.size(); ++i) {
        parts.bar(i, mark.bars.at(i), mark.moving);
    }
    parts.front();
    parts.gauge(mark.gaugeFrom, mark.gaugeTo);
}

QImage applicationImage(int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintApplicationMark(painter, side);
    return image;
}

QIcon applicationIcon() {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addPixmap(QPixmap::fromImage(applicationImage(side)));
    }
    return icon;
}
