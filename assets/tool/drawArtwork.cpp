// spannory-artwork FOLDER: draws the artwork of the program and the desktop into the folder: 2.avi,
// spannory.ico and icons/hicolor/<n>x<n>/apps/spannory.png. Part of the build; needs no display.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "assets/tool/aviWriter.h"
#include "assets/tool/icoWriter.h"
#include "widgets/applicationIcon.h"

namespace {

constexpr int frameCount = 24;
constexpr int framesPerSecond = 15;
constexpr int frameSide = 64; // shown at half size, or at full size on a screen of twice the density
constexpr QRgb keyColour = 0xffff00ff;

// The bars rise and fall one after another, and a light runs through the gauge.
QImage busyFrame(int number) {
    const double turn = static_cast<double>(number) / frameCount;
    ApplicationMark mark;
    mark.moving = true;
    for (std::size_t i = 0; i < mark.bars.size(); ++i) {
        const double phase = turn - static_cast<double>(i) / 4;
        mark.bars.at(i) = 0.58 - 0.42 * std::cos(2 * std::numbers::pi * phase);
    }
    // The light enters and leaves at the ends.
    constexpr double lightLength = 0.4;
    mark.gaugeTo = turn * (1 + lightLength);
    mark.gaugeFrom = mark.gaugeTo - lightLength;

    QImage frame(frameSide, frameSide, QImage::Format_ARGB32_Premultiplied);
    frame.fill(Qt::transparent);
    QPainter painter(&frame);
    paintApplicationMark(painter, frameSide, mark);
    return frame;
}

bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

bool drawAnimation(const QDir& folder) {
    std::vector<QImage> frames;
    frames.reserve(frameCount);
    for (int i = 0; i < frameCount; ++i) {
        frames.push_back(busyFrame(i));
    }
    return writeFile(folder.filePath(QStringLiteral("2.avi")), writeAvi(frames, framesPerSecond, keyColour));
}

bool drawIcons(const QDir& folder) {
    std::vector<QImage> iconFile;
    for (const int side : {16, 24, 32, 48, 64, 128, 256, 512}) {
        const QImage image = applicationImage(side);
        if (side <= 256) {
            iconFile.push_back(image);
        }
        const QString sizeFolder = QStringLiteral("icons/hicolor/%1x%1/apps").arg(side);
        if (!folder.mkpath(sizeFolder) ||
            !image.save(folder.filePath(sizeFolder + QStringLiteral("/spannory.png")))) {
            return false;
        }
    }
    return writeFile(folder.filePath(QStringLiteral("spannory.ico")), writeIco(iconFile));
}

} // namespace

int main(int argumentCount, char** arguments) {
    const QCoreApplication application(argumentCount, arguments);
    const QStringList given = QCoreApplication::arguments();
    if (given.size() != 2) {
        std::fputs("usage: spannory-artwork FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(given.at(1));
    if (!folder.mkpath(QStringLiteral(".")) || !drawAnimation(folder) || !drawIcons(folder)) {
        std::fprintf(stderr, "spannory-artwork: cannot write into %s\n", qUtf8Printable(folder.path()));
        return 1;
    }
    return 0;
}
