#include "views/widgets/qtText.h"

#include <QLocale>

#include "platform/paths.h"

QString modQt::nativePath(std::string_view internalPath) {
    return QString::fromStdString(platform::toNative(internalPath));
}

QCollator modQt::textOrder() {
    QLocale locale = QLocale::system().collation();
    if (locale.language() == QLocale::C) { // which knows no alphabetical order, only that of code points
        locale = QLocale(QLocale::English);
    }
    QCollator order(locale);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    return order;
}
