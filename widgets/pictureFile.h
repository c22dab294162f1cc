#pragma once

#include <QByteArray>
#include <QImage>
#include <QPdfWriter>
#include <QSizeF>
#include <QString>

// Pictures as contents of files.
namespace modPictureFile {

inline constexpr double pixelsPerInch = 96;

// A PNG picture with `ratio` pixels for each on the screen. Throws 7 if there is not enough memory.
[[nodiscard]] QByteArray png(QImage image, double ratio, const QString& description);

// Prepares a document with pages of paper, landscape, measured in pixels.
void preparePdf(QPdfWriter& writer);
// Such a page within its margins.
[[nodiscard]] QSizeF pageRoom();

} // namespace modPictureFile
