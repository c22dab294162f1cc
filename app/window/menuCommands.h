#pragma once

#include <array>
#include <functional>
#include <string_view>

class clsSettings;
class clsUserInterface;
class PopMenu;

// What the main menu's commands are carried out by. An empty one throws when its command is given.
struct MenuTargets {
    std::function<void(std::string_view key)>
        exportReport; // "EXPORTHTML", "EXPORTTEXT", "EXPORTXML", "EXPORTEXCEL"
    std::function<void()> exportDatabase;
    std::function<void(bool entire)> exportChart; // the entire chart, or its visible portion only
    std::function<void()> loadDatabase;
    std::function<void()> exitApp;
    std::function<void()> refreshScreen;
    std::function<void()> cancelScan;
    std::function<void()> barStyle; // of the chart, which is redrawn afterwards
    std::function<void()> pieStyle;
    std::function<void()> updateGraph;
    std::function<void()> showAbout;
    std::function<void()> showHelp;
};

// Turns clicks on the main menu into commands. Menu, settings and interface are not owned.
class MenuCommands {
public:
    MenuCommands(PopMenu& cP, clsSettings& settings, clsUserInterface& userInterface, MenuTargets targets);

    // The menu's click event: finds the command by the item's key, in whatever case, and runs it. An item
    // that has none is told in two messages. Errors are logged, so that no command can end the program.
    void cP_Click(int index);

private:
    struct Command;
    static const std::array<Command, 16> commands;

    void showOwners(int index);
    void barChart(int index);
    void pieChart(int index);
    void unassigned(int index);

    PopMenu& cP_;
    clsSettings& settings_;
    clsUserInterface& userInterface_;
    MenuTargets targets_;
};
