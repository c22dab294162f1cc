#pragma once

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "scan/clsSearch.h"
#include "scan/modProcessFiles.h"
#include "tree/folderSelection.h"
#include "window/dialogs/clsDialogs.h"
#include "window/dialogs/frmUnreadable.h"
#include "window/menu/popMenu.h"
#include "window/messageBar.h"
#include "window/tabs/viewTabs.h"

// Says in the message bar what is wrong with the figures, and offers what makes them right: the switch
// "exact", and the list of what could not be read.
class FigureNotices {
public:
    // Nothing is owned.
    struct Dependencies {
        MessageBar& bar;
        frmUnreadable& unreadable;
        PopMenu& menu;
        clsSettings& settings;
        const clsRegSettings& store;
        clsSearch& search;
        FolderSelection& selection;
        WorkingDatabase& database;
        ViewTabs& views;
        clsDialogs& dialogs;
    };

    explicit FigureNotices(const Dependencies& dependencies) : dependencies_(dependencies) {}

    // On the very first start, asks whether figures are to be exact.
    void start();

    // After a scan, and after a saved scan has been loaded.
    void scanned(const modProcessFiles::ScanResult& result);
    void loaded();

    // The command that switches exact figures on or off. Switching them on offers to scan again.
    void toggleExact();

    // Switches between sizes and what is taken on the disk.
    void setOnDisk(bool onDisk);

    void showUnreadable();

private:
    void setExact(bool exact);
    void switchOn();
    void useExactSizes();
    void showWrapped();
    void showLacking();
    void fillUnreadable();

    Dependencies dependencies_;
};
