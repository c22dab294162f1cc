#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

// The About box: exec() shows it modally; OK, Enter and Escape close it.
class frmAbout final : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent);

private:
    QGridLayout layout_;
    QHBoxLayout title_;
    QLabel picture_;
    QLabel lblName_;
    QLabel lblVersion_;
    QLabel lblText_;
    QDialogButtonBox buttons_;
    QPushButton cmdOK_;
};
