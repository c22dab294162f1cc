#include "assets/tool/icoWriter.h"

#include <QBuffer>
#include <QDataStream>

QByteArray writeIco(const std::vector<QImage>& pictures) {
    constexpr qsizetype headLength = 6;
    constexpr qsizetype entryLength = 16;
    const auto count = static_cast<qsizetype>(pictures.size());

    QByteArray bytes;
    QDataStream directory(&bytes, QIODevice::WriteOnly);
    directory.setByteOrder(QDataStream::LittleEndian);
    directory << quint16{0} << quint16{1} << static_cast<quint16>(count);

    QByteArray content;
    for (const QImage& picture : pictures) {
        QByteArray png;
        QBuffer buffer(&png);
        picture.save(&buffer, "PNG");
        const auto side = static_cast<quint8>(picture.width()); // 256 is stored as 0
        directory << side << side << quint8{0} << quint8{0} << quint16{1} << quint16{32}
                  << static_cast<quint32>(png.size())
                  << static_cast<quint32>(headLength + count * entryLength + content.size());
        content += png;
    }
    return bytes + content;
}
