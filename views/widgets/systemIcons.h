#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>
#include <string_view>

// Pictures by key. Owned by the main window (imlFiles for shell icons, imlMenu for the menus' own).
class ImageList final : public QObject {
public:
    using QObject::QObject;

    [[nodiscard]] bool contains(const QString& key) const { return images_.contains(key); }
    void add(const QString& key, const QIcon& image) { images_.insert(key, image); }
    // A null icon when there is none.
    [[nodiscard]] QIcon image(const QString& key) const { return images_.value(key); }
    [[nodiscard]] qsizetype count() const { return images_.size(); }

private:
    QHash<QString, QIcon> images_;
};

namespace modSystemIcons {

// The size flags of the shell: what is asked for beside the small icon.
enum class SizeFlag { none = 0, openFolder = 2 };

// Makes sure that the shell's icon for what is at the path (an internal path; a folder's ends in "\") is in
// the image list, and gives its key there: the icon's system index followed by "ICON", so that one icon is
// held once however many paths show it. Empty when the shell has none. Reads the file's name, not its
// content. Errors are logged quietly.
[[nodiscard]] QString getIcon(std::string_view path, ImageList& images, SizeFlag flag = SizeFlag::none);

} // namespace modSystemIcons
