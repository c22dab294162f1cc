#pragma once

#include "app/window/menuIcons.h"
#include "app/window/menuIconsCanvas.h"

namespace modMenuIcons {

void draw(Picture picture, Canvas& canvas);

// Lays a check mark over the lower right corner of what is drawn.
void drawCheckMark(Canvas& canvas);

} // namespace modMenuIcons
