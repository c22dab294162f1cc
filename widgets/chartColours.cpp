#include "widgets/chartColours.h"

namespace {

QRgb mixed(const QColor& colour, const QColor& other, float share) {
    return QColor::fromRgbF(colour.redF() * (1 - share) + other.redF() * share,
                            colour.greenF() * (1 - share) + other.greenF() * share,
                            colour.blueF() * (1 - share) + other.blueF() * share)
        .rgb();
}

QRgb transparent(const QColor& colour, int alpha) {
    return qRgba(colour.red(), colour.green(), colour.blue(), alpha);
}

} // namespace

ChartColours ChartColours::of(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    ChartColours colours;
    if (text.lightness() <= window.lightness()) {
        return colours;
    }
    const QColor accent = QColor::fromRgb(chartLook::accent);
    const auto towardsText = [&](float share) { return mixed(window, text, share); };
    colours.dark = true;
    colours.panelStart = towardsText(0.1F);
    colours.panelEnd = towardsText(0);
    colours.panelBorder = mixed(accent, text, 0.2F);
    colours.backWallStart = towardsText(0.04F);
    colours.backWallEnd = mixed(window, QColor::fromRgb(chartLook::backWallEnd), 0.4F);
    colours.sideWallStart = towardsText(0.12F);
    colours.sideWallEnd = towardsText(0.2F);
    colours.wallEdge = towardsText(0.42F);
    colours.gridLine = transparent(text, 44);
    colours.zeroLine = transparent(text, 150);
    colours.accentText = mixed(accent, text, 0.72F);
    colours.titleText = colours.accentText;
    colours.labelText = text.rgb();
    colours.quietText = towardsText(0.88F);
    colours.selectedFill = accent.rgb();
    colours.hoveredFill = mixed(window, accent, 0.5F);
    colours.barStart = towardsText(0.8F);
    colours.barEnd = towardsText(0.48F);
    colours.barEdge = towardsText(0.12F);
    colours.thinStart = towardsText(0.55F);
    colours.thinEnd = towardsText(0.75F);
    colours.highlightStart = mixed(accent, text, 0.75F);
    colours.highlightEnd = mixed(accent, text, 0.25F);
    colours.markFill = towardsText(0.08F);
    colours.markEdge = towardsText(0.45F);
    colours.restSlice = towardsText(0.5F);
    colours.sliceEdge = colours.panelEnd;
    return colours;
}

QColor ChartColours::lineOf(const QColor& slice) const {
    return dark ? slice.lighter(125) : slice.darker(150);
}
