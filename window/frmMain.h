#pragma once

#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>
#include <memory>
#include <string>
#include <string_view>

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "db/workingDatabase.h"
#include "export/workbookFolder.h"
#include "scan/clsSearch.h"
#include "tree/folderSelection.h"
#include "tree/folderTree.h"
#include "widgets/systemIcons.h"
#include "window/animation.h"
#include "window/commands/chartCommands.h"
#include "window/commands/databaseCommands.h"
#include "window/commands/historyCommand.h"
#include "window/commands/listMenu.h"
#include "window/commands/menuCommands.h"
#include "window/commands/qtClipboard.h"
#include "window/commands/reportCommands.h"
#include "window/commands/serverCommand.h"
#include "window/comparing.h"
#include "window/dialogs/clsDialogs.h"
#include "window/dialogs/frmUnreadable.h"
#include "window/figureNotices.h"
#include "window/folderHeader.h"
#include "window/folderNavigation.h"
#include "window/help/helpKey.h"
#include "window/help/showHelp.h"
#include "window/itemMenu.h"
#include "window/menu/menuToolbar.h"
#include "window/menu/popMenu.h"
#include "window/menu/rebar.h"
#include "window/messageBar.h"
#include "window/opening.h"
#include "window/pathBox.h"
#include "window/recentMenu.h"
#include "window/settingsCommand.h"
#include "window/tabs/viewTabs.h"
#include "window/treeSizes.h"
#include "window/windowInterface.h"

// The main window: owns the controls and everything that lives as long as the program, and connects the
// controls' events to their handlers. The constructor is the start-up; if a step fails, it is logged and the
// others follow.
class frmMain final : public QMainWindow {
    Q_OBJECT

public:
    // The application folder is an internal path; the dialogs are not owned.
    frmMain(std::string_view applicationFolder, clsDialogs& dialogs);
    ~frmMain() override;

    // Selects and scans a folder, or loads a saved scan.
    void openPath(std::string_view typedPath) { opening_.open(typedPath); }

    // Compares what is shown of the selected folder with a saved scan, a path as typed (Comparing).
    void compareWith(const std::string& file) { comparing_.compareWith(file); }

    [[nodiscard]] clsSettings& settings() noexcept { return settings_; }
    [[nodiscard]] const clsSearch& search() const noexcept { return search_; }
    [[nodiscard]] const WorkingDatabase& database() const noexcept { return working_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void form_load();
    void form_unload();
    void restoreLook();
    void saveRecent();
    void saveLook();
    [[nodiscard]] std::string newWorkbook();
    void nameControls();
    void layOut();
    void wire();
    void wireHeader();
    [[nodiscard]] MenuTargets menuTargets();
    [[nodiscard]] HistoryCommand::Dependencies historyNeeds();
    void runExclusively(const std::function<void()>& command);
    void showChart(ChartStyle style);
    void loadChosen(const std::string& file);
    void loadFromServer();
    void noteSavedScan(const std::string& file);
    [[nodiscard]] bool mayLoad() const;
    void closeIfWanted();
    void growWithScan();
    void followLoad();
    void followScan(bool running);
    void updateEscape();

    void txtPath_GotFocus();
    void txtPath_LostFocus();
    bool Form_KeyUp(const QKeyEvent& event);
    void lvwF_Click(const std::string& key, const std::string& tag);
    void lvwFound_Click(const std::string& key, const std::string& tag);
    void tc_OnClick(const std::string& label);

    const std::string applicationFolder_;
    clsDialogs& dialogs_;
    const std::string stateFile_;
    std::unique_ptr<QSettings> state_; // geometry, splitter, column widths, active tab; may be null

    clsRegSettings store_;
    clsSettings settings_;
    WorkingDatabase working_;
    clsSearch search_{working_, settings_};
    OpenComparison openComparison_;

    // Each control is declared after the one that contains it, so that it is destroyed first.
    ImageList imlFiles_{this};
    ImageList imlMenu_{this};
    QWidget central_;
    PathBox txtPath_;
    QPushButton cmdGo_;
    QSplitter splitter_;
    FolderTree tvw_;
    QWidget rightSide_;
    QVBoxLayout rightLayout_{&rightSide_};
    MessageBar bar_;
    ViewTabs views_;
    Animation ani_;
    QStatusBar statusBar_;
    QProgressBar prg_;
    WindowInterface userInterface_;
    QtClipboard clipboard_;
    FolderSelection selection_;
    FolderHeader header_;

    PopMenu cP_{this};
    PopMenu cPLvw_{this};
    PopMenu cPItem_{this};
    MenuToolbar tbrMenu_;
    Rebar cRebar_;
    FolderNavigation navigation_;
    TreeSizes treeSizes_;
    HelpCommand help_{*this};
    HelpKey helpKey_{*this, help_, [this] { return views_.tabs().currentWidget(); }};
    modExport::WorkbookFolder workbooks_;
    ReportCommands reports_;
    DatabaseCommands databases_;
    ChartCommands charts_;
    ListMenu listMenu_;
    ItemCommands items_;
    ItemMenu itemMenu_;
    frmUnreadable unreadable_{this};
    FigureNotices notices_;
    SettingsCommand changeSettings_;
    Comparing comparing_;
    Opening opening_;
    RecentMenu recent_;
    HistoryCommand history_;
    ServerCommand servers_;
    MenuCommands commands_;
    QShortcut escape_;
    QShortcut toPath_;
    bool scanning_ = false;
    bool runningExclusively_ = false;
    bool closing_ = false; // when the running work has ended
};
