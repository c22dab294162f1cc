// window-scan APP-FOLDER PATH [TAB [COMMAND FILE]]: scans PATH in the main window, on the platform named by
// QT_QPA_PLATFORM (offscreen by default), with tab TAB (0 to 3) shown, and exits. Used by
// bench/compare-window. With a menu command (ExportHTML, LoadMDB, ...) and the file to write or read, runs
// the command and prints how long it took, and the longest time without event handling.

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <string>

#include "platform/paths.h"
#include "window/frmMain.h"

namespace {

// Nobody is there to answer.
class StandardErrorDialogs final : public clsDialogs {
public:
    void message(const QString& text) override { std::fprintf(stderr, "%s\n", qPrintable(text)); }
    void messageAbout(const QString& text, const QString&) override { message(text); }
    [[nodiscard]] bool ask(const QString&) override { return false; }
    [[nodiscard]] bool confirm(const QString&, const QString&) override { return false; }
    void properties(const PropertyRows&) override {}
    void about() override {}
    void exportOptions(clsExport&) override {}
    void settings(SettingsSheet&) override {}
    [[nodiscard]] QString folderBefore(const FolderBeforeRequest&) override { return {}; }
    [[nodiscard]] std::optional<ServerScan> serverScan(const QString&, clsUserInterface&) override {
        return {};
    }
    [[nodiscard]] std::string saveFile(const FileRequest&) override { return file; }
    [[nodiscard]] std::string openFile(const FileRequest&) override { return file; }
    [[nodiscard]] std::string chooseFolder(const std::string&) override { return file; }
    [[nodiscard]] bool startProgramOf(const std::string&) override { return true; }

    std::string file;
};

void measure(const frmMain& window, const char* command) {
    QElapsedTimer whole;
    QElapsedTimer sinceEvents;
    qint64 longest = 0;
    QTimer events;
    QObject::connect(&events, &QTimer::timeout, [&] { longest = std::max(longest, sinceEvents.restart()); });
    events.start(0);
    whole.start();
    sinceEvents.start();
    window.findChild<QAction*>(QString::fromUtf8(command))->trigger();
    longest = std::max(longest, sinceEvents.elapsed());
    std::printf("%s: %lld ms, at most %lld ms without events\n", command,
                static_cast<long long>(whole.elapsed()), static_cast<long long>(longest));
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argumentCount, arguments);
    if (argumentCount < 3) {
        std::fprintf(stderr, "usage: window-scan APP-FOLDER PATH [TAB [COMMAND FILE]]\n");
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
    if (argumentCount > 5) {
        dialogs.file = arguments[5];
        measure(window, arguments[4]);
    }
    return 0;
}
