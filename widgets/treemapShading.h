#pragma once

#include <QImage>

#include "views/treemapLayout.h"

// Paints the surface of a tile with that colour, lit from above on the left, as a cushion. `image` has 32
// bits for each pixel, `ratio` of which make one of the layout.
void shadeTreemapTile(QImage& image, double ratio, const TreemapTile& tile, QRgb colour);
