#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <string>

#include "scan/clsSearch.h"
#include "scan/modProcessFiles.h"
#include "tree/folderSelection.h"
#include "window/commands/fileChoice.h"
#include "window/folderHeader.h"
#include "window/menu/popMenu.h"
#include "window/messageBar.h"
#include "window/tabs/openComparison.h"
#include "window/tabs/viewTabs.h"
#include "window/windowInterface.h"

// The commands that compare what is shown with a saved scan, compare again and close the comparison; and what
// says, above the tabs and in the message bar, what is compared, and whether rows have changed since.
class Comparing final : public QObject {
    Q_OBJECT

public:
    // Nothing is owned.
    struct Dependencies {
        QWidget& window;
        OpenComparison& open;
        WorkingDatabase& database;
        const clsSearch& search;
        FolderSelection& selection;
        const FolderTree& tree;
        ViewTabs& views;
        MessageBar& bar;
        FolderHeader& header;
        PopMenu& menu;
        WindowInterface& userInterface;
        clsDialogs& dialogs;
        std::function<bool()> mayRun; // a command that needs the rows for itself
        std::function<void(const std::function<void()>&)> runExclusively;
    };

    explicit Comparing(Dependencies dependencies);

    // To be called when the menu has been made.
    void start();

    // Asks for a file and compares.
    void chooseAndCompare();
    // Opens a saved scan, a path as typed, as what there was before, and compares what is shown of the
    // selected folder with it. A file that is refused is a message; then, and after Cancel, all stays as it
    // is. Without effect while something else needs the rows for itself.
    void compareWith(const std::string& file);
    // With the same saved scan.
    void compareAgain();
    void close();
    // Shows the chart of changes instead of the chart, or the chart again; without effect if none is open.
    void showChart(bool shown);

    // A scan has ended. One of a folder that the comparison has nothing to do with leaves it as it is.
    void scanned(const modProcessFiles::ScanResult& result);
    // Rows may have changed: looks whether they have.
    void followRows();
    // What has changed since the last look were no rows of files and folders.
    void overlookChanges();
    // All rows have been replaced.
    void rowsReplaced();

private:
    [[nodiscard]] std::string selectedFolder() const;
    void open(const std::string& file);
    void runAgain();
    [[nodiscard]] std::optional<modChanges::Request> requestFor(EarlierScan& earlier,
                                                                const std::string& file);
    [[nodiscard]] std::string askForFolder(EarlierScan& earlier, const std::string& folder,
                                           const std::string& file);
    [[nodiscard]] std::optional<modChanges::Result> compare(EarlierScan& earlier,
                                                            const modChanges::Request& request);
    void tellCancelled();
    [[nodiscard]] bool isAgainQuick() const;
    void follow();
    void showHeader();
    void showRemark();
    void showOutdated();
    [[nodiscard]] QString headerText(const QString& fileShown) const;
    [[nodiscard]] QString nowText() const;
    [[nodiscard]] std::int64_t rowsVersion() const;

    Dependencies dependencies_;
    FileChoice choice_;
    std::int64_t rows_ = 0; // the version that was compared
    qint64 cost_ = 0;       // of the last comparison, in milliseconds, without reading the saved scan
    bool isAgainDue_ = false;
    bool onDisk_ = false; // the sizes that the views count
};
