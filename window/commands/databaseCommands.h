#pragma once

#include <functional>
#include <string>

#include "base/clsRegSettings.h"
#include "base/clsUserInterface.h"
#include "db/workingDatabase.h"
#include "tree/folderSelection.h"
#include "tree/folderTree.h"
#include "widgets/systemIcons.h"
#include "window/commands/fileChoice.h"
#include "window/dialogs/clsDialogs.h"
#include "window/tabs/viewTabs.h"

// The commands that save a scan, with the folder tree, in a database file, and load it.
class DatabaseCommands {
public:
    // Nothing is owned.
    struct Dependencies {
        WorkingDatabase& database;
        FolderTree& tree;
        ImageList& icons;
        FolderSelection& selection;
        ViewTabs& views;
        const clsRegSettings& store;
        clsUserInterface& userInterface;
        clsDialogs& dialogs;
    };

    explicit DatabaseCommands(const Dependencies& dependencies)
        : dependencies_(dependencies),
          choice_(dependencies_.dialogs, dependencies_.userInterface, dependencies_.database) {}

    // Saves the tree into the working database and copies its file. If the copy fails, a message says so and
    // the reason is logged; other errors are thrown. The file, as typed; empty if nothing was saved.
    std::string exportDatabase();

    // Asks which file to load; as typed, empty if none.
    [[nodiscard]] std::string chooseDatabase() const { return choice_.toRead(databaseFilter); }

    // Replaces the rows and the tree by those of a file. Errors are logged for the menu command. If the file
    // was refused, everything stays as it is; otherwise the views show what the database contains, whatever
    // failed. Whether the file was loaded.
    bool loadDatabase(const std::string& file);
    // The same with rows that `load` puts into the database; `name` says where from.
    bool load(const std::function<void()>& load, const std::string& name);

    // Of the dialogs for such files.
    static const std::string databaseFilter;

private:
    void showTree(const std::string& name);

    Dependencies dependencies_;
    FileChoice choice_;
};
