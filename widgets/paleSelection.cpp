#include "widgets/paleSelection.h"

namespace {

constexpr float share = 0.35F; // of the highlight colour; the rest is the view's background

QColor mixed(const QColor& highlight, const QColor& ground) {
    const auto mix = [](float a, float b) { return share * a + (1 - share) * b; };
    return QColor::fromRgbF(mix(highlight.redF(), ground.redF()), mix(highlight.greenF(), ground.greenF()),
                            mix(highlight.blueF(), ground.blueF()));
}

} // namespace

void paleSelectionWithoutFocus(const QWidget& view, QStyleOptionViewItem& option) {
    if (view.hasFocus()) {
        return;
    }
    option.state &= ~QStyle::State_Active;
    QPalette& palette = option.palette;
    const QColor highlight = palette.color(QPalette::Active, QPalette::Highlight);
    // Some desktops have a separate colour for this, others use the same one for both.
    if (palette.color(QPalette::Inactive, QPalette::Highlight) == highlight) {
        palette.setColor(QPalette::Inactive, QPalette::Highlight,
                         mixed(highlight, palette.color(QPalette::Inactive, QPalette::Base)));
        palette.setColor(QPalette::Inactive, QPalette::HighlightedText,
                         palette.color(QPalette::Inactive, QPalette::Text));
    }
}
