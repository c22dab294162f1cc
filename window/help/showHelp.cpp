#include "window/help/showHelp.h"

#include <QFileInfo>
#include <string>

#include "base/modGlobal.h"
#include "platform/environment.h"
#include "platform/help.h"
#include "widgets/qtText.h"
#include "window/help/frmHelp.h"

namespace {

// Beside the program in the build tree, otherwise where it is installed.
QString pagesFolder() {
    const QString beside = modQt::nativePath(platform::executableFolder() + "help\\");
    return QFileInfo(beside).isDir() ? beside : modQt::nativePath(platform::shareFolder() + "help\\");
}

} // namespace

HelpCommand::HelpCommand(const QWidget& window) : window_(window) {}

HelpCommand::~HelpCommand() = default;

void HelpCommand::showHelp() {
    const std::string file = modGlobal::addBackslash(platform::executableFolder()) + "spannory.chm";
    if (platform::showCompiledHelp(window_.winId(), file)) {
        return;
    }
    if (!helpWindow_) {
        helpWindow_ = std::make_unique<frmHelp>(pagesFolder());
    }
    helpWindow_->setWindowState(helpWindow_->windowState() & ~Qt::WindowMinimized);
    helpWindow_->show();
    helpWindow_->raise();
    helpWindow_->activateWindow();
}
