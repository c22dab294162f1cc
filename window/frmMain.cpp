#include "window/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QTimer>
#include <utility>

#include "base/applicationFolder.h"
#include "base/errorLog.h"
#include "base/errorLogFiles.h"
#include "base/errorTrap.h"
#include "base/modGlobal.h"
#include "db/modDatabase.h"
#include "export/databaseFile.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "tree/nodeKeys.h"
#include "tree/startupTree.h"
#include "views/folderFigures.h"
#include "widgets/qtText.h"
#include "window/menu/menuIcons.h"
#include "window/menu/menus.h"

namespace {

constexpr std::string_view moduleName = "frmMain";

// Runs one step of the start-up: if it fails, the error is logged and the window opens without that part.
template <class Step>
void loadStep(Step&& step, modGlobal::Logging logging = modGlobal::Logging::shown) {
    modGlobal::trapped(moduleName, "form_load", std::forward<Step>(step), logging);
}

// Not if the file is a pipe or a device, which could not be read to its end.
std::unique_ptr<QSettings> openState(const std::string& file) {
    const bool readable = platform::fileExists(file) || !platform::somethingExists(file);
    return readable ? std::make_unique<QSettings>(modQt::nativePath(file), QSettings::IniFormat) : nullptr;
}

} // namespace

frmMain::frmMain(std::string_view applicationFolder, clsDialogs& dialogs)
    : applicationFolder_(modGlobal::addBackslash(applicationFolder)), dialogs_(dialogs),
      stateFile_(applicationFolder_ + "window.ini"), state_(openState(stateFile_)),
      views_({tvw_, imlFiles_, settings_, working_, search_, openComparison_}, this),
      userInterface_(dialogs, statusBar_, prg_),
      selection_({.tree = tvw_,
                  .icons = imlFiles_,
                  .search = search_,
                  .settings = settings_,
                  .database = working_,
                  .userInterface = userInterface_,
                  .views = views_,
                  .openFile = [this](std::string_view path) { return opening_.takeFile(path); }}),
      header_({working_, search_, selection_, settings_}),
      navigation_({*this, cP_, selection_, [this] { return views_.goUp(); }}),
      treeSizes_({tvw_, cP_, working_, search_, selection_}),
      reports_({working_, settings_, userInterface_, dialogs, [this] { return newWorkbook(); },
                [this] { return tvw_.selectedKey(); }}),
      databases_({working_, tvw_, imlFiles_, selection_, views_, store_, userInterface_, dialogs}),
      charts_({views_, working_, userInterface_, dialogs}),
      listMenu_(
          {tvw_, views_, settings_, working_, userInterface_, clipboard_, [this] { return newWorkbook(); }}),
      items_({selection_, search_, settings_, store_, working_, userInterface_, dialogs, clipboard_}),
      itemMenu_({*this, cP_, cPLvw_, cPItem_, tvw_, views_, settings_, items_}),
      notices_({bar_, unreadable_, cP_, settings_, store_, search_, selection_, working_, views_, dialogs}),
      changeSettings_({cP_, settings_, store_, applicationFolder_, dialogs, views_, notices_}),
      comparing_({*this, openComparison_, working_, search_, selection_, tvw_, views_, bar_, header_, cP_,
                  userInterface_, dialogs, [this] { return mayLoad(); },
                  [this](const std::function<void()>& command) { runExclusively(command); }}),
      opening_({*this, txtPath_, selection_, userInterface_, [this] { return mayLoad(); },
                [this](const std::string& file) { runExclusively([&] { loadChosen(file); }); }}),
      recent_({cP_, [this](const std::string& path) { return opening_.open(path); }}),
      history_(historyNeeds()), servers_({*this, working_, databases_, userInterface_, dialogs}),
      commands_(cP_, settings_, userInterface_, menuTargets()), escape_(Qt::Key_Escape, this),
      toPath_(QKeySequence(Qt::CTRL | Qt::Key_L), this) {
    setObjectName(QStringLiteral("frmMain"));
    layOut();
    wire();
    form_load();
}

frmMain::~frmMain() {
    txtPath_.removeEventFilter(this);       // it loses the focus after cmdGo has been destroyed
    views_.tabs().setCornerWidget(nullptr); // it would use it while its pages are destroyed
    modGlobal::setErrorLog();
}

std::string frmMain::newWorkbook() {
    return workbooks_.newWorkbook(platform::localTime(platform::now()));
}

// --- Start-up and shutdown ------------------------------------------------------------------------------

void frmMain::form_load() {
    modGlobal::setErrorLog(&userInterface_,
                           [this] { return modGlobal::errorLogFiles(store_, applicationFolder_); });
    loadStep([this] { settings_.load(store_, applicationFolder_); });
    loadStep([this] {
        working_ = modDatabase::prepareDatabase(applicationFolder_, settings_.databasePath(), userInterface_);
        working_.setOnDisk(settings_.onDisk());
    });
    loadStep([this] { views_.chart().setChartStyle(ChartStyle::bar); });
    loadStep([this] {
        modMenuIcons::addMenuImages(imlMenu_);
        modMenus::createMenus(cP_, cPLvw_, cPItem_, *this, imlMenu_, settings_);
        modMenus::setRebar(*this, cRebar_, tbrMenu_, cP_);
        navigation_.update();
        itemMenu_.connectMenus();
        recent_.connectMenu();
        comparing_.start();
    });
    loadStep([this] { ani_.open(findDataFile(applicationFolder_, "2.avi")); }, modGlobal::Logging::quiet);
    loadStep([this] { modStartupTree::initializeTreeView(tvw_, store_); });
    setWindowTitle(QStringLiteral("Spannory ") + QApplication::applicationVersion());
    loadStep([this] { restoreLook(); });
    loadStep([this] { notices_.start(); });
}

void frmMain::restoreLook() {
    if (!state_) {
        return;
    }
    if (restoreGeometry(state_->value(QStringLiteral("geometry")).toByteArray())) {
        resize(size().boundedTo(screen()->virtualSize())); // whatever the file contained
    }
    splitter_.restoreState(state_->value(QStringLiteral("splitter")).toByteArray());
    views_.restore(*state_);
    treeSizes_.restore(*state_);
    recent_.places().restore(*state_);
    history_.restore(*state_);
    servers_.restore(*state_);
}

void frmMain::form_unload() {
    modGlobal::trapped(
        moduleName, "form_unload",
        [this] {
            settings_.save(store_);
            saveLook();
        },
        modGlobal::Logging::quiet);
}

// Qt writes it when events are handled next.
void frmMain::saveRecent() {
    if (!state_) {
        return;
    }
    if (!platform::somethingExists(stateFile_)) {
        platform::replaceFile(stateFile_, {}, platform::NewFile::own); // Qt would make it for all to read
    }
    recent_.places().save(*state_);
}

void frmMain::saveLook() {
    if (!state_) {
        return;
    }
    saveRecent();
    state_->setValue(QStringLiteral("geometry"), saveGeometry());
    state_->setValue(QStringLiteral("splitter"), splitter_.saveState());
    views_.save(*state_);
    treeSizes_.save(*state_);
    history_.save(*state_);
    servers_.save(*state_);
    state_->sync();
}

// If the window is closed during a scan, the scan is cancelled first, and the window closes when it has
// ended. During an export, it also closes later, but the export is not cancelled.
void frmMain::closeEvent(QCloseEvent* event) {
    selection_.suppressRefresh();
    if (search_.processing || runningExclusively_) {
        search_.CancelScan = true;
        search_.nextNode.clear();
        closing_ = true;
        event->ignore();
        return;
    }
    form_unload();
    event->accept();
}

// What the window does during a scan.
void frmMain::followScan(bool running) {
    scanning_ = running;
    if (running) {
        userInterface_.beginScan();
        ani_.play();
    } else {
        userInterface_.endScan();
        ani_.stop();
    }
    views_.followScan(running);
    header_.followScan(running);
    bar_.setEnabled(!running);
    updateEscape();
    modMenus::setRowCommandsEnabled(cP_, !running);
    if (!running) {
        closeIfWanted();
    }
}

// Escape first ends the scan; otherwise it closes the message on show.
void frmMain::updateEscape() {
    escape_.setEnabled(scanning_ || bar_.isShowing());
}

// Runs a command that handles events but needs the rows to stay unchanged. Anything that would start a scan
// meanwhile is delayed until the command has ended.
void frmMain::runExclusively(const std::function<void()>& command) {
    runningExclusively_ = true;
    {
        const HeldSelection held(selection_);
        const ViewTabs::Hold still(views_); // what handles events may use the database
        modGlobal::trapped(moduleName, "cp_Click", command);
        runningExclusively_ = false;
    }
    closeIfWanted();
}

void frmMain::closeIfWanted() {
    if (!search_.processing && !runningExclusively_ && std::exchange(closing_, false)) {
        QTimer::singleShot(0, this, [this] { close(); });
    }
}

// --- Events
// -------------------------------------------------------------------------------------------------

void frmMain::wire() {
    txtPath_.installEventFilter(this);
    connect(&txtPath_, &QLineEdit::returnPressed, &cmdGo_, &QPushButton::click);
    connect(&cmdGo_, &QPushButton::clicked, this, [this] { opening_.openTyped(); });
    connect(&tvw_, &FolderTree::nodeExpanded, this,
            [this](const std::string& key) { selection_.tvw_Expand(key); });
    connect(&tvw_, &FolderTree::nodeClicked, this,
            [this](const std::string& key) { selection_.tvw_NodeClick(key); });
    connect(&selection_, &FolderSelection::scanRuns, this, &frmMain::followScan);
    connect(&views_, &ViewTabs::barChosen, this, [this](const std::string& label) { tc_OnClick(label); });
    connect(&views_, &ViewTabs::folderChosen, this,
            [this](const std::string& key) { selection_.revealFolder(key); });
    connect(&views_, &ViewTabs::pointedAt, &header_, &FolderHeader::pointAt);
    connect(&views_, &ViewTabs::rowActivated, this,
            [this](const std::string& key, const std::string& tag) { lvwF_Click(key, tag); });
    connect(&views_, &ViewTabs::foundActivated, this, &frmMain::lvwFound_Click);
    connect(&cP_, &PopMenu::click, this, [this](int index) { commands_.cP_Click(index); });
    connect(&views_, &ViewTabs::menuRequested, this,
            [this](const QPoint& place) { itemMenu_.popUpForList(place); });
    connect(&cPLvw_, &PopMenu::click, this, [this](int index) {
        if (!itemMenu_.run(cPLvw_.itemKey(index).toStdString())) {
            runExclusively([&] { listMenu_.cPLvw_Click(index); });
        }
    });
    connect(&views_, &ViewTabs::copyRequested, this,
            [this] { runExclusively([this] { listMenu_.copySelection(); }); });
    updateEscape();
    connect(&escape_, &QShortcut::activated, this, [this] {
        if (scanning_) {
            search_.CancelScan = true;
        } else {
            bar_.closeShown();
        }
    });
    connect(&opening_, &Opening::folderOpened, this,
            [this](const std::string& key) { recent_.add(RecentPlaces::Kind::folder, key); });
    connect(&recent_, &RecentMenu::changed, this, [this] { // also if the program is killed
        modGlobal::trapped(
            moduleName, "saveRecent", [this] { saveRecent(); }, modGlobal::Logging::quiet);
    });
    connect(&opening_, &Opening::typedOpened, &views_, &ViewTabs::takeFocus);
    connect(&bar_, &MessageBar::shownChanged, this, &frmMain::updateEscape);
    connect(&unreadable_, &frmUnreadable::folderChosen, this,
            [this](const std::string& key) { selection_.revealFolder(key); });
    connect(&selection_, &FolderSelection::scanned, this,
            [this](const modProcessFiles::ScanResult& result) { notices_.scanned(result); });
    wireHeader();
    connect(&toPath_, &QShortcut::activated, this, [this] {
        txtPath_.setFocus(Qt::ShortcutFocusReason);
        txtPath_.selectAll(); // it may already have had the focus
    });
}

void frmMain::wireHeader() {
    connect(&selection_, &FolderSelection::folderShown, &header_, &FolderHeader::showFolder);
    connect(&selection_, &FolderSelection::folderShown, &txtPath_, &PathBox::showFolder);
    connect(&selection_, &FolderSelection::folderShown, &history_, &HistoryCommand::follow);
    connect(&selection_, &FolderSelection::figuresChanged, this, [this] {
        if (!selection_.holdsLoadedRows()) {
            header_.setSavedScan({});
        }
        header_.refresh();
        treeSizes_.refresh();
    });
    connect(&selection_, &FolderSelection::rowsLoaded, this, &frmMain::followLoad);
    connect(&views_, &ViewTabs::grown, this, &frmMain::growWithScan);
    connect(&header_, &FolderHeader::folderChosen, this,
            [this](const std::string& key) { selection_.showFolder(key); });
}

// The tree, and so the selected folder, is another.
void frmMain::followLoad() {
    const std::string key = tvw_.selectedKey();
    header_.setSavedScan({});
    const std::string folder = modNodeKeys::isFolderKey(key) ? key : std::string();
    header_.showFolder(folder);
    if (!folder.empty()) {
        txtPath_.showFolder(folder);
    }
    navigation_.startAnew(folder);
    history_.follow(folder);
}

// Shows what a running scan has recorded so far.
void frmMain::growWithScan() {
    modGlobal::trapped(moduleName, "growWithScan", [this] {
        header_.refresh();
        treeSizes_.refresh();
        const clsSearch::Progress& progress = search_.progress();
        const std::string items = search_.isBulkLoad()
                                      ? std::to_string(progress.files + progress.folders) + " items"
                                      : modFigures::itemsText(working_.database());
        userInterface_.status(StatusPanel::items, items.substr(0, items.find('.')) + " so far");
    });
}

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
    targets.chartOfChanges = [this] { comparing_.showChart(!views_.showsChartOfChanges()); };
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

// As the menu's items that load and export are enabled.
bool frmMain::mayLoad() const {
    return !search_.processing && !scanning_ && !runningExclusively_ &&
           QApplication::activeModalWidget() == nullptr;
}

void frmMain::txtPath_GotFocus() {
    // The click that sets the focus would remove the selection again after this event.
    QTimer::singleShot(0, &txtPath_, &QLineEdit::selectAll);
    cmdGo_.setDefault(true);
}

void frmMain::txtPath_LostFocus() {
    cmdGo_.setDefault(false);
}

// The path box's focus and its keys. In Qt 6.4, the box keeps the release of its keys to itself; in 6.8, it
// passes it on to the window, which must not handle the same key twice.
bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyRelease) {
        if (Form_KeyUp(static_cast<const QKeyEvent&>(*event))) {
            return true;
        }
    } else if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        // When a menu over the box, or another window, closes, the box only gets its focus back.
        const Qt::FocusReason reason = static_cast<const QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
            event->type() == QEvent::FocusIn ? txtPath_GotFocus() : txtPath_LostFocus();
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::keyReleaseEvent(QKeyEvent* event) {
    if (!Form_KeyUp(*event)) {
        QMainWindow::keyReleaseEvent(event);
    }
}

// Whether the key was one of the window's. A key that is held down is only released once.
bool frmMain::Form_KeyUp(const QKeyEvent& event) {
    if (event.key() != Qt::Key_F5 || event.isAutoRepeat()) {
        return false;
    }
    selection_.refreshScreen();
    return true;
}

// A row of the files and folders list was activated.
void frmMain::lvwF_Click(const std::string& key, const std::string& tag) {
    modGlobal::trapped(moduleName, "lvwF_Click", [&] {
        if (tag == "FOLDER") {
            selection_.openFolder(key);
        } else {
            userInterface_.openFile(key);
        }
    });
}

// It may be in a folder that the tree has not listed yet.
void frmMain::lvwFound_Click(const std::string& key, const std::string& tag) {
    modGlobal::trapped(moduleName, "lvwFound_Click", [&] {
        if (tag == "FOLDER") {
            selection_.revealFolder(key);
        } else if (tag == "GONEFOLDER") {
            views_.enterFormer(key);
        } else if (tag == "GONEFILE") {
            items_.tellGone({key});
        } else {
            userInterface_.openFile(key);
        }
    });
}

// The bar for the files in the folder itself opens nothing.
void frmMain::tc_OnClick(const std::string& label) {
    modGlobal::trapped(moduleName, "tc_OnClick", [&] {
        const std::string selected = tvw_.selectedKey();
        if (label == modFigures::filesLabel || selected.empty()) {
            return;
        }
        if (!tvw_.isExpanded(selected)) {
            tvw_.setExpanded(selected, true);
        }
        selection_.openFolder(selected + label + "\\");
    });
}
