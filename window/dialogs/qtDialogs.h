#pragma once

#include <QWidget>

#include "window/dialogs/clsDialogs.h"

// The real boxes, above the given window.
class QtDialogs final : public clsDialogs {
public:
    void setParent(QWidget* parent) { parent_ = parent; }

    void message(const QString& text) override;
    void messageAbout(const QString& text, const QString& subject) override;
    [[nodiscard]] bool ask(const QString& text) override;
    [[nodiscard]] bool confirm(const QString& text, const QString& subject) override;
    void properties(const PropertyRows& rows) override;
    void about() override;
    void exportOptions(clsExport& options) override;
    void settings(SettingsSheet& sheet) override;
    [[nodiscard]] QString folderBefore(const FolderBeforeRequest& request) override;
    [[nodiscard]] std::optional<ServerScan> serverScan(const QString& url,
                                                       clsUserInterface& userInterface) override;
    [[nodiscard]] std::string saveFile(const FileRequest& request) override;
    [[nodiscard]] std::string openFile(const FileRequest& request) override;
    [[nodiscard]] std::string chooseFolder(const std::string& present) override;
    [[nodiscard]] bool startProgramOf(const std::string& path) override;

private:
    [[nodiscard]] std::string chooseFile(const FileRequest& request, bool saves);

    QWidget* parent_ = nullptr;
    QString folder_; // the folder of the file chosen last
};
