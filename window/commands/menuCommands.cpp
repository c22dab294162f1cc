#include "window/commands/menuCommands.h"

#include <string>
#include <utility>

#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "base/errorTrap.h"
#include "platform/text.h"
#include "window/menu/menus.h"
#include "window/menu/popMenu.h"

using modExport::ReportFormat;

struct MenuCommands::Command {
    std::string_view key;
    void (*run)(MenuCommands& self, int index);
};

// The first matching key selects the command.
const std::array<MenuCommands::Command, 32> MenuCommands::commands{{
    {"EXPORTHTML", [](MenuCommands& self, int) { self.targets_.exportReport(ReportFormat::html); }},
    {"EXPORTMDB", [](MenuCommands& self, int) { self.targets_.exportDatabase(); }},
    {"EXPORTTEXT", [](MenuCommands& self, int) { self.targets_.exportReport(ReportFormat::text); }},
    {"EXPORTXML", [](MenuCommands& self, int) { self.targets_.exportReport(ReportFormat::xml); }},
    {"EXPORTEXCEL", [](MenuCommands& self, int) { self.targets_.exportReport(ReportFormat::excel); }},
    {"EXPORTOVERVIEW", [](MenuCommands& self, int) { self.targets_.exportOverview(); }},
    {"EXPORTCHARTENTIRE", [](MenuCommands& self, int) { self.targets_.exportChart(true); }},
    {"EXPORTCHARTVISIBLE", [](MenuCommands& self, int) { self.targets_.exportChart(false); }},
    {"LOADMDB", [](MenuCommands& self, int) { self.targets_.loadDatabase(); }},
    {"COMPARESCAN", [](MenuCommands& self, int) { self.targets_.compareScan(); }},
    {"CLOSECOMPARISON", [](MenuCommands& self, int) { self.targets_.closeComparison(); }},
    {"HISTORY", [](MenuCommands& self, int) { self.targets_.history(); }},
    {"LOADSERVER", [](MenuCommands& self, int) { self.targets_.loadFromServer(); }},
    {"SETTINGS", [](MenuCommands& self, int) { self.targets_.settings(); }},
    {"EXITAPP", [](MenuCommands& self, int) { self.targets_.exitApp(); }},
    {"REFRESH", [](MenuCommands& self, int) { self.targets_.refreshScreen(); }},
    {"CANCELSCAN", [](MenuCommands& self, int) { self.targets_.cancelScan(); }},
    {"SHOWOWNERS", [](MenuCommands& self, int index) { self.showOwners(index); }},
    {"VIEWBARCHART", [](MenuCommands& self, int) { self.showChart("ViewBarChart", self.targets_.barStyle); }},
    {"VIEWPIECHART", [](MenuCommands& self, int) { self.showChart("ViewPieChart", self.targets_.pieStyle); }},
    {"VIEWTREEMAP", [](MenuCommands& self, int) { self.showChart("ViewTreemap", self.targets_.treemap); }},
    {"EXACTFIGURES", [](MenuCommands& self, int) { self.targets_.exactFigures(); }},
    {"UNREADABLEFOLDERS", [](MenuCommands& self, int) { self.targets_.unreadableFolders(); }},
    {"GOUP", [](MenuCommands& self, int) { self.targets_.goUp(); }},
    {"GOBACK", [](MenuCommands& self, int) { self.targets_.goBack(); }},
    {"GOFORWARD", [](MenuCommands& self, int) { self.targets_.goForward(); }},
    {"TREESIZES", [](MenuCommands& self, int) { self.targets_.treeSizes(); }},
    {"FILTERLIST", [](MenuCommands& self, int) { self.targets_.filterList(); }},
    {"SIZEONDISK", [](MenuCommands& self, int) { self.targets_.sizeOnDisk(); }},
    {"VIEWCHANGES",
     [](MenuCommands& self, int) { self.showChart("ViewBarChart", self.targets_.chartOfChanges); }},
    {"HELPABOUT", [](MenuCommands& self, int) { self.targets_.showAbout(); }},
    {"HELPCONTENTS", [](MenuCommands& self, int) { self.targets_.showHelp(); }},
}};

MenuCommands::MenuCommands(PopMenu& cP, clsSettings& settings, clsUserInterface& userInterface,
                           MenuTargets targets)
    : cP_(cP), settings_(settings), userInterface_(userInterface), targets_(std::move(targets)) {}

void MenuCommands::cP_Click(int index) {
    modGlobal::trapped("frmMain", "cp_Click", [&] { // the routine's name in the log, in lower case
        const std::string key = cP_.itemKey(index).toStdString();
        for (const Command& command : commands) {
            if (platform::equalIgnoringAsciiCase(key, command.key)) {
                command.run(*this, index);
                return;
            }
        }
        if (!targets_.runOnItem || !targets_.runOnItem(key)) {
            unassigned(index);
        }
    });
}

// Already scanned items keep their owners, or their lack of them.
void MenuCommands::showOwners(int index) {
    settings_.setGetOwnerInfo(!settings_.getOwnerInfo());
    cP_.setChecked(index, settings_.getOwnerInfo());
}

void MenuCommands::showChart(std::string_view key, const std::function<void()>& show) {
    for (const std::string_view each : {"ViewBarChart", "ViewPieChart", "ViewTreemap"}) {
        modMenus::setMark(cP_, each, each == key);
    }
    show();
    targets_.updateGraph();
}

void MenuCommands::unassigned(int index) {
    const std::string number = std::to_string(index);
    userInterface_.message("Unassigned item click [cp_Click(" + number + ")] " +
                           cP_.itemKey(index).toStdString());
    userInterface_.message(number + " Clicked.");
}
