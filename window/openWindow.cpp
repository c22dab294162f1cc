#include "window/openWindow.h"

#include <QTimer>

#include "base/applicationFolder.h"
#include "platform/runtimeError.h"

std::unique_ptr<frmMain> openWindow(const WindowOptions& options, clsDialogs& dialogs) {
    try {
        auto window = std::make_unique<frmMain>(findApplicationFolder(options.applicationFolder), dialogs);
        if (options.readOnly) {
            window->settings().forceReadOnly();
        }
        window->show();
        if (!options.path.empty()) {
            QTimer::singleShot(0, window.get(),
                               [&opened = *window, path = options.path] { opened.openPath(path); });
        }
        return window;
    } catch (const RuntimeError& error) {
        dialogs.message(QString::fromUtf8(error.what()));
        return nullptr;
    }
}
