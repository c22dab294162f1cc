#pragma once

#include <QImage>
#include <QPainter>

#include "widgets/chartColours.h"
#include "widgets/treemapScene.h"

// Paints a treemap. Stateless.
namespace treemapPainter {

// The whole picture with `ratio` pixels per unit of the scene, and no highlights. Null if there is not enough
// memory for it.
[[nodiscard]] QImage picture(const TreemapScene& scene, double ratio, const ChartColours& colours);

// The same without its names and its legend, which a document has as texts, and these.
[[nodiscard]] QImage surfaces(const TreemapScene& scene, double ratio, const ChartColours& colours);
void paintTexts(QPainter& painter, const TreemapScene& scene, const ChartColours& colours);

// The mark of the selected tile, or of that below the pointer.
void paintMark(QPainter& painter, const TreemapTile& tile, const ChartColours& colours, bool isSelected);

} // namespace treemapPainter
