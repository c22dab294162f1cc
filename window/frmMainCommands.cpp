#include "db/scanRecords.h"
#include "export/databaseFile.h"
#include "platform/paths.h"
#include "tree/nodeKeys.h"
#include "widgets/qtText.h"
#include "window/frmMain.h"

// The main window's commands: what its menu's items do.

HistoryCommand::Dependencies frmMain::historyNeeds() {
    return {.window = *this,
            .database = working_,
            .settings = settings_,
            .userInterface = userInterface_,
            .dialogs = dialogs_,
            .clipboard = clipboard_,
            .runExclusively = [this](const std::function<void()>& command) { runExclusively(command); },
            .selectedFolder =
                [this] {
                    const std::string key = tvw_.selectedKey();
                    return modNodeKeys::isFolderKey(key) ? key : std::string();
                },
            .lastSavedScan =
                [this] {
                    const auto& saved = recent_.places().of(RecentPlaces::Kind::savedScan);
                    return saved.empty() ? std::string() : saved.front();
                },
            .openAsBefore = [this](const std::string& file) { compareWith(platform::displayPath(file)); }};
}

MenuTargets frmMain::menuTargets() {
    MenuTargets targets;
    targets.exportReport = [this](modExport::ReportFormat format) {
        runExclusively([&] { reports_.exportReport(format); });
    };
    targets.exportOverview = [this] { runExclusively([this] { reports_.exportOverview(search_.gaps); }); };
    targets.exportDatabase = [this] {
        comparing_.followRows();
        runExclusively([this] { noteSavedScan(databases_.exportDatabase()); });
        comparing_.overlookChanges();
    };
    targets.exportChart = [this](bool entire) { runExclusively([&] { charts_.exportChart(entire); }); };
    targets.loadDatabase = [this] {
        runExclusively([this] {
            if (const std::string file = databases_.chooseDatabase(); !file.empty()) {
                loadChosen(file);
            }
        });
    };
    targets.compareScan = [this] { comparing_.chooseAndCompare(); };
    targets.closeComparison = [this] { comparing_.close(); };
    targets.history = [this] { history_.show(); };
    targets.loadFromServer = [this] { runExclusively([this] { loadFromServer(); }); };
    targets.settings = [this] { changeSettings_.run(); };
    targets.exitApp = [this] { close(); };
    targets.refreshScreen = [this] { selection_.refreshScreen(); };
    targets.cancelScan = [this] { search_.CancelScan = true; };
    targets.barStyle = [this] { showChart(ChartStyle::bar); };
    targets.pieStyle = [this] { showChart(ChartStyle::pie); };
    targets.treemap = [this] {
        comparing_.showChart(false);
        views_.setTreemap(true);
    };
    targets.chartOfChanges = [this] {
        const bool isInFront = views_.showsChartOfChanges() && views_.isChartShown();
        comparing_.showChart(!isInFront);
    };
    targets.updateGraph = [this] { views_.updateGraph(); };
    targets.exactFigures = [this] { notices_.toggleExact(); };
    targets.sizeOnDisk = [this] { notices_.setOnDisk(!settings_.onDisk()); };
    targets.unreadableFolders = [this] { notices_.showUnreadable(); };
    targets.goUp = [this] { navigation_.goUp(); };
    targets.goBack = [this] { navigation_.goBack(); };
    targets.goForward = [this] { navigation_.goForward(); };
    targets.treeSizes = [this] { treeSizes_.toggle(); };
    targets.filterList = [this] { views_.filterList(); };
    targets.runOnItem = [this](std::string_view key) { return itemMenu_.run(key); };
    targets.showHelp = [this] { help_.showHelp(); };
    targets.showAbout = [this] { dialogs_.about(); };
    return targets;
}

void frmMain::showChart(ChartStyle style) {
    comparing_.showChart(false);
    views_.setTreemap(false);
    views_.chart().setChartStyle(style);
}

void frmMain::loadChosen(const std::string& file) {
    if (databases_.loadDatabase(file)) {
        noteSavedScan(file);
        notices_.loaded();
        header_.setSavedScan(
            modQt::shownText(modExport::savedScanText(file, modScans::all(working_.database()))));
    }
}

void frmMain::loadFromServer() {
    const auto title = servers_.load();
    if (title) {
        notices_.loaded();
        header_.setSavedScan(modQt::shownText(*title));
    }
}

void frmMain::noteSavedScan(const std::string& file) {
    if (!file.empty()) {
        recent_.add(RecentPlaces::Kind::savedScan, platform::toInternal(file));
    }
}
