#pragma once

#include "app/clsUserInterface.h"
#include "app/window/clsDialogs.h"
#include "app/window/fileChoice.h"
#include "app/window/viewTabs.h"
#include "db/workingDatabase.h"

// The commands that save the chart as a picture.
class ChartCommands {
public:
    // Nothing is owned.
    struct Surroundings {
        ViewTabs& views;
        const WorkingDatabase& database;
        clsUserInterface& userInterface;
        clsDialogs& dialogs;
    };

    explicit ChartCommands(const Surroundings& surroundings)
        : with_(surroundings), choice_(with_.dialogs, with_.userInterface, with_.database) {}

    // Asks for a file and draws the chart into it, whole or as far as it is in view. What is on screen stays
    // as it is. Ends silently when the person does not go on; errors are thrown.
    void exportChart(bool entire);

private:
    Surroundings with_;
    FileChoice choice_;
};
