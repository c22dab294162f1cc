#pragma once

#include "window/menu/menuIcons.h"
#include "window/menu/menuIconsCanvas.h"

namespace modMenuIcons {

void draw(Picture picture, Canvas& canvas);

// Draws a check mark over the lower right corner of the picture.
void drawCheckMark(Canvas& canvas);

} // namespace modMenuIcons
