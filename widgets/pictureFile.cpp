#include "widgets/pictureFile.h"

#include <QBuffer>
#include <QPageLayout>
#include <cmath>

#include "platform/runtimeError.h"
#include "widgets/chartPicture.h"

namespace {

const QString title = QStringLiteral("Spannory");
constexpr double pageMargin = 10; // millimetres

QPageLayout pageLayout() {
    return {QPageSize(ChartPicture::paperOf(QLocale::system())), QPageLayout::Landscape,
            QMarginsF(pageMargin, pageMargin, pageMargin, pageMargin), QPageLayout::Millimeter};
}

} // namespace

QByteArray modPictureFile::png(QImage image, double ratio, const QString& description) {
    constexpr double inchesPerMetre = 1 / 0.0254;
    const int dots = static_cast<int>(std::lround(pixelsPerInch * ratio * inchesPerMetre));
    image.setDotsPerMeterX(dots);
    image.setDotsPerMeterY(dots);
    image.setText(QStringLiteral("Title"), title);
    image.setText(QStringLiteral("Description"), description);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
    return bytes;
}

void modPictureFile::preparePdf(QPdfWriter& writer) {
    writer.setTitle(title);
    writer.setCreator(title);
    writer.setResolution(static_cast<int>(pixelsPerInch));
    writer.setPageLayout(pageLayout());
}

QSizeF modPictureFile::pageRoom() {
    return pageLayout().paintRectPixels(static_cast<int>(pixelsPerInch)).size();
}
