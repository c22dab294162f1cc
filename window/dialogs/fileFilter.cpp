#include "window/dialogs/fileFilter.h"

#include <QStringList>
#include <algorithm>

std::vector<FileFilter> fileFilters(std::string_view filter) {
    const QStringList parts =
        QString::fromUtf8(filter.data(), static_cast<qsizetype>(filter.size())).split(QLatin1Char('|'));
    std::vector<FileFilter> filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString kind = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
        const bool all = parts[i + 1] == QStringLiteral("*.*"); // also matches names without a dot
        const QString pattern = all ? QStringLiteral("*") : parts[i + 1];
        filters.push_back(
            {QStringLiteral("%1 (%2)").arg(kind, pattern), pattern.section(QLatin1Char('.'), 1)});
    }
    return filters;
}

QString underFilter(const QString& fileName, const FileFilter& chosen, const std::vector<FileFilter>& all) {
    const qsizetype dot = fileName.lastIndexOf(QLatin1Char('.'));
    const QString extension = dot < 0 ? QString() : fileName.mid(dot + 1);
    const bool known = std::any_of(all.begin(), all.end(), [&](const FileFilter& filter) {
        return !extension.isEmpty() && filter.extension.compare(extension, Qt::CaseInsensitive) == 0;
    });
    return known && !chosen.extension.isEmpty() ? fileName.left(dot + 1) + chosen.extension : fileName;
}
