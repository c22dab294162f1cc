#include <QApplication>
#include <algorithm>
#include <memory>
#include <span>
#include <string_view>

#include "platform/commandLine.h"
#include "platform/environment.h"
#include "platform/terminal.h"
#include "widgets/applicationIcon.h"
#include "window/commandLine.h"
#include "window/dialogs/qtDialogs.h"
#include "window/openWindow.h"

namespace {

constexpr int statusFailed = 1;

// Help and version must also work on machines without a display.
bool asksForText(std::span<char*> arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](std::string_view argument) {
        return argument == "-h" || argument == "--help" || argument == "--version";
    });
}

// Writes the answer to the command line; false if it cannot be written.
bool wroteAnswer(const WindowOptions& options) {
    using platform::Stream;
    return platform::writeTo(options.exitStatus == 0 ? Stream::output : Stream::error, options.answer);
}

// Qt removes its own options from the arguments; the rest are the program's.
int run(int& argumentCount, char** arguments) {
    QApplication application(argumentCount, arguments);
    QApplication::setApplicationName(QStringLiteral("spannory"));
    QApplication::setApplicationVersion(QStringLiteral(SPANNORY_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("spannory"));
    QApplication::setWindowIcon(applicationIcon());
    const WindowOptions options = parseWindowCommandLine(argumentCount, arguments);
    QtDialogs dialogs;
    if (options.exitStatus) {
        if (!wroteAnswer(options)) { // a program with a window may have no output stream
            dialogs.message(QString::fromStdString(options.answer));
        }
        return *options.exitStatus;
    }
    const std::unique_ptr<frmMain> window = openWindow(options, dialogs);
    if (!window) {
        return statusFailed;
    }
    dialogs.setParent(window.get());
    return QApplication::exec();
}

} // namespace

int main(int argumentCount, char** arguments) {
    platform::keepSystemBoxesAway();
    platform::letTooLargeWritesFail();
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
                          "spannory: there is no display for the window; use spannory-scan instead.\n");
        return statusFailed;
    }
    return run(given.count(), given.arguments());
}
