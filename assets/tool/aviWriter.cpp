#include "assets/tool/aviWriter.h"

#include <QtEndian>

namespace {

// Low byte first.
template <class Number>
QByteArray number(Number value) {
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

template <class... Numbers>
QByteArray numbers(Numbers... values) {
    return (number(static_cast<quint32>(values)) + ...);
}

QByteArray chunk(const char* name, const QByteArray& content) {
    return QByteArray(name) + numbers(content.size()) + content + QByteArray(content.size() % 2, '\0');
}

QByteArray list(const char* kind, const QByteArray& content) {
    return chunk("LIST", QByteArray(kind) + content);
}

// Bottom line first; each line is padded to a multiple of four bytes.
QByteArray pixels(const QImage& picture, QRgb key) {
    const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
    QByteArray bytes;
    for (int y = image.height() - 1; y >= 0; --y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const QRgb colour = qAlpha(pixel) < 128 ? key : pixel;
            bytes.append(static_cast<char>(qBlue(colour)));
            bytes.append(static_cast<char>(qGreen(colour)));
            bytes.append(static_cast<char>(qRed(colour)));
        }
        while (bytes.size() % 4 != 0) {
            bytes.append('\0');
        }
    }
    return bytes;
}

} // namespace

QByteArray writeAvi(const std::vector<QImage>& frames, int framesPerSecond, QRgb key) {
    constexpr quint32 hasIndex = 0x10;
    constexpr quint32 isKeyFrame = 0x10;
    const int width = frames.front().width();
    const int height = frames.front().height();

    QByteArray movie;
    QByteArray index;
    qsizetype frameLength = 0;
    for (const QImage& frame : frames) {
        const QByteArray bytes = pixels(frame, key);
        frameLength = bytes.size();
        // Positions in the index count from the list's type.
        index += QByteArray("00db") + numbers(isKeyFrame, movie.size() + 4, frameLength);
        movie += chunk("00db", bytes);
    }

    const QByteArray mainHeader =
        numbers(1'000'000 / framesPerSecond, frameLength * framesPerSecond, 0, hasIndex, frames.size(), 0, 1,
                frameLength, width, height, 0, 0, 0, 0);
    const QByteArray streamHeader = QByteArray("vidsDIB ") +
                                    numbers(0, 0, 0, 1, framesPerSecond, 0, frames.size(), frameLength,
                                            0xffffffffU /* default quality */, 0) +
                                    number<qint16>(0) + number<qint16>(0) +
                                    number(static_cast<qint16>(width)) + number(static_cast<qint16>(height));
    const QByteArray bitmapHeader = numbers(40, width, height) + number<qint16>(1) + number<qint16>(24) +
                                    numbers(0, frameLength, 0, 0, 0, 0);
    const QByteArray headers =
        list("hdrl", chunk("avih", mainHeader) +
                         list("strl", chunk("strh", streamHeader) + chunk("strf", bitmapHeader)));
    return chunk("RIFF", QByteArray("AVI ") + headers + list("movi", movie) + chunk("idx1", index));
}
