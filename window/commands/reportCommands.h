#pragma once

#include <functional>
#include <string>
#include <utility>

#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "db/workingDatabase.h"
#include "export/clsExport.h"
#include "export/reportFormats.h"
#include "scan/figureGaps.h"
#include "window/commands/fileChoice.h"
#include "window/dialogs/clsDialogs.h"

// The report commands of the main menu: options, file name, and the report's writer. Keeps the options from
// one export to the next.
class ReportCommands {
public:
    // Nothing is owned.
    struct Dependencies {
        const WorkingDatabase& database;
        const clsSettings& settings;
        clsUserInterface& userInterface;
        clsDialogs& dialogs;
        std::function<std::string()> workbookName; // returns the name of the workbook to write
        std::function<std::string()> selectedKey;  // returns that of the tree's selected node
    };

    explicit ReportCommands(Dependencies dependencies)
        : dependencies_(std::move(dependencies)),
          choice_(dependencies_.dialogs, dependencies_.userInterface, dependencies_.database) {}

    // Exports the whole database or, if the options say so, the selected folder. Ends silently if the user
    // cancels. The writers log their errors; others are thrown.
    void exportReport(modExport::ReportFormat format);

    // Writes a page about the selected folder; `gaps` are those of its figures. Errors likewise.
    void exportOverview(const FigureGaps& gaps);

private:
    void askForOptions(modExport::ReportFormat format);
    [[nodiscard]] std::string selectedFolder() const;
    [[nodiscard]] std::string fileFor(modExport::ReportFormat format) const;

    Dependencies dependencies_;
    FileChoice choice_;
    clsExport options_;
};
