#pragma once

#include <QString>
#include <string>

class clsExport;

// What a file dialog is asked for.
struct FileRequest {
    std::string filter;   // descriptions and patterns in turn, separated by "|"
    std::string fileName; // proposed; empty for none
};

// What the main window opens beside itself: its modal boxes, and files in their programs. So tests can
// answer.
class clsDialogs {
public:
    virtual ~clsDialogs() = default;

    // A message with an OK button under the program's title.
    virtual void message(const QString& text) = 0;
    // A Yes/No question; true for Yes.
    [[nodiscard]] virtual bool ask(const QString& text) = 0;
    // The About box.
    virtual void about() = 0;
    // The options of an export, which the box changes (frmExport).
    virtual void exportOptions(clsExport& options) = 0;

    // The file dialogs: the chosen path, as a person would type it. Throw errorNumber::dialogCancelled.
    // Saving does not ask whether an existing file may be overwritten: that is the caller's question.
    [[nodiscard]] virtual std::string saveFile(const FileRequest& request) = 0;
    [[nodiscard]] virtual std::string openFile(const FileRequest& request) = 0;

    // Starts the program that belongs to a file (platform::openInAssociatedProgram); false when there is
    // none.
    [[nodiscard]] virtual bool startProgramOf(const std::string& path) = 0;
};
