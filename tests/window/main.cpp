#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <QLocale>

#include "support/testSystem.h"

// The tests' program: one application object, on Qt's offscreen platform unless another one was asked for.
int main(int argumentCount, char** arguments) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (const std::string fonts = testSystem::fontFolder(); !fonts.empty()) {
        qputenv("QT_QPA_FONTDIR", QByteArray::fromStdString(fonts));
    }
    const QApplication application(argumentCount, arguments);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9)); // where it is, texts are of one size
    QLocale::setDefault(QLocale::c());
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
