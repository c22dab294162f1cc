#pragma once

#include "base/clsUserInterface.h"
#include "db/workingDatabase.h"
#include "window/commands/fileChoice.h"
#include "window/dialogs/clsDialogs.h"
#include "window/tabs/viewTabs.h"

// The commands that save the chart as a picture.
class ChartCommands {
public:
    // Nothing is owned.
    struct Dependencies {
        ViewTabs& views;
        const WorkingDatabase& database;
        clsUserInterface& userInterface;
        clsDialogs& dialogs;
    };

    explicit ChartCommands(const Dependencies& dependencies)
        : dependencies_(dependencies),
          choice_(dependencies_.dialogs, dependencies_.userInterface, dependencies_.database) {}

    // Asks for a file and draws the chart into it, entire or as far as it is in view. The screen does not
    // change. Ends silently if the user cancels; errors are thrown.
    void exportChart(bool entire);

private:
    Dependencies dependencies_;
    FileChoice choice_;
};
