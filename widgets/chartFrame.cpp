#include "widgets/chartFrame.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "views/chartPaging.h"
#include "widgets/chartLabel.h"
#include "widgets/chartLook.h"

namespace {

QFont fontOf(const QFont& base, double pixels, QFont::Weight weight) {
    QFont font(base);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
    font.setWeight(weight);
    return font;
}

// The texts of a chart that fills a large screen grow with it, but less than the chart does.
double scaleFor(const QSizeF& size) {
    return std::clamp(std::sqrt(std::min(size.width() / 1100, size.height() / 750)), 1.0, 2.0);
}

} // namespace

ChartFrame::ChartFrame(const QRectF& rectangle, const ChartState& state)
    : panel(rectangle), scale(scaleFor(rectangle.size())) {
    const QFont& font = state.font;
    const double textSize = std::max(QFontInfo(font).pixelSize(), 8) * scale;
    titleFont = fontOf(font, textSize * chartLook::titleSize, QFont::Bold);
    labelFont = fontOf(font, textSize, QFont::Bold);
    markFont = fontOf(font, textSize * 0.92, QFont::Normal);
    labelHeight = std::ceil(QFontMetricsF(labelFont).height());
    labelWidth = labelWidthFor(state);
    markHeight = std::ceil(QFontMetricsF(markFont).height()) + length(2);

    const double left = panel.left() + std::round(panel.width() * chartLook::leftMargin);
    const double right = panel.right() - std::round(panel.width() * chartLook::rightMargin);
    const double top = panel.top() + std::round(panel.height() * chartLook::topMargin);
    const double bottom = panel.bottom() - std::round(panel.height() * chartLook::bottomMargin);
    const double gap = std::round(length(chartLook::gap));
    title = QRectF(panel.left(), top, panel.width(), std::ceil(QFontMetricsF(titleFont).height()) + gap);
    if (!state.folder.isEmpty() && panel.height() >= length(chartLook::leastWithHeading)) {
        heading = QRectF(left, title.bottom() - gap / 2, right - left, markHeight);
    }
    const double headEnd = std::max(title.bottom(), heading.bottom());
    pieRoom = QRectF(QPointF(left, headEnd + gap), QPointF(right, bottom));

    const QRectF room(QPointF(left + labelWidth + gap, headEnd + gap / 2),
                      QPointF(right, bottom - labelHeight - gap));
    const double offset = std::round(std::min(room.width(), room.height()) * chartLook::depth);
    depth = QPointF(offset, -offset);
    plot = room.adjusted(0, offset, -offset, 0);
    findRoom();
}

// As wide as the longest name needs, within bounds. Only the first names count if there are many; the others
// may be cut, but the walls stay where they are while the chart is scrolled.
double ChartFrame::labelWidthFor(const ChartState& state) const {
    constexpr std::size_t mostNames = 3 * std::size_t{ChartPaging::mostVisible};
    const double least = std::min(length(chartLook::labelLength), panel.width() * chartLook::leastLabelShare);
    const double most = std::max(panel.width() * chartLook::mostLabelShare, least);
    const std::size_t names = state.style == ChartStyle::bar ? std::min(state.entries.size(), mostNames) : 0;
    const QFontMetricsF metrics(labelFont);
    double widest = 0;
    for (const ChartEntry& entry : state.entries.last(names)) {
        if (widest >= most) {
            break;
        }
        widest = std::max(widest, metrics.horizontalAdvance(chartLabel(entry)));
    }
    return std::round(std::clamp(std::ceil(widest), least, most));
}

void ChartFrame::findRoom() {
    hasRoom = plot.width() >= 60 && plot.height() >= markHeight;
}

ChartFrame ChartFrame::resized(const QSizeF& size) const {
    ChartFrame result(*this);
    const QSizeF more = size - panel.size();
    result.panel.setSize(size);
    result.title.setWidth(size.width());
    if (!heading.isNull()) {
        result.heading.setWidth(heading.width() + more.width());
    }
    result.plot.setSize(plot.size() + more);
    result.pieRoom.setSize(pieRoom.size() + more);
    result.findRoom();
    return result;
}

int ChartFrame::barRoom() const {
    return std::clamp(static_cast<int>(plot.height() / leastSlot()), 1, ChartPaging::mostVisible);
}
