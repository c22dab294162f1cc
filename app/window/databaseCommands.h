#pragma once

#include <string>

#include "app/clsRegSettings.h"
#include "app/clsUserInterface.h"
#include "app/window/clsDialogs.h"
#include "app/window/fileChoice.h"
#include "app/window/viewTabs.h"
#include "db/workingDatabase.h"
#include "tree/folderSelection.h"
#include "tree/folderTree.h"
#include "views/widgets/systemIcons.h"

// The commands that keep a scan, with the folder tree, as a database file of its own and bring it back.
class DatabaseCommands {
public:
    // Nothing is owned.
    struct Surroundings {
        WorkingDatabase& database;
        FolderTree& tree;
        ImageList& icons;
        FolderSelection& selection;
        ViewTabs& views;
        const clsRegSettings& store;
        clsUserInterface& userInterface;
        clsDialogs& dialogs;
    };

    explicit DatabaseCommands(const Surroundings& surroundings)
        : with_(surroundings), choice_(with_.dialogs, with_.userInterface, with_.database) {}

    // Saves the tree into the working database and copies its file. A copy that fails is told, and the reason
    // logged; other errors are thrown.
    void exportDatabase();

    // Replaces the rows and the tree by those of a file. Errors are logged as the menu command's. Whatever
    // becomes of it, the views show what the database then holds.
    void loadDatabase();

private:
    void load(const std::string& file);

    Surroundings with_;
    FileChoice choice_;
};
