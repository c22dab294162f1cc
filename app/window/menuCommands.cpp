#include "app/window/menuCommands.h"

#include <string>
#include <utility>

#include "app/clsSettings.h"
#include "app/clsUserInterface.h"
#include "app/errorLog.h"
#include "app/window/popMenu.h"
#include "platform/text.h"

struct MenuCommands::Command {
    std::string_view key;
    void (*run)(MenuCommands& self, int index, std::string_view key);
};

// The first key that matches is the command.
const std::array<MenuCommands::Command, 16> MenuCommands::commands{{
    {"EXPORTHTML", [](MenuCommands& self, int, std::string_view key) { self.targets_.exportReport(key); }},
    {"EXPORTMDB", [](MenuCommands& self, int, std::string_view) { self.targets_.exportDatabase(); }},
    {"EXPORTTEXT", [](MenuCommands& self, int, std::string_view key) { self.targets_.exportReport(key); }},
    {"EXPORTXML", [](MenuCommands& self, int, std::string_view key) { self.targets_.exportReport(key); }},
    {"EXPORTEXCEL", [](MenuCommands& self, int, std::string_view key) { self.targets_.exportReport(key); }},
    {"EXPORTCHARTENTIRE", [](MenuCommands& self, int, std::string_view) { self.targets_.exportChart(true); }},
    {"EXPORTCHARTVISIBLE",
     [](MenuCommands& self, int, std::string_view) { self.targets_.exportChart(false); }},
    {"LOADMDB", [](MenuCommands& self, int, std::string_view) { self.targets_.loadDatabase(); }},
    {"EXITAPP", [](MenuCommands& self, int, std::string_view) { self.targets_.exitApp(); }},
    {"REFRESH", [](MenuCommands& self, int, std::string_view) { self.targets_.refreshScreen(); }},
    {"CANCELSCAN", [](MenuCommands& self, int, std::string_view) { self.targets_.cancelScan(); }},
    {"SHOWOWNERS", [](MenuCommands& self, int index, std::string_view) { self.showOwners(index); }},
    {"VIEWBARCHART", [](MenuCommands& self, int index, std::string_view) { self.barChart(index); }},
    {"VIEWPIECHART", [](MenuCommands& self, int index, std::string_view) { self.pieChart(index); }},
    {"HELPABOUT", [](MenuCommands& self, int, std::string_view) { self.targets_.showAbout(); }},
    {"HELPCONTENTS", [](MenuCommands& self, int, std::string_view) { self.targets_.showHelp(); }},
}};

MenuCommands::MenuCommands(PopMenu& cP, clsSettings& settings, clsUserInterface& userInterface,
                           MenuTargets targets)
    : cP_(cP), settings_(settings), userInterface_(userInterface), targets_(std::move(targets)) {}

void MenuCommands::cP_Click(int index) {
    modGlobal::trapped("frmMain", "cp_Click", [&] { // the log's name of this routine, in lower case
        const std::string key = cP_.itemKey(index).toStdString();
        for (const Command& command : commands) {
            if (platform::equalIgnoringAsciiCase(key, command.key)) {
                command.run(*this, index, command.key);
                return;
            }
        }
        unassigned(index);
    });
}

// What is scanned already keeps its owners, or its lack of them.
void MenuCommands::showOwners(int index) {
    settings_.setGetOwnerInfo(!settings_.getOwnerInfo());
    cP_.setChecked(index, settings_.getOwnerInfo());
}

void MenuCommands::barChart(int index) {
    cP_.setChecked(index + 1, false);
    cP_.setChecked(index, true);
    targets_.barStyle();
    targets_.updateGraph();
}

void MenuCommands::pieChart(int index) {
    cP_.setChecked(index - 1, false);
    cP_.setChecked(index, true);
    targets_.pieStyle();
    targets_.updateGraph();
}

void MenuCommands::unassigned(int index) {
    const std::string number = std::to_string(index);
    userInterface_.message("Unassigned item click [cp_Click(" + number + ")] " +
                           cP_.itemKey(index).toStdString());
    userInterface_.message(number + " Clicked.");
}
