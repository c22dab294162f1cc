#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/clsSettings.h"
#include "app/clsUserInterface.h"
#include "db/workingDatabase.h"
#include "scan/clsSearch.h"
#include "tree/folderTree.h"
#include "views/widgets/systemIcons.h"

// What follows the selected folder; implemented by the main window. Implementations trap their errors.
class FolderViews {
public:
    virtual ~FolderViews() = default;

    // Draws the chart of the selected folder, whichever tab is shown.
    virtual void updateGraph() = 0;
    // Brings the view of the active tab up to date with the rows, and sorts it as remembered.
    virtual void refreshActiveView() = 0;
    // Empties the files and folders list, so that it is filled from its first row again.
    virtual void clearFilesList() = 0;
    // A scan begins or has ended: the busy animation and the views' growth follow.
    virtual void scanRuns(bool running) = 0;
};

// The road of every scan that a person starts: from the tree's events, the path box and Refresh to the scan
// driver and back to the views. Errors are logged as the main window's.
class FolderSelection {
public:
    // All that it works with; nothing is owned.
    struct Surroundings {
        FolderTree& tree;
        ImageList& icons;
        clsSearch& search;
        const clsSettings& settings;
        const WorkingDatabase& database;
        clsUserInterface& userInterface;
        FolderViews& views;
    };

    explicit FolderSelection(const Surroundings& surroundings) : with_(surroundings) {}

    // Fills the subfolders of a node that is being expanded.
    void tvw_Expand(const std::string& key);

    // Makes the folder the current place: lists its subfolders, scans it unless it was scanned, refreshes
    // the views. While a scan runs it is cancelled and this node is handled when it has ended.
    void tvw_NodeClick(const std::string& key);

    // Selects the typed folder, which gets a top-level node when it has none, and handles it as a click.
    void cmdGo_Click(std::string_view typedPath);

    // Scans the selected folder anew.
    void refreshScreen();

    // Selects the folder of a row or bar, if the tree has it, and handles it as a click.
    void openFolder(const std::string& key);

    // From here on no counts and views are refreshed after a scan: the window is closing.
    void suppressRefresh() { suppressed_ = true; }

    // A database file's rows have taken the place of all rows, or what could be read of them has: folders
    // whose files are among them are shown from them and not walked, until they are refreshed. Brings the
    // item count up to date.
    void showLoaded();

    // From a hold to its release no scan begins and no row is deleted: something else works on the database
    // and handles events meanwhile. The last click is handled at the release, a refresh is dropped. Holds may
    // nest; HeldSelection makes pairs of them.
    void hold() { ++holds_; }
    void release();

private:
    void listSubfolders(const std::string& key);
    void listLoadedSubfolders(const std::string& key);
    void clickNode(const std::string& key);
    void queue(const std::string& key);
    void markAccessDenied(const std::string& key);
    void scan(const std::string& key);
    void handleQueued(const std::string& key);
    void showItems();
    [[nodiscard]] std::int64_t lastRow() const;
    [[nodiscard]] bool isLoaded(const std::string& key) const;

    Surroundings with_;
    bool suppressed_ = false;
    bool handlingQueue_ = false;
    std::string queued_;
    std::int64_t lastLoadedRow_ = 0; // its number; later ones were recorded by scans
    int holds_ = 0;
    std::string held_;              // key of the node clicked meanwhile
    std::int64_t elapsedTicks_ = 0; // of the last scan, milliseconds; kept, and read by nobody
};

// Holds the selection for as long as it lives.
class HeldSelection {
public:
    explicit HeldSelection(FolderSelection& selection) : selection_(selection) { selection_.hold(); }
    ~HeldSelection() { selection_.release(); }
    HeldSelection(const HeldSelection&) = delete;
    HeldSelection& operator=(const HeldSelection&) = delete;

private:
    FolderSelection& selection_;
};
