#pragma once

#include <string_view>

#include "app/clsSettings.h"
#include "app/clsUserInterface.h"
#include "app/window/clsDialogs.h"
#include "app/window/fileChoice.h"
#include "db/workingDatabase.h"
#include "export/clsExport.h"
#include "export/exportQueries.h"

// The report commands of the main menu: from the options by way of the file's name to the report's writer.
// Keeps the options from one export to the next.
class ReportCommands {
public:
    // Nothing is owned.
    struct Surroundings {
        const WorkingDatabase& database;
        const clsSettings& settings;
        clsUserInterface& userInterface;
        clsDialogs& dialogs;
    };

    explicit ReportCommands(const Surroundings& surroundings)
        : with_(surroundings), choice_(with_.dialogs, with_.userInterface, with_.database) {}

    // Exports the whole database in the format that the menu item's key names. Ends silently when the person
    // does not go on. The writers log their errors; others are thrown.
    void exportReport(std::string_view key);

private:
    void askForOptions(modExport::ReportFormat format);
    [[nodiscard]] std::string fileFor(modExport::ReportFormat format) const;

    Surroundings with_;
    FileChoice choice_;
    clsExport options_;
};
