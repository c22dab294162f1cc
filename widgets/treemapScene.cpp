#include "widgets/treemapScene.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "widgets/qtText.h"

namespace {

using Kind = TreemapNode::Kind;

constexpr double margin = 4; // around the map and the legend
constexpr int mostLegendLines = 2;
constexpr double mostLegendShare = 0.25; // of the height

} // namespace

TreemapScene::TreemapScene(std::shared_ptr<const TreemapTree> tree, const QSizeF& room, const QFont& text,
                           const std::vector<TreemapColours::Entry>& types)
    : size(room), font(text), titleFont(text) {
    const int pixels = std::max(QFontInfo(text).pixelSize(), 8);
    font.setPixelSize(pixels);
    titleFont.setPixelSize(pixels);
    titleFont.setWeight(QFont::Bold);
    lineHeight = std::ceil(QFontMetricsF(titleFont).height());
    if (!tree || tree->isEmpty()) {
        return;
    }
    colours.assign(tree->types().size(), 0);
    const double bottom = placeLegend(types);
    const TreemapRect area{margin, margin, size.width() - 2 * margin, bottom - margin};
    const TreemapLook look{lineHeight + 1, lineHeight * 2.5, lineHeight * 3};
    if (area.width > 0 && area.height > 0) {
        map = TreemapLayout(std::move(tree), area, look);
    }
}

// In as many lines as are needed and allowed. Types without room there have no colour, because nothing would
// name it. Returns the top of the legend.
double TreemapScene::placeLegend(const std::vector<TreemapColours::Entry>& types) {
    const QFontMetricsF metrics(font);
    const double gap = std::round(lineHeight / 3);
    const double swatch = std::round(lineHeight * 0.7);
    const double most = size.width() - 2 * margin;
    const int lines =
        std::min(mostLegendLines, static_cast<int>(size.height() * mostLegendShare / lineHeight));
    const auto widthOf = [&](const QString& name) {
        return swatch + gap + std::ceil(metrics.horizontalAdvance(name)) + 2 * gap;
    };
    const QString other = QStringLiteral("Other");
    double x = 0;
    int line = 0;
    const auto add = [&](const QString& name, QRgb colour) {
        const double top = line * lineHeight;
        legend.push_back(
            {name, colour, QRectF(margin + x, top + std::round((lineHeight - swatch) / 2), swatch, swatch),
             QRectF(margin + x + swatch + gap, top, widthOf(name) - swatch - 2 * gap, lineHeight)});
        x += widthOf(name);
    };
    if (lines > 0 && widthOf(other) <= most) {
        for (const TreemapColours::Entry& type : types) {
            const QString name =
                metrics.elidedText(type.name, Qt::ElideRight, std::max(most / 4, 6 * lineHeight));
            const auto fits = [&] {
                return x + widthOf(name) + (line + 1 == lines ? widthOf(other) : 0) <= most;
            };
            if (!fits() && x > 0 && line + 1 < lines) {
                ++line;
                x = 0;
            }
            if (!fits()) {
                break;
            }
            add(name, type.colour);
            colours.at(type.type) = type.colour;
        }
        if (x + widthOf(other) > most && line + 1 < lines) {
            ++line;
            x = 0;
        }
        add(other, 0);
    }
    const double top = size.height() - margin - (legend.empty() ? 0 : (line + 1) * lineHeight);
    for (LegendEntry& entry : legend) {
        entry.swatch.translate(0, top);
        entry.label.translate(0, top);
    }
    return legend.empty() ? top : top - margin;
}

QString TreemapScene::nameOf(std::uint32_t tile) const {
    const TreemapTile& shown = map.tiles()[tile];
    const TreemapTree& tree = *map.tree();
    if (shown.parent == TreemapTile::none) {
        return modQt::shownFolder(tree.folder());
    }
    if (shown.kind != Kind::gathered) {
        return modQt::shownName(tree.nodes()[shown.node].name);
    }
    const QString count = QString::fromStdString(modFormat::countText(shown.items));
    const bool one = shown.items == 1;
    if (shown.type == TreemapTree::mixed) {
        return count + (one ? QStringLiteral(" item") : QStringLiteral(" items"));
    }
    return count + QStringLiteral(" ") + modQt::shownName(tree.types()[shown.type].extension).toLower() +
           (one ? QStringLiteral(" file") : QStringLiteral(" files"));
}

QString TreemapScene::sizeOf(std::uint32_t tile) const {
    const QString text = QString::fromStdString(modLvw::formatSize(map.tiles()[tile].size));
    return tile > 0 || date.isEmpty() ? text : text + QStringLiteral(" \u00b7 ") + date;
}

QString TreemapScene::placeOf(std::uint32_t tile) const {
    const TreemapTile& shown = map.tiles()[tile];
    if (shown.kind == Kind::gathered) {
        return nameOf(tile) + QStringLiteral(" in ") + modQt::shownFolder(map.folderOf(tile));
    }
    return shown.kind == Kind::folder ? modQt::shownFolder(map.pathOf(tile))
                                      : modQt::shownPath(map.pathOf(tile));
}
