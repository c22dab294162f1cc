#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <QLocale>

#include "support/testSystem.h"

// The program of the window's tests: one application object, on Qt's offscreen platform unless another one is
// named.
int main(int argumentCount, char** arguments) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (const std::string fonts = testSystem::fontFolder(); !fonts.empty()) {
        qputenv("QT_QPA_FONTDIR", QByteArray::fromStdString(fonts));
    }
    const QApplication application(argumentCount, arguments);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9)); // there, all texts have the same size
    QLocale::setDefault(QLocale::c());
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
