#include "widgets/treemapPicture.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>

#include "platform/runtimeError.h"
#include "widgets/pictureFile.h"
#include "widgets/treemapPainter.h"

namespace {

using Format = ChartPicture::Format;
using Portion = ChartPicture::Portion;

constexpr double smallPrint = 1.5;  // units of the scene for a pixel of a page
constexpr double pixelsOnPaper = 2; // of the surfaces, per unit

QSizeF sizeFor(const Treemap& treemap, Portion portion, Format format) {
    if (portion == Portion::visible) {
        return treemap.size().expandedTo({1, 1});
    }
    return format == Format::pdf ? modPictureFile::pageRoom() * smallPrint
                                 : QSizeF(treemap.size().expandedTo(Treemap::usualSize));
}

// A screen's subpixels and pixel grid have no meaning in other pictures or on paper.
QFont fontFor(const Treemap& treemap, Format format) {
    QFont font(treemap.font());
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    if (format == Format::pdf) {
        font.setHintingPreference(QFont::PreferNoHinting);
    }
    return font;
}

QImage required(QImage image) {
    if (image.isNull()) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
    return image;
}

} // namespace

TreemapPicture::TreemapPicture(const Treemap& treemap, Portion portion, Format format, const QString& date)
    : format_(format), scene_(treemap.sceneFor(sizeFor(treemap, portion, format), fontFor(treemap, format))),
      ratio_(treemap.devicePixelRatioF()) {
    scene_.date = date;
}

QByteArray TreemapPicture::bytes() const {
    if (format_ == Format::pdf) {
        return pdf();
    }
    const QString description = scene_.map.tiles().empty()
                                    ? QString()
                                    : scene_.nameOf(0) + QStringLiteral(" \u00b7 ") + scene_.sizeOf(0);
    return modPictureFile::png(required(treemapPainter::picture(scene_, ratio_, {})), ratio_, description);
}

// Texts are texts on paper too.
QByteArray TreemapPicture::pdf() const {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    modPictureFile::preparePdf(writer);
    QPainter painter;
    if (!painter.begin(&writer)) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
    const QSizeF room = modPictureFile::pageRoom();
    const double scale = std::min(room.width() / scene_.size.width(), room.height() / scene_.size.height());
    painter.scale(scale, scale);
    painter.drawImage(QRectF(QPointF(), scene_.size),
                      required(treemapPainter::surfaces(scene_, pixelsOnPaper, {})));
    treemapPainter::paintTexts(painter, scene_, {});
    painter.end();
    return bytes;
}
