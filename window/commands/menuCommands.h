#pragma once

#include <array>
#include <functional>
#include <string_view>

#include "export/reportFormats.h"

class clsSettings;
class clsUserInterface;
class PopMenu;

// The functions that carry out the main menu's commands. An empty one throws when its command is used.
struct MenuTargets {
    std::function<void(modExport::ReportFormat)> exportReport;
    std::function<void()> exportOverview;
    std::function<void()> exportDatabase;
    std::function<void(bool entire)> exportChart; // true: entire chart; false: visible portion only
    std::function<void()> loadDatabase;
    std::function<void()> compareScan;
    std::function<void()> closeComparison;
    std::function<void()> history;
    std::function<void()> loadFromServer;
    std::function<void()> settings;
    std::function<void()> exitApp;
    std::function<void()> refreshScreen;
    std::function<void()> cancelScan;
    std::function<void()> barStyle; // for the chart, which is redrawn afterwards
    std::function<void()> pieStyle;
    std::function<void()> treemap;
    std::function<void()> chartOfChanges; // switches it on or off
    std::function<void()> updateGraph;
    std::function<void()> exactFigures;
    std::function<void()> sizeOnDisk;
    std::function<void()> unreadableFolders;
    std::function<void()> goUp;
    std::function<void()> goBack;
    std::function<void()> goForward;
    std::function<void()> treeSizes;
    std::function<void()> filterList;
    std::function<bool(std::string_view key)>
        runOnItem; // false if the key is of no command for files and folders
    std::function<void()> showAbout;
    std::function<void()> showHelp;
};

// Turns clicks on the main menu into commands. Menu, settings and user interface are not owned.
class MenuCommands {
public:
    MenuCommands(PopMenu& cP, clsSettings& settings, clsUserInterface& userInterface, MenuTargets targets);

    // Handles a click on the menu: finds the command by the item's key, ignoring case, and runs it. For an
    // item without a command, two messages are shown. Errors are logged, so no command can end the program.
    void cP_Click(int index);

private:
    struct Command;
    static const std::array<Command, 32> commands;

    void showOwners(int index);
    void showChart(std::string_view key, const std::function<void()>& show);
    void unassigned(int index);

    PopMenu& cP_;
    clsSettings& settings_;
    clsUserInterface& userInterface_;
    MenuTargets targets_;
};
