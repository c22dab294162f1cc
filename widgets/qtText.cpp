#include "widgets/qtText.h"

#include <QTextBoundaryFinder>
#include <QTextDocument>

#include "base/clsFile.h"
#include "platform/paths.h"

namespace {

// Such a character breaks the line, or turns round what stands beside the text.
bool isDisturbing(QChar c) {
    return (c >= QChar(u'\u2028') && c <= QChar(u'\u202E')) ||
           (c >= QChar(u'\u2066') && c <= QChar(u'\u2069'));
}

} // namespace

QString modQt::nativePath(std::string_view internalPath) {
    return QString::fromStdString(platform::toNative(internalPath));
}

QString modQt::shownText(std::string_view text) {
    constexpr char16_t signs = u'\u2400'; // for the characters U+0000 to U+001F, in order
    constexpr char16_t deleteSign = u'\u2421';
    constexpr char16_t substitute = u'\u241A';
    QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    for (QChar& c : result) {
        if (c < QChar(u' ')) {
            c = QChar(static_cast<char16_t>(signs + c.unicode()));
        } else if (c == QChar(u'\x7F')) {
            c = QChar(deleteSign);
        } else if (isDisturbing(c)) {
            c = QChar(substitute);
        }
    }
    return result;
}

QString modQt::shownName(std::string_view internalName) {
    return shownText(platform::displayName(internalName));
}

QString modQt::shownPath(std::string_view internalPath) {
    return shownText(platform::displayPath(internalPath));
}

QString modQt::shownFolder(std::string_view internalPath) {
    const bool isRoot = clsFile(internalPath).fullPathNoDrive().empty();
    const bool isCut = !isRoot && internalPath.ends_with('\\');
    return shownPath(internalPath.substr(0, internalPath.size() - (isCut ? 1 : 0)));
}

QString modQt::tip(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

QString modQt::inLines(const QString& text) {
    constexpr int lineLength = 64;
    QString result;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype start = 0;
    int length = 0;
    while (finder.toNextBoundary() >= 0) {
        if (++length == lineLength || finder.position() == text.size()) {
            result += (result.isEmpty() ? QString() : QStringLiteral("\n")) +
                      text.mid(start, finder.position() - start);
            start = finder.position();
            length = 0;
        }
    }
    return result;
}
