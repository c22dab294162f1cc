#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>
#include <string_view>

// Pictures by key. Owned by the main window (imlFiles for shell icons, imlMenu for the menus).
class ImageList final : public QObject {
public:
    using QObject::QObject;

    [[nodiscard]] bool contains(const QString& key) const { return images_.contains(key); }
    void add(const QString& key, const QIcon& image) { images_.insert(key, image); }
    // A null icon if there is none.
    [[nodiscard]] QIcon image(const QString& key) const { return images_.value(key); }
    [[nodiscard]] qsizetype count() const { return images_.size(); }

private:
    QHash<QString, QIcon> images_;
};

namespace modSystemIcons {

// The shell's size flags: the variant of the small icon.
enum class SizeFlag { none = 0, openFolder = 2 };

// Puts the shell's icon for the path (an internal path; a folder's ends in "\") into the image list if it is
// not there yet, and returns its key: the icon's system index followed by "ICON", so that paths with the same
// icon share it. Empty if the shell has no icon. Looks at the file's name, not its content. Errors are logged
// quietly.
[[nodiscard]] QString getIcon(std::string_view path, ImageList& images, SizeFlag flag = SizeFlag::none);

} // namespace modSystemIcons
