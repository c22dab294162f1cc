#include <QApplication>

int main(int argumentCount, char** arguments) {
    const QApplication application(argumentCount, arguments);
    return QApplication::exec();
}
