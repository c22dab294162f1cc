#pragma once

#include <QLineEdit>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <memory>
#include <string>
#include <string_view>

#include "app/clsRegSettings.h"
#include "app/clsSettings.h"
#include "app/window/animation.h"
#include "app/window/chartCommands.h"
#include "app/window/clsDialogs.h"
#include "app/window/databaseCommands.h"
#include "app/window/listMenu.h"
#include "app/window/menuCommands.h"
#include "app/window/menuToolbar.h"
#include "app/window/popMenu.h"
#include "app/window/qtClipboard.h"
#include "app/window/rebar.h"
#include "app/window/reportCommands.h"
#include "app/window/showHelp.h"
#include "app/window/viewTabs.h"
#include "app/window/windowInterface.h"
#include "db/workingDatabase.h"
#include "scan/clsSearch.h"
#include "tree/folderSelection.h"
#include "tree/folderTree.h"
#include "views/widgets/systemIcons.h"

// The main window: owns the controls and all that lives as long as the program, and wires the controls'
// events to what handles them. Construction is start-up; a step that fails is logged and the others follow.
class frmMain final : public QMainWindow, private FolderViews {
    Q_OBJECT

public:
    // The application folder is an internal path; the dialogs are not owned.
    frmMain(std::string_view applicationFolder, clsDialogs& dialogs);
    ~frmMain() override;

    // Selects and scans a folder as if it had been typed.
    void openPath(std::string_view typedPath);

    [[nodiscard]] clsSettings& settings() noexcept { return settings_; }
    [[nodiscard]] const clsSearch& search() const noexcept { return search_; }
    [[nodiscard]] const WorkingDatabase& database() const noexcept { return working_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void form_load();
    void form_unload();
    void layOut();
    void wire();
    [[nodiscard]] MenuTargets menuTargets();
    void workAlone(const std::function<void()>& command);
    void closeIfWanted();

    void txtPath_GotFocus();
    void txtPath_LostFocus();
    void Form_KeyUp(const QKeyEvent& event);
    void lvwF_Click(const std::string& key, const std::string& tag);
    void tc_OnClick(const std::string& label);

    // FolderViews
    void updateGraph() override { views_.updateGraph(); }
    void refreshActiveView() override { views_.refreshActiveView(); }
    void clearFilesList() override { views_.clearFilesList(); }
    void scanRuns(bool running) override;

    const std::string applicationFolder_;
    clsDialogs& dialogs_;
    std::unique_ptr<QSettings> state_; // geometry, splitter, column widths, active tab

    clsRegSettings store_;
    clsSettings settings_;
    WorkingDatabase working_;
    clsSearch search_{working_, settings_};

    // A control is declared behind the one that it stands in, so that it is gone before it.
    ImageList imlFiles_{this};
    ImageList imlMenu_{this};
    QWidget central_;
    QLineEdit txtPath_;
    QPushButton cmdGo_;
    QSplitter splitter_;
    FolderTree tvw_;
    ViewTabs views_;
    Animation ani_;
    QStatusBar statusBar_;
    QProgressBar prg_;
    WindowInterface userInterface_;
    QtClipboard clipboard_;
    FolderSelection selection_;

    PopMenu cP_{this};
    PopMenu cPLvw_{this};
    MenuToolbar tbrMenu_;
    Rebar cRebar_;
    HelpCommand help_{*this};
    ReportCommands reports_;
    DatabaseCommands databases_;
    ChartCommands charts_;
    ListMenu listMenu_;
    MenuCommands commands_;
    QShortcut escape_;
    QShortcut toPath_;
    bool workingAlone_ = false;
    bool closing_ = false; // as soon as what runs has ended
};
