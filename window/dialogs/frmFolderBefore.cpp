#include "window/dialogs/frmFolderBefore.h"

#include <QCompleter>
#include <QPushButton>

#include "widgets/helpTopic.h"

frmFolderBefore::frmFolderBefore(const FolderBeforeRequest& request, QWidget* parent) : QDialog(parent) {
    constexpr int characters = 60;
    setObjectName(QStringLiteral("frmFolderBefore"));
    setWindowTitle(QStringLiteral("Compare with Saved Scan"));
    modQt::setHelpTopic(*this, "changes.html");
    lblQuestion_.setObjectName(QStringLiteral("lblQuestion"));
    lblQuestion_.setTextFormat(Qt::PlainText);
    lblQuestion_.setWordWrap(true);
    lblQuestion_.setText(
        QStringLiteral("%1 was not scanned in %2. Which folder there is it to be compared with?")
            .arg(request.folder, request.file));
    lblQuestion_.setMinimumWidth(characters * fontMetrics().averageCharWidth());
    lblFolderBefore_.setText(QStringLiteral("&Folder in the saved scan:"));
    lblFolderBefore_.setBuddy(&cboFolderBefore_);
    cboFolderBefore_.setObjectName(QStringLiteral("cboFolderBefore"));
    cboFolderBefore_.setAccessibleName(QStringLiteral("Folder in the saved scan"));
    cboFolderBefore_.setEditable(true);
    cboFolderBefore_.setInsertPolicy(QComboBox::NoInsert);
    cboFolderBefore_.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboFolderBefore_.setMinimumContentsLength(characters / 2);
    cboFolderBefore_.addItems(request.folders);
    cboFolderBefore_.completer()->setCompletionMode(QCompleter::PopupCompletion);
    cboFolderBefore_.completer()->setFilterMode(Qt::MatchContains);
    layout_.addWidget(&lblQuestion_);
    layout_.addWidget(&lblFolderBefore_);
    layout_.addWidget(&cboFolderBefore_);
    layout_.addWidget(&buttons_);
    QPushButton& ok = *buttons_.button(QDialogButtonBox::Ok);
    ok.setText(QStringLiteral("Compare"));
    ok.setDefault(true);
    const auto follow = [this, &ok] { ok.setEnabled(!folder().trimmed().isEmpty()); };
    connect(&cboFolderBefore_, &QComboBox::editTextChanged, this, follow);
    connect(&buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(&buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    follow();
    cboFolderBefore_.setFocus();
}
