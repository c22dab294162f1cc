#pragma once

#include <QString>
#include <string_view>
#include <vector>

// One of the kinds of files in a file dialog.
struct FileFilter {
    QString shown;     // in the form that Qt's dialogs take: "HTML Files (*.html)"
    QString extension; // "html"; empty for all files
};

// Splits a filter string: "HTML Files (*.html)|*.html|All Files (*.*)|*.*".
[[nodiscard]] std::vector<FileFilter> fileFilters(std::string_view filter);

// The file name for another filter: an extension that belongs to one of the other filters is replaced by this
// one's.
[[nodiscard]] QString underFilter(const QString& fileName, const FileFilter& chosen,
                                  const std::vector<FileFilter>& all);
