#include "app/window/frmExport.h"

#include <QApplication>
#include <QCloseEvent>

#include "export/clsExport.h"

namespace {

constexpr int detailed = 1;
constexpr int summary = 2;

} // namespace

frmExport::frmExport(clsExport& options, QWidget* parent)
    : QDialog(parent), options_(options), layout_(this), frameLayout_(&Frame1_) {
    setObjectName(QStringLiteral("frmExport"));
    setWindowTitle(tr("Export"));
    Frame1_.setObjectName(QStringLiteral("Frame1"));
    Frame1_.setTitle(tr("Output Options"));
    optDetail_[0].setText(tr("Detailed (shows all files)"));
    optDetail_[1].setText(tr("Summary (by folder)"));
    for (std::size_t index = 0; index < optDetail_.size(); ++index) {
        optDetail_.at(index).setObjectName(QStringLiteral("optDetail%1").arg(index));
        frameLayout_.addWidget(&optDetail_.at(index));
    }
    QRadioButton& chosen = optDetail_[options.detail == summary ? 1 : 0]; // what was chosen last
    chosen.setChecked(true);

    cmdOK_.setObjectName(QStringLiteral("cmdOK"));
    cmdOK_.setText(tr("OK"));
    cmdOK_.setDefault(true);
    cmdCancel_.setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel_.setText(tr("Cancel"));
    buttons_.addButton(&cmdOK_, QDialogButtonBox::ActionRole);
    buttons_.addButton(&cmdCancel_, QDialogButtonBox::ActionRole);
    connect(&cmdOK_, &QPushButton::clicked, this, &frmExport::cmdOK_Click);
    connect(&cmdCancel_, &QPushButton::clicked, this, &frmExport::cmdCancel_Click);
    layout_.addWidget(&Frame1_);
    layout_.addWidget(&buttons_);
    layout_.setSizeConstraint(QLayout::SetFixedSize);
    chosen.setFocus(); // only now that it stands in the box
}

void frmExport::cmdOK_Click() {
    options_.detail = optDetail_[0].isChecked() ? detailed : summary;
    leave(false);
}

void frmExport::cmdCancel_Click() {
    leave(true);
}

void frmExport::leave(bool cancelled) {
    options_.cancelExport = cancelled;
    hide();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // the window behind is drawn again
    done(cancelled ? Rejected : Accepted);
}

void frmExport::closeEvent(QCloseEvent* event) {
    done(Rejected);
    event->accept();
}
