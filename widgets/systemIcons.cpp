#include "widgets/systemIcons.h"

#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QMimeDatabase>
#include <QPixmap>
#include <QStyle>
#include <optional>

#include "base/clsFile.h"
#include "base/errorTrap.h"
#include "platform/shellIcons.h"
#include "widgets/qtText.h"

namespace {

// An icon and its identity.
struct SystemIcon {
    QString name;
    QIcon icon;
};

// The first of these icons in the desktop's icon theme, otherwise the style's own.
SystemIcon firstIcon(const QStringList& names, QStyle::StandardPixmap standard) {
    for (const QString& name : names) {
        const QIcon icon = QIcon::fromTheme(name);
        if (!icon.pixmap(16).isNull()) { // a theme may contain pictures in an unreadable format
            return {name, icon};
        }
    }
    return {QStringLiteral("standard%1").arg(static_cast<int>(standard)),
            QApplication::style()->standardIcon(standard)};
}

SystemIcon folderIcon(modSystemIcons::SizeFlag flag) {
    if (flag == modSystemIcons::SizeFlag::openFolder) {
        return firstIcon({QStringLiteral("folder-open")}, QStyle::SP_DirOpenIcon);
    }
    return firstIcon({QStringLiteral("folder"), QStringLiteral("inode-directory")}, QStyle::SP_DirClosedIcon);
}

bool isProgram(std::string_view path) {
    const QFileInfo file(modQt::nativePath(path));
    return file.isFile() && file.isExecutable();
}

SystemIcon fileIcon(const QString& name, std::string_view path, bool hasExtension) {
    static const QMimeDatabase types;
    const QMimeType type = types.mimeTypeForFile(name, QMimeDatabase::MatchExtension);
    QStringList names;
    if (!type.isDefault()) {
        names << type.iconName() << type.genericIconName();
    } else if (!hasExtension && isProgram(path)) {
        names << QStringLiteral("application-x-executable");
    }
    names << QStringLiteral("text-x-generic") << QStringLiteral("unknown");
    return firstIcon(names, QStyle::SP_FileIcon);
}

// Remembers the system index of each icon, and the icon of each kind of path.
class IconCache {
public:
    QString key(std::string_view path, ImageList& images, modSystemIcons::SizeFlag flag) {
        if (path.ends_with('\\')) {
            const bool open = flag == modSystemIcons::SizeFlag::openFolder;
            return remembered(open ? QStringLiteral("\\open") : QStringLiteral("\\"), images,
                              [flag] { return folderIcon(flag); });
        }
        const clsFile file(path);
        const QString name = QString::fromUtf8(file.lastFolder());
        const QString extension =
            name.section(QLatin1Char('.'), 1).isEmpty() ? QString() : name.section(QLatin1Char('.'), -1);
        if (extension.isEmpty()) {
            return held(fileIcon(name, path, false), images);
        }
        return remembered(extension, images, [&] { return fileIcon(name, path, true); });
    }

private:
    template <class Find>
    QString remembered(const QString& kind, ImageList& images, Find find) {
        const auto known = kinds_.constFind(kind);
        if (known != kinds_.constEnd() && images.contains(*known)) {
            return *known;
        }
        return kinds_[kind] = held(find(), images);
    }

    QString held(const SystemIcon& icon, ImageList& images) {
        const auto index = indexes_.constFind(icon.name);
        const qsizetype number = index == indexes_.constEnd() ? indexes_.size() : *index;
        indexes_.insert(icon.name, number);
        QString key = QString::number(number) + QStringLiteral("ICON");
        if (!images.contains(key)) {
            images.add(key, icon.icon);
        }
        return key;
    }

    QHash<QString, qsizetype> indexes_; // by the icon's name
    QHash<QString, QString> kinds_;     // image keys by extension; folders by "\"
};

// The icon of the system's shell, under the number that the shell gives it.
QString shellIcon(std::string_view path, ImageList& images, modSystemIcons::SizeFlag flag) {
    const std::optional<int> index = platform::shellIconIndex(path, static_cast<unsigned>(flag));
    if (!index) {
        return {};
    }
    QString key = QString::number(*index) + QStringLiteral("ICON");
    if (!images.contains(key)) {
        const std::optional<platform::IconPicture> picture = platform::shellIconPicture(*index);
        if (!picture) {
            return {};
        }
        const QImage image(reinterpret_cast<const uchar*>(picture->pixels.data()), picture->size, // NOLINT
                           picture->size, QImage::Format_ARGB32_Premultiplied);
        images.add(key, QIcon(QPixmap::fromImage(image.copy()))); // an image does not own its pixels
    }
    return key;
}

} // namespace

QString modSystemIcons::getIcon(std::string_view path, ImageList& images, SizeFlag flag) {
    return modGlobal::trapped(
        "modSystemIcons", "getIcon",
        [&] {
            static IconCache cache;
            return platform::hasShellIcons() ? shellIcon(path, images, flag) : cache.key(path, images, flag);
        },
        modGlobal::Logging::quiet);
}
