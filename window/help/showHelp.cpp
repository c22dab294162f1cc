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

std::string compiledHelp() {
    return modGlobal::addBackslash(platform::executableFolder()) + "spannory.chm";
}

void bringToFront(frmHelp& help) {
    help.setWindowState(help.windowState() & ~Qt::WindowMinimized);
    help.show();
    help.raise();
    help.activateWindow();
}

} // namespace

HelpCommand::HelpCommand(const QWidget& window) : window_(window) {}

HelpCommand::~HelpCommand() = default;

frmHelp& HelpCommand::helpWindow() {
    if (!helpWindow_) {
        helpWindow_ = std::make_unique<frmHelp>(pagesFolder());
    }
    return *helpWindow_;
}

void HelpCommand::showHelp() {
    if (!platform::showCompiledHelp(window_.winId(), compiledHelp())) {
        bringToFront(helpWindow());
    }
}

void HelpCommand::showTopic(const QString& page, QWidget& over) {
    if (platform::showCompiledHelp(over.winId(), compiledHelp(), page.toStdString())) {
        return;
    }
    auto* help = over.findChild<frmHelp*>(QString(), Qt::FindDirectChildrenOnly);
    if (help == nullptr) {
        help = over.isModal() ? std::make_unique<frmHelp>(pagesFolder(), &over).release() // the dialog's
                              : &helpWindow();
    }
    help->showPage(page);
    bringToFront(*help);
}
