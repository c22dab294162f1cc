#include "widgets/treemapPainter.h"

#include <QFontMetricsF>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "widgets/treemapShading.h"

namespace {

using Kind = TreemapNode::Kind;

QRectF rectOf(const TreemapRect& area) {
    return {area.left, area.top, area.width, area.height};
}

QRgb mixed(QRgb colour, QRgb other, double share) {
    const auto part = [share](int from, int to) {
        return static_cast<int>(std::lround(from + (to - from) * share));
    };
    return qRgb(part(qRed(colour), qRed(other)), part(qGreen(colour), qGreen(other)),
                part(qBlue(colour), qBlue(other)));
}

// Of folders and their titles, which take turns, so that a folder can be told from the one around it.
QRgb frameColour(const ChartColours& colours, int level) {
    const QRgb base = mixed(colours.panelEnd, colours.labelText, colours.dark ? 0.12 : 0.08);
    return level % 2 == 0 ? base : mixed(base, colours.accentText, 0.14);
}

QRgb colourOf(const TreemapScene& scene, const TreemapTile& tile, const ChartColours& colours) {
    const QRgb own = tile.kind == Kind::folder ? 0 : scene.colours[tile.type];
    return own == 0 ? colours.restSlice : own;
}

void paintTitle(QPainter& painter, const TreemapScene& scene, std::uint32_t index,
                const ChartColours& colours) {
    const TreemapTile& tile = scene.map.tiles()[index];
    const bool isTop = tile.parent == TreemapTile::none;
    const QFont& font = isTop ? scene.titleFont : scene.font;
    const QFontMetricsF metrics(font);
    const double gap = scene.lineHeight / 4;
    const QRectF room(tile.area.left + gap, tile.area.top, tile.area.width - 2 * gap,
                      tile.inside.top - tile.area.top);
    const QString size = scene.sizeOf(index);
    const QString name = scene.nameOf(index);
    const double sizeWidth = std::ceil(metrics.horizontalAdvance(size));
    const double nameWidth = std::ceil(metrics.horizontalAdvance(name));
    const bool withSize =
        nameWidth + sizeWidth + 3 * gap <= room.width() || (isTop && room.width() >= sizeWidth * 3);
    constexpr int flags = Qt::AlignVCenter | Qt::TextSingleLine;
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(colours.labelText));
    const double nameRoom = room.width() - (withSize ? sizeWidth + 2 * gap : 0);
    painter.drawText(QRectF(room.topLeft(), QSizeF(nameRoom, room.height())), flags | Qt::AlignLeft,
                     metrics.elidedText(name, isTop ? Qt::ElideMiddle : Qt::ElideRight, nameRoom));
    if (withSize) {
        painter.setPen(QColor::fromRgb(colours.quietText));
        painter.drawText(room, flags | Qt::AlignRight, size);
    }
}

// The name of what is shown as a surface, if a good part of it fits.
void paintLabel(QPainter& painter, const TreemapScene& scene, std::uint32_t index,
                const ChartColours& colours) {
    const TreemapTile& tile = scene.map.tiles()[index];
    const double gap = scene.lineHeight / 4;
    const double room = tile.area.width - 2 * gap;
    if (room < 3 * scene.lineHeight || tile.area.height < 1.5 * scene.lineHeight) {
        return;
    }
    const QFontMetricsF metrics(scene.font);
    const QString name = scene.nameOf(index);
    constexpr double leastShare = 0.5;
    if (room < metrics.horizontalAdvance(name) * leastShare) {
        return;
    }
    QString text = metrics.elidedText(name, Qt::ElideMiddle, room);
    const bool twoLines = tile.area.height >= 3 * scene.lineHeight;
    if (twoLines) {
        const QString size = scene.sizeOf(index);
        text += metrics.horizontalAdvance(size) <= room ? QStringLiteral("\n") + size : QString();
    }
    const QRgb surface = colourOf(scene, tile, colours);
    constexpr int middling = 125;
    const bool onDark = qGray(surface) < middling;
    painter.setFont(scene.font);
    painter.setPen(onDark ? QColor(255, 255, 255, 235) : QColor(0, 0, 0, 225));
    painter.drawText(rectOf(tile.area), Qt::AlignCenter, text);
}

} // namespace

QImage treemapPainter::surfaces(const TreemapScene& scene, double ratio, const ChartColours& colours) {
    QImage image((scene.size * ratio).toSize().expandedTo({1, 1}), QImage::Format_RGB32);
    if (image.isNull()) {
        return image;
    }
    image.fill(QColor::fromRgb(colours.panelEnd));
    const std::vector<TreemapTile>& tiles = scene.map.tiles();
    QPainter painter(&image); // frames lie on whole pixels of the image
    std::vector<int> levels(tiles.size());
    const auto pixels = [ratio](const TreemapRect& area) {
        const QPoint from(static_cast<int>(std::lround(area.left * ratio)),
                          static_cast<int>(std::lround(area.top * ratio)));
        const QPoint to(static_cast<int>(std::lround(area.right() * ratio)),
                        static_cast<int>(std::lround(area.bottom() * ratio)));
        return QRect(from, to - QPoint(1, 1));
    };
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const TreemapTile& tile = tiles[i];
        levels[i] = tile.parent == TreemapTile::none ? 0 : levels[tile.parent] + 1;
        if (tile.count > 0) {
            const QRect frame = pixels(tile.area);
            const QRgb fill = frameColour(colours, levels[i]);
            painter.fillRect(frame, QColor::fromRgb(mixed(fill, colours.labelText, 0.35)));
            if (tile.isTitled) {
                painter.fillRect(frame.adjusted(1, 1, -1, -1), QColor::fromRgb(fill));
            }
        }
    }
    painter.end();
    for (const TreemapTile& tile : tiles) {
        if (tile.count == 0) {
            shadeTreemapTile(image, ratio, tile, colourOf(scene, tile, colours));
        }
    }
    for (const TreemapScene::LegendEntry& entry : scene.legend) {
        TreemapTile swatch;
        swatch.area = {entry.swatch.left(), entry.swatch.top(), entry.swatch.width(), entry.swatch.height()};
        shadeTreemapTile(image, ratio, swatch, entry.colour == 0 ? colours.restSlice : entry.colour);
    }
    return image;
}

void treemapPainter::paintTexts(QPainter& painter, const TreemapScene& scene, const ChartColours& colours) {
    painter.save();
    painter.setLayoutDirection(Qt::LeftToRight); // texts have their own direction
    const std::vector<TreemapTile>& tiles = scene.map.tiles();
    for (std::uint32_t i = 0; i < tiles.size(); ++i) {
        if (tiles[i].count == 0) {
            paintLabel(painter, scene, i, colours);
        } else if (tiles[i].isTitled) {
            paintTitle(painter, scene, i, colours);
        }
    }
    painter.setFont(scene.font);
    painter.setPen(QColor::fromRgb(colours.labelText));
    for (const TreemapScene::LegendEntry& entry : scene.legend) {
        painter.drawText(entry.label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, entry.name);
    }
    painter.restore();
}

QImage treemapPainter::picture(const TreemapScene& scene, double ratio, const ChartColours& colours) {
    QImage image = surfaces(scene, ratio, colours);
    if (!image.isNull()) {
        image.setDevicePixelRatio(ratio);
        QPainter painter(&image);
        paintTexts(painter, scene, colours);
    }
    return image;
}

void treemapPainter::paintMark(QPainter& painter, const TreemapTile& tile, const ChartColours& colours,
                               bool isSelected) {
    painter.save();
    painter.setBrush(Qt::NoBrush);
    const QRectF area = rectOf(tile.area);
    if (isSelected) {
        painter.setPen(
            QPen(QColor::fromRgb(chartLook::labelText), 4, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(area);
        painter.setPen(
            QPen(QColor::fromRgb(chartLook::selectedText), 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(area);
    } else {
        painter.setPen(QPen(QColor::fromRgb(colours.highlightStart), 1));
        painter.drawRect(area.adjusted(0.5, 0.5, -0.5, -0.5));
    }
    painter.restore();
}
