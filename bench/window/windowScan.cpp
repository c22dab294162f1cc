// window-scan APP-FOLDER PATH [TAB]: scans PATH in the main window, on the platform that QT_QPA_PLATFORM
// names (offscreen unless set), with the view of TAB (0 to 3) shown, and ends. For bench/compare-window.

#include <QApplication>
#include <cstdio>

#include "app/window/frmMain.h"
#include "platform/paths.h"

namespace {

// Nobody is there to answer.
class StandardErrorDialogs final : public clsDialogs {
public:
    void message(const QString& text) override { std::fprintf(stderr, "%s\n", qPrintable(text)); }
    [[nodiscard]] bool ask(const QString&) override { return false; }
    void about() override {}
};

} // namespace

int main(int argumentCount, char** arguments) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argumentCount, arguments);
    if (argumentCount < 3) {
        std::fprintf(stderr, "usage: window-scan APP-FOLDER PATH [TAB]\n");
        return 2;
    }
    StandardErrorDialogs dialogs;
    frmMain window(platform::toInternal(arguments[1]), dialogs);
    window.show();
    window.findChild<QTabWidget*>(QStringLiteral("XTab"))
        ->setCurrentIndex(argumentCount > 3 ? std::atoi(arguments[3]) : 0);
    QApplication::processEvents();
    window.openPath(arguments[2]);
    QApplication::processEvents();
    return 0;
}
