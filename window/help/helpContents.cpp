#include "window/help/helpContents.h"

#include <QRegularExpression>

namespace modHelp {

QList<ContentsEntry> readContents(const QString& text) {
    static const QRegularExpression token(
        QStringLiteral(R"re((<UL>)|(</UL>)|(</OBJECT>)|<param\s+name="(Name|Local)"\s+value="([^"]*)")re"),
        QRegularExpression::CaseInsensitiveOption);
    QList<ContentsEntry> entries;
    ContentsEntry entry;
    int depth = 0;
    for (auto matches = token.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.hasCaptured(1)) {
            ++depth;
        } else if (match.hasCaptured(2)) {
            --depth;
        } else if (match.hasCaptured(3)) {
            if (!entry.title.isEmpty() && !entry.page.isEmpty() && depth > 0) {
                entry.level = depth - 1;
                entries.append(entry);
            }
            entry = {};
        } else {
            const bool isName = match.captured(4).compare(QStringLiteral("Name"), Qt::CaseInsensitive) == 0;
            (isName ? entry.title : entry.page) = match.captured(5);
        }
    }
    return entries;
}

} // namespace modHelp
