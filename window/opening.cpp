#include "window/opening.h"

#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <utility>

#include "base/clsFile.h"
#include "db/ownDatabase.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

// By its name, as saved scans are called, or by its first bytes.
bool isDatabase(std::string_view path) {
    constexpr std::string_view extension = ".mdb";
    if (path.size() > extension.size() &&
        platform::equalIgnoringAsciiCase(path.substr(path.size() - extension.size()), extension)) {
        return true;
    }
    try {
        return platform::readStart(path, modDatabase::databaseStart.size()) == modDatabase::databaseStart;
    } catch (const RuntimeError&) { // it may not be read
        return false;
    }
}

} // namespace

Opening::Opening(Dependencies dependencies) : dependencies_(std::move(dependencies)) {
    dependencies_.window.setAcceptDrops(true);
    dependencies_.window.installEventFilter(this);
    connect(&dependencies_.selection, &FolderSelection::folderShown, this, [this](const std::string& key) {
        const bool isRoot = clsFile(key).fullPathNoDrive().empty() &&
                            !dependencies_.selection.holdsLoadedRows(); // which may be another machine's
        const bool isOpened = std::exchange(isOpening_, false);
        if (isOpened || isRoot) {
            Q_EMIT folderOpened(key);
        }
        if (isOpened && isTyped_) {
            Q_EMIT typedOpened();
        }
    });
    connect(&dependencies_.selection, &FolderSelection::rowsLoaded, this, [this] {
        if (isOpening_ && isTyped_) {
            Q_EMIT typedOpened();
        }
    });
}

Opening::~Opening() {
    dependencies_.window.removeEventFilter(this);
}

bool Opening::open(std::string_view typedPath) {
    dependencies_.pathBox.setText(
        QString::fromUtf8(typedPath.data(), static_cast<qsizetype>(typedPath.size())));
    missing_.clear();
    const bool before = std::exchange(isTyped_, false);
    go(typedPath, true);
    isTyped_ = before;
    return missing_ != typedPath;
}

void Opening::openTyped() {
    const bool before = std::exchange(isTyped_, true);
    go(dependencies_.pathBox.takePath(), false);
    isTyped_ = before;
}

void Opening::go(std::string_view typedPath, bool takesAnyFile) {
    const bool before = std::exchange(takesAnyFile_, takesAnyFile);
    isOpening_ = true;
    dependencies_.selection.cmdGo_Click(typedPath);
    isOpening_ = false;
    takesAnyFile_ = before;
}

// Only a regular file: a pipe or a device could be read for ever.
bool Opening::takeFile(std::string_view typedPath) {
    if (!platform::fileExists(typedPath) || !(takesAnyFile_ || isDatabase(typedPath))) {
        if (!platform::somethingExists(typedPath) &&
            platform::whyHidden(platform::toInternal(typedPath)).empty()) {
            missing_ = typedPath;
        }
        return false;
    }
    if (dependencies_.mayLoad()) {
        dependencies_.load(std::string(typedPath));
    } else {
        dependencies_.userInterface.message("A saved scan replaces the current one, so it cannot be loaded "
                                            "while a scan is running.  Cancel the scan (Esc) and try again.");
    }
    return true;
}

// The first folder being dragged, else the first file if it may be loaded now; empty if there is neither.
QString Opening::draggedPath(const QDropEvent& event) const {
    QString file;
    for (const QUrl& url : event.mimeData()->urls()) {
        const QFileInfo dragged(url.isLocalFile() ? url.toLocalFile() : QString());
        if (dragged.isDir()) {
            return url.toLocalFile();
        }
        if (file.isEmpty() && dragged.isFile()) {
            file = url.toLocalFile();
        }
    }
    return dependencies_.mayLoad() ? file : QString();
}

bool Opening::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop) {
        return false;
    }
    auto& dragged = *static_cast<QDropEvent*>(event);
    const QString path = draggedPath(dragged);
    dragged.setAccepted(!path.isEmpty());
    if (path.isEmpty()) {
        return true;
    }
    dragged.acceptProposedAction();
    if (event->type() == QEvent::Drop) {
        // The source of what is dragged waits for the end of this event; the work starts after it.
        QTimer::singleShot(0, this, [this, path = path.toStdString()] { open(path); });
    }
    return true;
}
