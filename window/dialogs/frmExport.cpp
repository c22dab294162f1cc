#include "window/dialogs/frmExport.h"

#include <QApplication>
#include <QCloseEvent>
#include <QStyle>

#include "export/clsExport.h"
#include "widgets/helpTopic.h"
#include "widgets/qtText.h"

frmExport::frmExport(clsExport& options, QWidget* parent)
    : QDialog(parent), options_(options), layout_(this), frameLayout_(&Frame1_) {
    setObjectName(QStringLiteral("frmExport"));
    setWindowTitle(QStringLiteral("Export"));
    modQt::setHelpTopic(*this, "exports.html");
    Frame1_.setObjectName(QStringLiteral("Frame1"));
    Frame1_.setTitle(QStringLiteral("Output Options"));
    optDetail_[0].setText(QStringLiteral("Detailed (shows all files)"));
    optDetail_[1].setText(QStringLiteral("Summary (by folder)"));
    for (std::size_t index = 0; index < optDetail_.size(); ++index) {
        optDetail_.at(index).setObjectName(QStringLiteral("optDetail%1").arg(index));
        frameLayout_.addWidget(&optDetail_.at(index));
    }
    QRadioButton& chosen = optDetail_[options.detail == clsExport::summary ? 1 : 0]; // the last choice
    chosen.setChecked(true);

    showFolder();

    cmdOK_.setObjectName(QStringLiteral("cmdOK"));
    cmdOK_.setText(QStringLiteral("OK"));
    cmdCancel_.setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel_.setText(QStringLiteral("Cancel"));
    buttons_.addButton(&cmdOK_, QDialogButtonBox::ActionRole);
    buttons_.addButton(&cmdCancel_, QDialogButtonBox::ActionRole);
    connect(&cmdOK_, &QPushButton::clicked, this, &frmExport::cmdOK_Click);
    connect(&cmdCancel_, &QPushButton::clicked, this, &frmExport::cmdCancel_Click);
    layout_.addWidget(&Frame1_);
    layout_.addWidget(&buttons_);
    cmdOK_.setDefault(true); // in the box, or Cancel stays the default once it had the focus
    layout_.setSizeConstraint(QLayout::SetFixedSize);
    chosen.setFocus(); // only possible now that it is in the box
}

void frmExport::showFolder() {
    constexpr int mostCharacters = 45;
    const bool isThere = !options_.folder.empty();
    chkSelectedFolder_.setObjectName(QStringLiteral("chkSelectedFolder"));
    chkSelectedFolder_.setText(QStringLiteral("Only the Selected Folder"));
    chkSelectedFolder_.setToolTip(QStringLiteral(
        "The report covers this folder and everything below it. XML reports always cover everything."));
    chkSelectedFolder_.setEnabled(isThere);
    chkSelectedFolder_.setChecked(isThere && options_.onlyFolder);
    const QString path = isThere ? modQt::shownFolder(options_.folder)
                                 : QStringLiteral("No folder that was scanned is selected.");
    lblSelectedFolder_.setObjectName(QStringLiteral("lblSelectedFolder"));
    lblSelectedFolder_.setTextFormat(Qt::PlainText);
    lblSelectedFolder_.setText(
        fontMetrics().elidedText(path, Qt::ElideMiddle, mostCharacters * fontMetrics().averageCharWidth()));
    lblSelectedFolder_.setToolTip(modQt::tip(path));
    lblSelectedFolder_.setEnabled(isThere);
    lblSelectedFolder_.setIndent(style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
                                 style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this));
    chkSelectedFolder_.setAccessibleDescription(path);
    frameLayout_.addWidget(&chkSelectedFolder_);
    frameLayout_.addWidget(&lblSelectedFolder_);
}

void frmExport::cmdOK_Click() {
    options_.detail = optDetail_[0].isChecked() ? clsExport::detailed : clsExport::summary;
    if (chkSelectedFolder_.isEnabled()) {
        options_.onlyFolder = chkSelectedFolder_.isChecked();
    }
    leave(false);
}

void frmExport::cmdCancel_Click() {
    leave(true);
}

void frmExport::leave(bool cancelled) {
    options_.cancelExport = cancelled;
    hide();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // lets the window behind be repainted
    done(cancelled ? Rejected : Accepted);
}

void frmExport::closeEvent(QCloseEvent* event) {
    done(Rejected);
    event->accept();
}
