#include "widgets/chartPicture.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <cmath>

#include "platform/runtimeError.h"
#include "widgets/chartPainting.h"

namespace {

using Format = ChartPicture::Format;
using Portion = ChartPicture::Portion;

const QString title = QStringLiteral("Spannory");
constexpr double pixelsPerInch = 96;
constexpr double pointsPerInch = 72;
// If the chart on the screen is too small for any bars, the entire chart is drawn for this size.
constexpr QSizeF smallestWithRoom(400, 250);

ChartState pictured(const ChartState& shown, const std::vector<ChartEntry>& entries, Portion portion,
                    Format format) {
    ChartState state(shown);
    state.entries = entries;
    state.entire = portion == Portion::entire;
    state.hovered = -1;
    state.selected = -1;
    // A screen's subpixels and pixel grid have no meaning in other pictures or on paper.
    state.font.setStyleStrategy(QFont::NoSubpixelAntialias);
    if (format == Format::pdf) {
        state.font.setHintingPreference(QFont::PreferNoHinting);
    }
    return state;
}

// The size at which the entire chart has texts, margins and bars as large as on the screen, or the largest
// size allowed.
QSizeF entireSize(const ChartFrame& shown, const ChartState& state, Format format) {
    const auto count = static_cast<double>(state.entries.size());
    QSizeF size(std::max(shown.panel.width(), count * ChartPicture::widthPerDataPoint), shown.panel.height());
    if (state.style == ChartStyle::bar && count > shown.barRoom()) {
        const double slot = std::max(shown.plot.height() / shown.barRoom(), shown.leastSlot());
        size.rheight() += std::ceil(count * slot - shown.plot.height());
    }
    // The labels need the height, so the width is reduced first.
    const double longest = ChartPicture::longestSide;
    size.setHeight(std::min(size.height(), longest));
    size.setWidth(std::min(size.width(), longest));
    if (format == Format::png) {
        size.setWidth(std::min(size.width(), std::floor(ChartPicture::mostPixels / size.height())));
    }
    return size;
}

ChartFrame frameFor(const ChartState& state, const QSizeF& size, Format format) {
    const auto frameOf = [&state](const QSizeF& panel) {
        return ChartFrame(QRectF(QPointF(), panel), state);
    };
    ChartFrame frame = frameOf(size.expandedTo({1, 1}));
    if (state.entire && !state.entries.empty()) {
        if (!frame.hasRoom) {
            frame = frameOf(size.expandedTo(smallestWithRoom));
        }
        return frame.resized(entireSize(frame, state, format));
    }
    return frame;
}

// The wanted ratio, or the largest multiple of a quarter below it that keeps the picture within the allowed
// size.
double allowedRatio(double wanted, const QSizeF& size) {
    const double most = std::min(ChartPicture::longestSide / std::max(size.width(), size.height()),
                                 std::sqrt(ChartPicture::mostPixels / (size.width() * size.height())));
    return wanted <= most ? wanted : std::max(std::floor(most * 4) / 4, 0.25);
}

} // namespace

Format ChartPicture::formatOf(std::string_view fileName) {
    const QString name = QString::fromUtf8(fileName.data(), static_cast<qsizetype>(fileName.size()));
    return name.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive) ? Format::pdf : Format::png;
}

ChartPicture::ChartPicture(const FolderChart& chart, Portion portion, Format format)
    : ChartPicture(chart.state(), chart.size(), chart.devicePixelRatioF(), portion, format) {}

ChartPicture::ChartPicture(const ChartState& state, const QSizeF& size, double pixelRatio, Portion portion,
                           Format format)
    : format_(format), entries_(state.entries.begin(), state.entries.end()),
      state_(pictured(state, entries_, portion, format)), layout_(frameFor(state_, size, format), state_),
      pixelRatio_(allowedRatio(pixelRatio, layout_.frame().panel.size())) {}

QSize ChartPicture::page() const {
    const double pointsPerPixel =
        std::min(pointsPerInch / pixelsPerInch, longestPage / std::max(size().width(), size().height()));
    return (size() * pointsPerPixel).toSize().expandedTo({1, 1});
}

void ChartPicture::paint(QPainter& painter) const {
    chartPainting::paintBackground(painter, layout_);
    chartPainting::paintContent(painter, layout_, state_);
}

QByteArray ChartPicture::bytes() const {
    return format_ == Format::png ? png() : pdf();
}

QByteArray ChartPicture::png() const {
    QImage image((size() * pixelRatio_).toSize(), QImage::Format_RGB32);
    if (image.isNull()) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
    image.setDevicePixelRatio(pixelRatio_);
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter);
    painter.end();
    constexpr double inchesPerMetre = 1 / 0.0254;
    const int dots = static_cast<int>(std::lround(pixelsPerInch * pixelRatio_ * inchesPerMetre));
    image.setDotsPerMeterX(dots);
    image.setDotsPerMeterY(dots);
    image.setText(QStringLiteral("Title"), title);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
    return bytes;
}

QByteArray ChartPicture::pdf() const {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(title);
    writer.setCreator(title);
    writer.setResolution(static_cast<int>(pixelsPerInch));
    const QPageSize pageSize(QSizeF(page()), QPageSize::Point, QString(), QPageSize::ExactMatch);
    writer.setPageLayout(QPageLayout(pageSize, QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    QPainter painter;
    if (!painter.begin(&writer)) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
    // The page size is in whole points; the picture fills its page.
    const double unit = pixelsPerInch / pointsPerInch;
    painter.scale(page().width() * unit / size().width(), page().height() * unit / size().height());
    paint(painter);
    painter.end();
    return bytes;
}
