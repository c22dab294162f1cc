#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "db/workingDatabase.h"
#include "platform/folders.h"
#include "scan/clsSearch.h"
#include "scan/modProcessFiles.h"
#include "tree/folderTree.h"
#include "widgets/systemIcons.h"

// The views of the selected folder, updated when a scan requests it. Implementations trap their errors.
class FolderViews {
public:
    virtual ~FolderViews() = default;

    // Draws the chart of the selected folder, on whichever tab.
    virtual void updateGraph() = 0;
    // Updates the view of the active tab from the rows, and sorts it as remembered.
    virtual void refreshActiveView() = 0;
    // The same after some rows have changed or gone: what is selected stays so, or what stands next to it is.
    virtual void followRows() = 0;
    // Empties the files and folders list, so that it is filled again from the first row.
    virtual void clearFilesList() = 0;
};

// The path of every scan that the user starts: from the tree's events, the path box and Refresh to the scan
// driver and back to the views. Errors are logged for the main window.
class FolderSelection final : public QObject {
    Q_OBJECT

public:
    // Everything that it uses; nothing is owned.
    struct Dependencies {
        FolderTree& tree;
        ImageList& icons;
        clsSearch& search;
        const clsSettings& settings;
        const WorkingDatabase& database;
        clsUserInterface& userInterface;
        FolderViews& views;
        std::function<std::string(std::string_view folder)> recordedPath = platform::recordedPath;
        // Opens a typed path that leads to no folder; false if it cannot.
        std::function<bool(std::string_view typedPath)> openFile = [](std::string_view) { return false; };
    };

    explicit FolderSelection(Dependencies dependencies) : dependencies_(std::move(dependencies)) {}

    // Fills in the subfolders of a node that is being expanded.
    void tvw_Expand(const std::string& key);

    // Goes to the folder: lists its subfolders, scans it unless it has been scanned, and refreshes the views.
    // If a scan is running, it is cancelled, and this node is handled when it has ended.
    void tvw_NodeClick(const std::string& key);

    // Selects the typed folder and handles it like a click. If the tree does not have it, it becomes a
    // top-level node. What is no folder is passed on (Dependencies::openFile).
    void cmdGo_Click(std::string_view typedPath);

    // Scans the selected folder again: the folder and its direct subfolders or, if exact figures are set,
    // everything below it. A loaded folder that is not on this computer stays unchanged.
    void refreshScreen();

    // Scans a folder again, like refreshScreen, wherever it is; the selection stays. False if a scan is
    // running, or this one was cancelled.
    bool scanFolderAgain(const std::string& key);

    // These entries (a folder's path ends in "\") no longer exist: their rows and nodes go, the totals above
    // them follow, and the views are refreshed.
    void entriesRemoved(const std::vector<std::string>& entries);

    // Whether rows of a loaded scan are left.
    [[nodiscard]] bool holdsLoadedRows() const;

    // Whether there is anything for scanAgain.
    [[nodiscard]] bool hasScans() const noexcept { return !starts_.empty(); }

    // Scans everything anew that was scanned in this session, because sizes are now to be recorded in another
    // way; loaded rows stay. False if it was cancelled; what it had not come to is then as before.
    bool scanAgain();

    // Selects the folder of a row or bar, if the tree has it, and handles it like a click.
    void openFolder(const std::string& key);
    // The same; the tree lists the folders above it first, below the nearest one that it has.
    void revealFolder(const std::string& key);

    // From here on, nothing is refreshed after a scan, because the window is closing.
    void suppressRefresh() { suppressed_ = true; }

    // The rows of a saved scan have replaced all rows (or as many as could be read). Folders whose files are
    // among them are shown from these rows, and not scanned until they are refreshed. Updates the item count.
    void showLoaded();

    // From a hold to its release, no scan starts and no row is deleted, because something else uses the
    // database and handles events. The last click is handled at the release; a refresh is dropped. Holds can
    // be nested; use HeldSelection to pair them.
    void hold() { ++holds_; }
    void release();

    // Shows a folder by its key (an internal path with a trailing "\"), which may be anywhere: like a click
    // if the tree has it, and otherwise as if it were typed.
    void showFolder(const std::string& key);

    // Whether the folder can be shown: it exists, or it was loaded.
    [[nodiscard]] bool canShow(const std::string& key) const;

    // Whether what is shown of the folder was loaded, and not scanned here.
    [[nodiscard]] bool isLoaded(const std::string& key) const;

    // Whether rows of anything in the folder were loaded.
    [[nodiscard]] bool holdsLoadedRowsIn(const std::string& key) const;

    // Whether the folder was scanned for itself in this session, or loaded so.
    [[nodiscard]] bool wasScanned(const std::string& key) const {
        return starts_.contains(key) || isLoaded(key);
    }

    // Whether the last scan that began with the folder was cancelled.
    [[nodiscard]] bool isUnfinished(const std::string& key) const { return unfinished_.contains(key); }

Q_SIGNALS:
    // The rows, and the tree, are those of a saved scan now.
    void rowsLoaded();
    // A folder was clicked, or reached in another way, and is now listed and scanned, if need be.
    void folderShown(const std::string& key);
    // A scan or a load has ended, or a folder that needs no scan is shown.
    void figuresChanged();
    // A scan starts, or none is running any more.
    void scanRuns(bool running);
    // What a scan has met.
    void scanned(const modProcessFiles::ScanResult& result);

private:
    void listSubfolders(const std::string& key);
    void listLoadedSubfolders(const std::string& key);
    void clickNode(const std::string& key);
    void listAndScan(const std::string& key);
    void queue(const std::string& key);
    enum class Answer { yes, none, cancelled };
    Answer waitForVolume(const std::string& key);
    void showProblem(const std::string& key, QStringView problem);
    // False if it cannot be seen whether it exists.
    [[nodiscard]] static bool isGone(const std::string& key);
    void forgetGone(const std::string& key);
    void reset(const std::string& key);
    bool goesElsewhere(const std::string& key);
    void goTo(const std::string& key);
    void refreshViews();
    void noteStart(const std::string& key);
    void forgetStarts(const std::string& key);
    bool scan(const std::string& key); // false if it was not completed
    void handleQueued(const std::string& key);
    void showItems();
    void showFigures(void (FolderViews::*refresh)() = &FolderViews::refreshActiveView);
    void makeIndexes();
    [[nodiscard]] std::int64_t lastRow() const;
    [[nodiscard]] bool isOnlyLoaded(const std::string& key) const;
    [[nodiscard]] bool hasLoadedRow(const std::string& condition) const;

    Dependencies dependencies_;
    bool suppressed_ = false;
    bool handlingQueue_ = false;
    std::string queued_;
    std::int64_t lastLoadedRow_ = 0;   // its number; rows of later scans have higher ones
    std::set<std::string> starts_;     // the folders that were scanned, without those below others of them
    std::set<std::string> unfinished_; // folders whose scan was cancelled
    int holds_ = 0;
    std::string held_; // key of the node clicked during a hold
};

// Holds the selection during its lifetime.
class HeldSelection {
public:
    explicit HeldSelection(FolderSelection& selection) : selection_(selection) { selection_.hold(); }
    ~HeldSelection() { selection_.release(); }
    HeldSelection(const HeldSelection&) = delete;
    HeldSelection& operator=(const HeldSelection&) = delete;

private:
    FolderSelection& selection_;
};
