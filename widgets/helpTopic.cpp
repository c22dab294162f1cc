#include "widgets/helpTopic.h"

#include <QVariant>

namespace {

constexpr const char* property = "helpTopic";

} // namespace

void modQt::setHelpTopic(QObject& control, const char* page) {
    control.setProperty(property, QString::fromUtf8(page));
}

QString modQt::helpTopic(const QWidget& control) {
    QString page;
    for (const QWidget* around = &control; around != nullptr && page.isEmpty();
         around = around->isWindow() ? nullptr : around->parentWidget()) {
        page = around->property(property).toString();
    }
    return page;
}
