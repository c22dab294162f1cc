#include "widgets/textOrder.h"

#include <QLocale>

#include "platform/locale.h"

namespace {

QLocale language() {
    const QLocale locale = QLocale::system().collation();
    // "C" has no alphabetical order, only that of code points.
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

} // namespace

TextOrder::TextOrder(Digits digits)
    : collator_(language()), language_(collator_.locale().bcp47Name().toStdString()) {
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
    collator_.setNumericMode(digits == Digits::asNumbers);
}

int TextOrder::compare(std::string_view left, std::string_view right) const {
    return collator_.compare(QString::fromUtf8(left), QString::fromUtf8(right));
}

// If the system can make sort keys, they are used here: Qt swaps the bytes of theirs in pairs, and leaves
// uninitialised memory after them.
TextOrder::Key TextOrder::key(std::string_view text) const {
    if (auto key = platform::sortKey(text, language_, collator_.numericMode())) {
        return *std::move(key);
    }
    return collator_.sortKey(QString::fromUtf8(text));
}
