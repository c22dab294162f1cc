#pragma once

#include "app/window/menuIcons.h"
#include "app/window/menuIconsCanvas.h"

namespace modMenuIcons {

void draw(Picture picture, Canvas& canvas);

} // namespace modMenuIcons
