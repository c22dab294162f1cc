#pragma once

#include <QList>
#include <QString>

// The contents of the help, as listed in the file spannory.hhc.
namespace modHelp {

struct ContentsEntry {
    QString title;
    QString page;  // a file name in the help folder
    int level = 0; // 0 is the outermost
};

// Reads the text of a contents file (nested lists of sitemap objects), in order. Anything unreadable is
// skipped.
[[nodiscard]] QList<ContentsEntry> readContents(const QString& text);

} // namespace modHelp
