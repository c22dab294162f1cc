#include "widgets/treemapShading.h"

#include <algorithm>
#include <cmath>

namespace {

// Towards the light, and how bright a surface is that no light falls on.
constexpr float lightX = -0.098F;
constexpr float lightY = -0.195F;
constexpr float lightZ = 0.976F;
constexpr float ambient = 0.45F;
constexpr float full = 1.12F; // a surface that faces the light is a little brighter than its colour

} // namespace

void shadeTreemapTile(QImage& image, double ratio, const TreemapTile& tile, QRgb colour) {
    const auto pixel = [ratio](double place, int end) {
        return std::clamp(static_cast<int>(std::lround(place * ratio)), 0, end);
    };
    const int left = pixel(tile.area.left, image.width());
    const int right = pixel(tile.area.right(), image.width());
    const int top = pixel(tile.area.top, image.height());
    const int bottom = pixel(tile.area.bottom(), image.height());
    const auto red = static_cast<float>(qRed(colour));
    const auto green = static_cast<float>(qGreen(colour));
    const auto blue = static_cast<float>(qBlue(colour));
    for (int y = top; y < bottom; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        const auto slopeY = static_cast<float>(tile.cushion[1] + tile.cushion[3] * (y + 0.5) / ratio);
        for (int x = left; x < right; ++x) {
            const auto slopeX = static_cast<float>(tile.cushion[0] + tile.cushion[2] * (x + 0.5) / ratio);
            const float facing = (lightZ - lightX * slopeX - lightY * slopeY) /
                                 std::sqrt(1 + slopeX * slopeX + slopeY * slopeY);
            const float light = ambient + (full - ambient) * std::max(facing, 0.0F);
            const auto lit = [light](float part) { return static_cast<int>(std::min(part * light, 255.0F)); };
            line[x] = qRgb(lit(red), lit(green), lit(blue));
        }
    }
}
