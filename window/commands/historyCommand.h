#pragma once

#include <QObject>
#include <QSettings>
#include <functional>
#include <string>
#include <utility>

#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "db/workingDatabase.h"
#include "export/clipboard.h"
#include "window/commands/fileChoice.h"
#include "window/dialogs/clsDialogs.h"
#include "window/dialogs/frmHistory.h"

// The command that shows the history of the selected folder, and those of its window.
class HistoryCommand final : public QObject {
    Q_OBJECT

public:
    // Nothing is owned.
    struct Dependencies {
        QWidget& window;
        const WorkingDatabase& database;
        const clsSettings& settings;
        clsUserInterface& userInterface;
        clsDialogs& dialogs;
        modExport::Clipboard& clipboard;
        // Runs what handles events while it writes.
        std::function<void(const std::function<void()>& command)> runExclusively;
        std::function<std::string()> selectedFolder; // the key; empty for none
        std::function<std::string()> lastSavedScan;  // an internal path; empty for none
        // Compares the scan with what a saved scan holds, an internal path; may be empty.
        std::function<void(const std::string& file)> openAsBefore;
    };

    explicit HistoryCommand(Dependencies dependencies);

    void show();
    // The window follows the folder that is selected.
    void follow(const std::string& key) { history_.showFolder(key); }

    void restore(const QSettings& state) { history_.restore(state); }
    void save(QSettings& state) const { history_.save(state); }

private:
    void copy();
    void exportList();

    Dependencies dependencies_;
    FileChoice choice_;
    frmHistory history_;
};
