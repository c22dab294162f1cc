#pragma once

#include <QFont>
#include <QRectF>
#include <QString>
#include <memory>
#include <vector>

#include "views/treemapLayout.h"
#include "widgets/treemapColours.h"

// Everything in a picture of a treemap and its place, regardless of highlights and of the device. Nothing in
// it refers to a widget, so another thread may paint it.
struct TreemapScene {
    struct LegendEntry {
        QString name;
        QRgb colour = 0; // 0 for all that has no colour of its own
        QRectF swatch;
        QRectF label;
    };

    // Nothing to show.
    TreemapScene() = default;
    TreemapScene(std::shared_ptr<const TreemapTree> tree, const QSizeF& room, const QFont& text,
                 const std::vector<TreemapColours::Entry>& types);

    QSizeF size;
    QFont font;
    QFont titleFont; // of the folder itself
    double lineHeight = 0;
    QString date; // behind the folder's size; may be empty
    TreemapLayout map;
    std::vector<LegendEntry> legend;
    std::vector<QRgb> colours; // by type; 0 for all that has none of its own

    // The name of an item as it is shown.
    [[nodiscard]] QString nameOf(std::uint32_t tile) const;
    // Its size; that of the folder itself with the date.
    [[nodiscard]] QString sizeOf(std::uint32_t tile) const;
    // Its name from the folder on that is shown, for whoever does not see where it lies.
    [[nodiscard]] QString placeOf(std::uint32_t tile) const;

private:
    double placeLegend(const std::vector<TreemapColours::Entry>& types);
};
