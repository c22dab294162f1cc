#pragma once

#include <QList>
#include <QString>

// The contents of the help, as the file spannory.hhc lists them.
namespace modHelp {

struct ContentsEntry {
    QString title;
    QString page;  // a file's name in the folder of the help
    int level = 0; // 0 outermost
};

// Reads the text of a contents file (nested lists of sitemap objects), in its order. What it cannot read it
// skips.
[[nodiscard]] QList<ContentsEntry> readContents(const QString& text);

} // namespace modHelp
