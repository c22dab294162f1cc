#include "window/dialogs/qtDialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "platform/environment.h"
#include "platform/runtimeError.h"
#include "widgets/helpTopic.h"
#include "window/dialogs/fileFilter.h"
#include "window/dialogs/frmAbout.h"
#include "window/dialogs/frmExport.h"
#include "window/dialogs/frmProperties.h"
#include "window/dialogs/frmSettings.h"

namespace {

// Shows the normal pointer while a box waits for an answer during long work.
class PlainPointer {
public:
    PlainPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~PlainPointer() { QApplication::restoreOverrideCursor(); }
    PlainPointer(const PlainPointer&) = delete;
    PlainPointer& operator=(const PlainPointer&) = delete;
};

int showBox(QWidget* parent, const QString& text, QMessageBox::Icon icon,
            QMessageBox::StandardButtons buttons, const QString& subject = {},
            QMessageBox::StandardButton onEnter = QMessageBox::NoButton) {
    const PlainPointer pointer;
    QMessageBox box(icon, QStringLiteral("Spannory"), text, buttons, parent);
    modQt::setHelpTopic(box, "trouble.html");
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.setInformativeText(subject);
    box.setDefaultButton(onEnter);
    // Which the box would take for markup if it looks like it; not in every version of Qt.
    if (auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
        label->setTextFormat(Qt::PlainText);
        // It would be as narrow as a short text above it.
        constexpr int mostCharacters = 90;
        const QFontMetrics metrics = label->fontMetrics();
        label->setMinimumWidth(std::min(metrics.horizontalAdvance(subject) + metrics.averageCharWidth(),
                                        mostCharacters * metrics.averageCharWidth()));
    }
    return box.exec();
}

} // namespace

void QtDialogs::message(const QString& text) {
    showBox(parent_, text, QMessageBox::Information, QMessageBox::Ok);
}

void QtDialogs::messageAbout(const QString& text, const QString& subject) {
    showBox(parent_, text, QMessageBox::Information, QMessageBox::Ok, subject);
}

bool QtDialogs::ask(const QString& text) {
    return showBox(parent_, text, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, {},
                   QMessageBox::Yes) == QMessageBox::Yes;
}

bool QtDialogs::confirm(const QString& text, const QString& subject) {
    return showBox(parent_, text, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, subject,
                   QMessageBox::No) == QMessageBox::Yes;
}

void QtDialogs::properties(const PropertyRows& rows) {
    frmProperties box(rows, parent_);
    box.exec();
}

void QtDialogs::about() {
    frmAbout box(parent_);
    box.exec();
}

void QtDialogs::exportOptions(clsExport& options) {
    frmExport box(options, parent_);
    box.exec();
}

// Boxes that it opens are above it.
void QtDialogs::settings(SettingsSheet& sheet) {
    frmSettings box(sheet, *this, parent_);
    QWidget* const parent = std::exchange(parent_, &box);
    box.exec();
    parent_ = parent;
}

QString QtDialogs::folderBefore(const FolderBeforeRequest& request) {
    const PlainPointer pointer;
    frmFolderBefore box(request, parent_);
    return box.exec() == QDialog::Accepted ? box.folder() : QString();
}

std::optional<ServerScan> QtDialogs::serverScan(const QString& url, clsUserInterface& userInterface) {
    frmServer box(url, userInterface, parent_);
    return box.exec() == QDialog::Accepted ? std::optional(box.chosen()) : std::nullopt;
}

std::string QtDialogs::saveFile(const FileRequest& request) {
    return chooseFile(request, true);
}

std::string QtDialogs::openFile(const FileRequest& request) {
    return chooseFile(request, false);
}

std::string QtDialogs::chooseFolder(const std::string& present) {
    QFileDialog dialog(QApplication::activeWindow());
    modQt::setHelpTopic(dialog, "history.html");
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    const QString folder = QString::fromStdString(present);
    dialog.setDirectory(QFileInfo(folder).isDir() ? folder : QDir::homePath());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        throw RuntimeError(errorNumber::dialogCancelled, "Cancel was selected");
    }
    return QDir::toNativeSeparators(dialog.selectedFiles().first()).toStdString();
}

bool QtDialogs::startProgramOf(const std::string& path) {
    return platform::openInAssociatedProgram(path);
}

std::string QtDialogs::chooseFile(const FileRequest& request, bool saves) {
    const std::vector<FileFilter> filters = fileFilters(request.filter);
    QFileDialog dialog(parent_);
    modQt::setHelpTopic(dialog, "exports.html");
    dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (!QFileInfo(folder_).isDir()) { // none yet, or it no longer exists
        folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    }
    dialog.setDirectory(QFileInfo(folder_).isDir() ? folder_ : QDir::homePath());
    QStringList shown;
    for (const FileFilter& filter : filters) {
        shown << filter.shown;
    }
    dialog.setNameFilters(shown);
    const auto follow = [&](const QString& chosen) {
        const auto filter =
            std::find_if(filters.begin(), filters.end(), [&](const auto& f) { return f.shown == chosen; });
        if (filter == filters.end()) {
            return;
        }
        dialog.setDefaultSuffix(filter->extension);
        dialog.selectFile(underFilter(dialog.selectedFiles().value(0), *filter, filters));
    };
    if (saves) {
        if (!platform::saveDialogFollowsFileType()) {
            QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
        }
        dialog.selectFile(QString::fromStdString(request.fileName));
        dialog.setDefaultSuffix(filters.front().extension);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        throw RuntimeError(errorNumber::dialogCancelled, "Cancel was selected");
    }
    folder_ = QFileInfo(dialog.selectedFiles().first()).path();
    return QDir::toNativeSeparators(dialog.selectedFiles().first()).toStdString();
}
