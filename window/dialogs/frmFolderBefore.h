#pragma once

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QString>
#include <QStringList>
#include <QVBoxLayout>

// Which folder of a saved scan stands against the selected one.
struct FolderBeforeRequest {
    QString folder;      // the selected one, as it is shown
    QString file;        // the saved scan
    QStringList folders; // that were scanned there; the first is proposed
};

// Asks that. Any folder of the saved scan can be typed.
class frmFolderBefore final : public QDialog {
    Q_OBJECT

public:
    frmFolderBefore(const FolderBeforeRequest& request, QWidget* parent);

    [[nodiscard]] QString folder() const { return cboFolderBefore_.currentText(); }

private:
    QVBoxLayout layout_{this};
    QLabel lblQuestion_;
    QLabel lblFolderBefore_;
    QComboBox cboFolderBefore_;
    QDialogButtonBox buttons_{QDialogButtonBox::Ok | QDialogButtonBox::Cancel};
};
