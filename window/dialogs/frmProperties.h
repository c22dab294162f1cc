#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

#include "window/dialogs/propertyRows.h"

// The box with the properties of files and folders; its texts can be selected and copied.
class frmProperties final : public QDialog {
    Q_OBJECT

public:
    frmProperties(const PropertyRows& rows, QWidget* parent);

private:
    QFormLayout layout_;
    QDialogButtonBox buttons_;
    QPushButton cmdClose_;
};
