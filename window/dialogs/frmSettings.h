#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>
#include <memory>
#include <vector>

#include "base/settingsSheet.h"
#include "window/dialogs/clsDialogs.h"
#include "window/dialogs/settingField.h"

// The dialog for the settings, made from the table of keys: exec() shows it modally. OK stores in
// settings.ini what was changed, and closes the dialog only if all of it could be stored. What is changed
// meanwhile is to be found in the sheet.
class frmSettings final : public QDialog {
    Q_OBJECT

public:
    // Neither is owned.
    frmSettings(SettingsSheet& sheet, clsDialogs& dialogs, QWidget* parent);
    ~frmSettings() override;

    void accept() override;

private:
    struct Page;

    void addPages();
    void addField(const modSettings::Key& key, QVBoxLayout& place);
    void layOutEnd();
    void setFixed(SettingField& field);
    void checkField(SettingField& field);
    void updateEnd();
    void chooseFile(SettingField& field);
    void restoreDefaults();
    void showFile();
    void goTo(SettingField& field);
    [[nodiscard]] int pageOf(const SettingField& field) const;

    SettingsSheet& sheet_;
    clsDialogs& dialogs_;
    QVBoxLayout layout_;
    QTabWidget tabs_;
    std::vector<std::unique_ptr<Page>> pages_;
    std::vector<std::unique_ptr<SettingField>> fields_;
    QHBoxLayout fileRow_;
    QLabel lblFile_;
    QLineEdit txtFile_;
    QPushButton cmdShowFile_;
    QLabel lblFileRemark_;
    QLabel lblComplaint_;
    QDialogButtonBox buttons_;
    QPushButton cmdOK_;
    QPushButton cmdCancel_;
    QPushButton cmdDefaults_;
};
