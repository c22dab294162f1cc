#pragma once

#include <QString>
#include <string_view>
#include <vector>

// One choice among the kinds of files that a file dialog shows.
struct FileFilter {
    QString shown;     // as Qt's dialogs take it: "HTML Files (*.html)"
    QString extension; // "html"; empty for all files
};

// Takes a filter string apart: "HTML Files (*.html)|*.html|All Files (*.*)|*.*".
[[nodiscard]] std::vector<FileFilter> fileFilters(std::string_view filter);

// The file name under another filter: an extension that belongs to one of the others gives way to this one's.
[[nodiscard]] QString underFilter(const QString& fileName, const FileFilter& chosen,
                                  const std::vector<FileFilter>& all);
