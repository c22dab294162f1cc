#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

// The tests' program: one application object, on Qt's offscreen platform unless another one was asked for.
int main(int argumentCount, char** arguments) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argumentCount, arguments);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QLocale::setDefault(QLocale::c());
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
