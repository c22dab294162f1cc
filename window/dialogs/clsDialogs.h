#pragma once

#include <QString>
#include <optional>
#include <string>

#include "window/dialogs/frmFolderBefore.h"
#include "window/dialogs/frmServer.h"
#include "window/dialogs/propertyRows.h"

class SettingsSheet;
class clsExport;

// The settings of a file dialog.
struct FileRequest {
    std::string filter;   // descriptions and patterns alternately, separated by "|"
    std::string fileName; // the proposed name; empty for none
};

// What the main window opens beside itself: its modal boxes, and files in their applications. An interface,
// so that tests can answer.
class clsDialogs {
public:
    virtual ~clsDialogs() = default;

    // A message with an OK button and the program's title.
    virtual void message(const QString& text) = 0;
    // The same, with what it is about below the text (plain text; may be empty).
    virtual void messageAbout(const QString& text, const QString& subject) = 0;
    // A Yes/No question; true for Yes, which Enter chooses.
    [[nodiscard]] virtual bool ask(const QString& text) = 0;
    // The same before something is lost, which the subject may name below the text: Enter chooses No.
    [[nodiscard]] virtual bool confirm(const QString& text, const QString& subject) = 0;
    // A box with the properties of files and folders.
    virtual void properties(const PropertyRows& rows) = 0;
    // The About box.
    virtual void about() = 0;
    // The options box of an export, which changes the options (frmExport).
    virtual void exportOptions(clsExport& options) = 0;
    // The settings (frmSettings), which stores those that are changed.
    virtual void settings(SettingsSheet& sheet) = 0;

    // Which folder of a saved scan stands against the selected one (frmFolderBefore); empty for Cancel.
    [[nodiscard]] virtual QString folderBefore(const FolderBeforeRequest& request) = 0;

    // A scan on a server (frmServer), beginning with the server at this URL, which may be empty; nothing for
    // Cancel. Events are handled by the interface.
    [[nodiscard]] virtual std::optional<ServerScan> serverScan(const QString& url,
                                                               clsUserInterface& userInterface) = 0;

    // The file dialogs: return the chosen path as a user would type it, or throw
    // errorNumber::dialogCancelled. The save dialog does not ask before overwriting a file; the caller does.
    [[nodiscard]] virtual std::string saveFile(const FileRequest& request) = 0;
    [[nodiscard]] virtual std::string openFile(const FileRequest& request) = 0;
    // The same for a folder; the box begins with the given one, which may be empty.
    [[nodiscard]] virtual std::string chooseFolder(const std::string& present) = 0;

    // Starts the application for a file (platform::openInAssociatedProgram); false if there is none.
    [[nodiscard]] virtual bool startProgramOf(const std::string& path) = 0;
};
