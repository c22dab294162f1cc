// Scanning again, and entries that are gone.

#include <algorithm>
#include <set>

#include "base/errorTrap.h"
#include "platform/paths.h"
#include "tree/folderSelection.h"
#include "tree/treeOperations.h"

namespace {

constexpr std::string_view moduleName = "frmMain";

} // namespace

void FolderSelection::refreshScreen() {
    modGlobal::trapped(moduleName, "refreshScreen", [&] {
        const std::string key = dependencies_.tree.selectedKey();
        if (key.empty()) {
            dependencies_.userInterface.message("You must first select a folder.");
            return;
        }
        if (holds_ > 0) {
            return;
        }
        if (isOnlyLoaded(key)) {
            dependencies_.userInterface.message("There is no folder " + platform::displayPath(key) +
                                                " on this computer.  What was loaded of it stays as it is.");
            return;
        }
        if (waitForVolume(key) != Answer::yes) {
            return; // what was recorded stays
        }
        if (dependencies_.database.isOpen()) {
            const BusyPointer busy(dependencies_.userInterface);
            reset(key);
        }
        dependencies_.views.clearFilesList();
        tvw_NodeClick(key);
    });
}

// So that it is scanned again: the folder and its direct subfolders or, with exact figures, all below it.
void FolderSelection::reset(const std::string& key) {
    clsSearch& search = dependencies_.search;
    dependencies_.settings.exact() ? search.resetWholeFolder(key) : search.resetScanCompleteTime(key);
}

bool FolderSelection::scanFolderAgain(const std::string& key) {
    return modGlobal::trapped(moduleName, "scanFolderAgain", [&] {
        clsSearch& search = dependencies_.search;
        if (search.processing || holds_ > 0 || !dependencies_.database.isOpen()) {
            return false;
        }
        if (waitForVolume(key) != Answer::yes) {
            return false;
        }
        bool isComplete = true;
        if (isGone(key)) {
            forgetGone(key);
        } else {
            reset(key);
            isComplete = scan(key);
        }
        refreshViews();
        return isComplete;
    });
}

void FolderSelection::entriesRemoved(const std::vector<std::string>& entries) {
    modGlobal::trapped(moduleName, "entriesRemoved", [&] {
        FolderTree& tree = dependencies_.tree;
        const std::string selected = tree.selectedKey();
        for (const std::string& entry : entries) {
            dependencies_.search.removeEntry(entry);
            if (entry.ends_with('\\')) {
                forgetStarts(entry);
                if (modGlobal::findNode(tree, entry)) {
                    tree.removeNode(entry);
                }
            }
        }
        if (tree.selectedKey() != selected) { // its node is gone; the one above is selected
            tvw_NodeClick(tree.selectedKey());
        } else {
            refreshViews();
        }
    });
}

// After rows have changed that are not those of a click.
void FolderSelection::refreshViews() {
    if (!suppressed_) {
        dependencies_.views.updateGraph();
        showFigures(&FolderViews::followRows);
    }
}

bool FolderSelection::scanAgain() {
    return modGlobal::trapped(moduleName, "scanAgain", [&] {
        clsSearch& search = dependencies_.search;
        if (search.processing || holds_ > 0 || !dependencies_.database.isOpen()) {
            return false;
        }
        dependencies_.views.clearFilesList();
        const std::set<std::string> folders = starts_;
        const bool isComplete = std::all_of(folders.begin(), folders.end(), [&](const std::string& folder) {
            search.resetWholeFolder(folder);
            return isGone(folder) || scan(folder);
        });
        const std::string selected = dependencies_.tree.selectedKey();
        if (isComplete && !suppressed_ && !selected.empty()) {
            tvw_NodeClick(selected);
        } else if (!suppressed_) {
            showFigures();
        }
        return isComplete;
    });
}

// Of folders that lie in each other, only the outer one.
void FolderSelection::noteStart(const std::string& key) {
    const bool isInner = std::any_of(starts_.begin(), starts_.end(),
                                     [&](const std::string& start) { return key.starts_with(start); });
    if (!isInner) {
        forgetStarts(key);
        starts_.insert(key);
    }
}

void FolderSelection::forgetStarts(const std::string& key) {
    std::erase_if(starts_, [&](const std::string& start) { return start.starts_with(key); });
}
