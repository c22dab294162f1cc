#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <span>
#include <string_view>

#include "app/applicationFolder.h"
#include "app/window/applicationIcon.h"
#include "app/window/commandLine.h"
#include "app/window/frmMain.h"
#include "app/window/qtDialogs.h"
#include "platform/commandLine.h"
#include "platform/environment.h"
#include "platform/runtimeError.h"
#include "platform/terminal.h"

namespace {

constexpr int statusFailed = 1;

// Help and version are wanted on machines without a display as well.
bool asksForText(std::span<char*> arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](std::string_view argument) {
        return argument == "-h" || argument == "--help" || argument == "--version";
    });
}

// Whether what the command line asks for could be written.
bool wroteAnswer(const WindowOptions& options) {
    using platform::Stream;
    return platform::writeTo(options.exitStatus == 0 ? Stream::output : Stream::error, options.answer);
}

// Qt takes its own options out of the arguments; what is left is the program's.
int run(int& argumentCount, char** arguments) {
    QApplication application(argumentCount, arguments);
    QApplication::setApplicationName(QStringLiteral("spannory"));
    QApplication::setApplicationVersion(QStringLiteral(SPANNORY_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("spannory"));
    QApplication::setWindowIcon(applicationIcon());
    const WindowOptions options = parseWindowCommandLine(argumentCount, arguments);
    QtDialogs dialogs;
    if (options.exitStatus) {
        if (!wroteAnswer(options)) { // a program with a window need not have anywhere to write
            dialogs.message(QString::fromStdString(options.answer));
        }
        return *options.exitStatus;
    }
    try {
        frmMain window(findApplicationFolder(options.applicationFolder), dialogs);
        dialogs.setParent(&window);
        window.show();
        if (!options.path.empty()) {
            QTimer::singleShot(0, &window, [&] { window.openPath(options.path); });
        }
        return QApplication::exec();
    } catch (const RuntimeError& error) {
        dialogs.message(QString::fromUtf8(error.what()));
        return statusFailed;
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    platform::keepSystemBoxesAway();
    platform::keepClosedStreamsClosed();
    platform::CommandLine given(argumentCount, arguments);
    if (asksForText({given.arguments(), static_cast<std::size_t>(given.count())})) {
        const WindowOptions asked = parseWindowCommandLine(given.count(), given.arguments());
        if (asked.exitStatus && wroteAnswer(asked)) {
            return *asked.exitStatus;
        }
    }
    if (!platform::hasDisplay() && !platform::environmentVariable("QT_QPA_PLATFORM")) {
        platform::writeTo(platform::Stream::error,
                          "spannory: there is no display for a window; spannory-scan needs none.\n");
        return statusFailed;
    }
    return run(given.count(), given.arguments());
}
