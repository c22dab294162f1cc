#pragma once

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

class clsExport;

// The options of an export: exec() shows the box modally; its buttons write the choice into the options,
// which are not owned. Escape is Cancel. Odd on purpose: closing the box with the title bar runs neither
// button.
class frmExport final : public QDialog {
    Q_OBJECT

public:
    frmExport(clsExport& options, QWidget* parent);

    void reject() override { cmdCancel_Click(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void showFolder();
    void cmdOK_Click();
    void cmdCancel_Click();
    void leave(bool cancelled);

    clsExport& options_;
    QVBoxLayout layout_;
    QGroupBox Frame1_;
    QVBoxLayout frameLayout_;
    std::array<QRadioButton, 2> optDetail_; // 0: detailed, 1: summary
    QCheckBox chkSelectedFolder_;
    QLabel lblSelectedFolder_; // its path, or that there is none
    QDialogButtonBox buttons_;
    QPushButton cmdOK_;
    QPushButton cmdCancel_;
};
