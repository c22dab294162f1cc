#include "widgets/chartPicture.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "platform/runtimeError.h"
#include "widgets/chartPainting.h"
#include "widgets/pictureFile.h"

namespace {

using Format = ChartPicture::Format;
using Portion = ChartPicture::Portion;
using modPictureFile::pageRoom;

// If the chart on the screen is too small for any bars, the entire chart is drawn for this size.
constexpr QSizeF smallestWithRoom(400, 250);

ChartState pictured(const ChartState& shown, const std::vector<ChartEntry>& entries, Portion portion,
                    Format format, const QString& date) {
    ChartState state(shown);
    state.entries = entries;
    state.entire = portion == Portion::entire;
    state.date = date;
    state.colours = {}; // a document is white
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
    QSizeF size = shown.panel.size();
    if (format == Format::png) {
        size.setWidth(std::max(size.width(), count * ChartPicture::widthPerDataPoint));
    }
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
        if (format == Format::pdf) {
            frame = frameOf(pageRoom());
        } else if (!frame.hasRoom) {
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

QPageSize::PageSizeId ChartPicture::paperOf(const QLocale& locale) {
    using L = QLocale;
    constexpr std::array withLetter{
        L::UnitedStates, L::Canada, L::Mexico,    L::Philippines, L::Chile,      L::Colombia,   L::CostaRica,
        L::Guatemala,    L::Belize, L::Nicaragua, L::Panama,      L::PuertoRico, L::ElSalvador, L::Venezuela};
    const bool found =
        std::find(withLetter.begin(), withLetter.end(), locale.territory()) != withLetter.end();
    return found ? QPageSize::Letter : QPageSize::A4;
}

ChartPicture::ChartPicture(const FolderChart& chart, Portion portion, Format format, const QString& date)
    : ChartPicture(chart.state(), chart.size(), chart.devicePixelRatioF(), portion, format, date) {}

ChartPicture::ChartPicture(const ChartState& state, const QSizeF& size, double pixelRatio, Portion portion,
                           Format format, const QString& date)
    : format_(format), entries_(state.entries.begin(), state.entries.end()),
      state_(pictured(state, entries_, portion, format, date)),
      layout_(frameFor(state_, size, format), state_),
      pixelRatio_(allowedRatio(pixelRatio, layout_.frame().panel.size())) {}

// Pixels of a page for a unit of the layout. Only the entire chart continues on other pages.
double ChartPicture::pageScale() const {
    const QSizeF room = pageRoom();
    const double wide = room.width() / size().width();
    return state_.entire ? wide : std::min(wide, room.height() / size().height());
}

std::vector<double> ChartPicture::pageEnds() const {
    const double pageHeight = pageRoom().height() / pageScale();
    std::vector<double> ends;
    double start = 0;
    while (layout_.bars() != nullptr && size().height() - start > pageHeight + 1) {
        double end = start + pageHeight;
        for (const ChartBar& bar : layout_.bars()->bars) { // from the bottom
            const double box = bar.front.top() + layout_.bars()->depth.y();
            const double top = std::floor(std::min({box, bar.labelArea.top(), bar.mark.top()}));
            if (bar.hasTexts() && top <= end && top > start) {
                end = top;
                break;
            }
        }
        ends.push_back(end);
        start = end;
    }
    ends.push_back(size().height());
    return ends;
}

void ChartPicture::paint(QPainter& painter, const ChartLayout& layout) const {
    chartPainting::paintBackground(painter, layout);
    chartPainting::paintContent(painter, layout, state_);
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
    paint(painter, layout_);
    painter.end();
    return modPictureFile::png(std::move(image), pixelRatio_,
                               layout_.heading().name + layout_.heading().figures);
}

QByteArray ChartPicture::pdf() const {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    modPictureFile::preparePdf(writer);
    QPainter painter;
    if (!painter.begin(&writer)) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
    const double besides = pageRoom().width() / pageScale() - size().width();
    double start = 0;
    for (const double end : pageEnds()) {
        if (start > 0) {
            writer.newPage();
        }
        painter.save();
        painter.scale(pageScale(), pageScale());
        painter.translate(besides / 2, -start);
        painter.setClipRect(QRectF(0, start, size().width(), end - start));
        const double slack = 2 * layout_.frame().leastSlot(); // very thin bars may be parted
        const bool isAll = start == 0 && end == size().height();
        paint(painter, isAll ? layout_ : layout_.withBarsBetween(start - slack, end + slack));
        painter.restore();
        start = end;
    }
    painter.end();
    return bytes;
}
