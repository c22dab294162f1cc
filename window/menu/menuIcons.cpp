#include "window/menu/menuIcons.h"

#include <QApplication>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QStyle>
#include <QStyleOptionMenuItem>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "widgets/systemIcons.h"
#include "window/menu/menuIconsDrawings.h"

namespace modMenuIcons {

namespace {

QColor mixed(const QColor& colour, const QColor& other, float share) {
    return QColor::fromRgbF(colour.redF() * (1 - share) + other.redF() * share,
                            colour.greenF() * (1 - share) + other.greenF() * share,
                            colour.blueF() * (1 - share) + other.blueF() * share);
}

Colours oneColour(const QColor& colour) {
    QColor tint = colour;
    tint.setAlphaF(0.3F);
    return {colour, colour, tint};
}

// The style's colour below the item under the pointer, which may differ from the palette's.
QColor highlight(const QPalette& palette) {
    QImage item(48, 24, QImage::Format_RGB32);
    item.fill(palette.color(QPalette::Window));
    QStyleOptionMenuItem option;
    option.rect = item.rect();
    option.palette = palette;
    option.state = QStyle::State_Enabled | QStyle::State_Selected | QStyle::State_Active;
    QPainter painter(&item);
    QApplication::style()->drawControl(QStyle::CE_MenuItem, &option, &painter);
    return item.pixelColor(item.rect().center());
}

// The text colour that is easier to read on the background.
QColor textOn(const QColor& ground, const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText);
    const QColor other = palette.color(QPalette::HighlightedText);
    const auto contrast = [&](const QColor& colour) {
        return std::abs(qGray(colour.rgb()) - qGray(ground.rgb()));
    };
    return contrast(other) < contrast(text) ? text : other;
}

Colours coloursFor(QIcon::Mode mode, QIcon::State state, Place place) {
    const QPalette palette = QApplication::palette();
    if (mode == QIcon::Disabled) {
        return oneColour(palette.color(QPalette::Disabled, QPalette::WindowText));
    }
    // A menu paints a frame of its own between its highlight and a checked item's picture.
    const bool highlighted = mode == QIcon::Selected || (mode == QIcon::Active && place == Place::menu);
    if (highlighted && state == QIcon::Off) {
        return oneColour(textOn(highlight(palette), palette));
    }
    const QColor text = palette.color(QPalette::WindowText);
    const QColor background = palette.color(QPalette::Window);
    const bool dark = background.lightness() < text.lightness();
    const QColor accent = dark ? QColor(0x6c, 0xb2, 0xf2) : QColor(0x1f, 0x6f, 0xc0);
    QColor tint = accent;
    tint.setAlphaF(dark ? 0.35F : 0.22F);
    return {mixed(text, background, 0.18F), accent, tint};
}

// Draws a picture anew for each size and palette; there are few of them, and they are rarely shown.
class Engine final : public QIconEngine {
public:
    Engine(Picture picture, Place place) : picture_(picture), place_(place) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal ratio = painter->device()->devicePixelRatio();
        QPixmap drawn = pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state);
        drawn.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect, drawn);
    }

    // The size is in device pixels.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        const int side = std::min(size.width(), size.height());
        painter.translate(QPoint(size.width() - side, size.height() - side) / 2);
        Canvas canvas(painter, side, coloursFor(mode, state, place_));
        draw(picture_, canvas);
        if (state == QIcon::On) {
            drawCheckMark(canvas);
        }
        return drawn;
    }

    [[nodiscard]] QIconEngine* clone() const override {
        return std::make_unique<Engine>(*this).release(); // Qt deletes it
    }

private:
    Picture picture_;
    Place place_;
};

} // namespace

QIcon icon(Picture picture, Place place) {
    return QIcon(std::make_unique<Engine>(picture, place).release()); // the icon deletes it
}

void addMenuImages(ImageList& imlMenu) {
    constexpr std::array<std::pair<int, Picture>, 16> images{{
        {1, Picture::exportData},
        {4, Picture::xmlFile},
        {5, Picture::htmlFile},
        {6, Picture::textFile},
        {7, Picture::excelFile},
        {10, Picture::cancel},
        {11, Picture::pieChart},
        {12, Picture::database},
        {13, Picture::refresh},
        {14, Picture::barChart},
        {15, Picture::owners},
        {16, Picture::help},
        {17, Picture::about},
        {18, Picture::back},
        {19, Picture::forward},
        {20, Picture::up},
    }};
    for (const auto& [index, picture] : images) {
        imlMenu.add(QString::number(index), icon(picture, Place::menu));
    }
}

} // namespace modMenuIcons
