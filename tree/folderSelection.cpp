#include "tree/folderSelection.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "app/errorLog.h"
#include "app/modGlobal.h"
#include "db/values.h"
#include "platform/clock.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "scan/modProcessFiles.h"
#include "scan/savedScan.h"
#include "tree/nodeKeys.h"
#include "tree/treeOperations.h"
#include "views/folderFigures.h"

namespace {

constexpr std::string_view moduleName = "frmMain";
constexpr std::string_view notFound =
    "Directory not found.  You can select a directory in the list on the left "
    "hand side of the screen, or try again.";

// The key of the node that a typed path stands for; empty when it names no folder.
std::string nodeOf(std::string_view typedPath) {
    try {
        const std::string path = platform::toInternal(typedPath);
        return path.empty() || !platform::folderExists(path) ? "" : modGlobal::addBackslash(path);
    } catch (const RuntimeError&) {
        return {}; // a relative path without a current folder
    }
}

} // namespace

void FolderSelection::tvw_Expand(const std::string& key) {
    modGlobal::trapped(moduleName, "tvw_Expand", [&] {
        FolderTree& tree = with_.tree;
        const std::string placeholder = modNodeKeys::placeholderOf(key);
        if (modGlobal::findNode(tree, placeholder)) {
            tree.removePlaceholder(placeholder);
        }
        if (modNodeKeys::isFolderKey(key) && tree.tag(key).isEmpty()) {
            const BusyPointer busy(with_.userInterface);
            listSubfolders(key);
            tree.setTag(key, QString::fromUtf8(modNodeKeys::foldersProcessed));
        }
    });
}

void FolderSelection::tvw_NodeClick(const std::string& key) {
    if (holds_ > 0) {
        held_ = key;
        return;
    }
    modGlobal::trapped(moduleName, "tvw_NodeClick", [&] { clickNode(key); });
}

void FolderSelection::listSubfolders(const std::string& key) {
    modGlobal::getChildFoldersAPI(with_.tree, with_.userInterface, with_.icons, key);
    modGlobal::getDummyFolders(with_.tree, key);
    listLoadedSubfolders(key);
}

// What was loaded may be another machine's, or no longer there: its rows tell which folders there are.
void FolderSelection::listLoadedSubfolders(const std::string& key) {
    if (lastLoadedRow_ == 0 || holds_ > 0) {
        return;
    }
    const std::vector<std::string> paths = modSavedScan::subfolders(with_.database.database(), key);
    std::vector<std::string_view> sound;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(sound), modNodeKeys::isSound);
    modGlobal::addNodes(sound, with_.tree, key, with_.icons);
    for (const std::string_view path : sound) {
        const bool isNew =
            with_.tree.findNode(path) && with_.tree.tag(path).isEmpty() && with_.tree.childKeys(path).empty();
        if (isNew && !with_.tree.findNode(modNodeKeys::placeholderOf(path))) {
            with_.tree.addPlaceholder(path);
        }
    }
}

void FolderSelection::clickNode(const std::string& key) {
    if (with_.tree.isFirstNode(key) || !modNodeKeys::isFolderKey(key)) {
        return;
    }
    with_.views.updateGraph();
    const bool isElsewhere = lastLoadedRow_ > 0 && !platform::folderExists(key); // it was loaded
    if (isElsewhere || platform::whyUnreadable(key).empty()) {
        listSubfolders(key);
    } else {
        markAccessDenied(key);
    }
    if (!with_.database.isOpen()) { // why not was said when it happened
        with_.userInterface.status(StatusPanel::folder, "There is no scan database to work with.");
        return;
    }
    const std::int64_t startTick = platform::tickCount();
    if (with_.search.processing) {
        queue(key);
    } else {
        with_.search.nextNode.clear();
        if (!isLoaded(key)) {
            scan(key);
        }
    }
    elapsedTicks_ = platform::tickCount() - startTick;
    if (!suppressed_) {
        showItems();
        const BusyPointer busy(with_.userInterface);
        with_.views.refreshActiveView();
    }
}

// A click on the very folder that is being scanned asks for what is being done. To begin again would record
// the rows of its unfinished folders twice.
void FolderSelection::queue(const std::string& key) {
    clsSearch& search = with_.search;
    if (search.CancelScan || search.rootPath != key) {
        search.CancelScan = true;
        search.nextNode = key;
    }
}

void FolderSelection::markAccessDenied(const std::string& key) {
    const QString suffix = QStringLiteral(" (Access Denied)");
    const QString text = with_.tree.text(key);
    if (text.right(suffix.size() - 1).compare(suffix.mid(1), Qt::CaseInsensitive) != 0) {
        with_.tree.setText(key, text + suffix);
    }
}

// A Cancel Scan that was given when there was nothing to cancel is not meant for this scan. What was queued
// is handled when this scan is over for everybody: the listing before the next scan takes no input.
void FolderSelection::scan(const std::string& key) {
    with_.search.CancelScan = false;
    with_.views.scanRuns(true);
    const bool stored = modProcessFiles::processMain(key, {with_.search, with_.settings, with_.userInterface,
                                                           [this](const std::string& node) {
                                                               with_.views.scanRuns(false);
                                                               handleQueued(node);
                                                           }})
                            .stored;
    if (!stored) {
        lastLoadedRow_ = 0; // the rows are gone, and their numbers are given anew
    }
    with_.views.scanRuns(false);
}

// Called by a scan at its end. Nodes that are queued while a queued node is handled are taken in turn here,
// so that however many clicks follow each other, their scans do not nest.
void FolderSelection::handleQueued(const std::string& key) {
    queued_ = key;
    if (handlingQueue_) {
        return;
    }
    handlingQueue_ = true;
    while (!queued_.empty() && !suppressed_) {
        tvw_NodeClick(std::exchange(queued_, {}));
    }
    handlingQueue_ = false;
}

void FolderSelection::showItems() {
    with_.userInterface.status(StatusPanel::items, modFigures::itemsText(with_.database.database()));
}

// --- Loaded rows -----------------------------------------------------------------------------------------

void FolderSelection::showLoaded() {
    modGlobal::trapped(moduleName, "showLoaded", [&] {
        lastLoadedRow_ = lastRow();
        held_.clear(); // it was another tree's
        showItems();
    });
}

// The number of the row that was recorded last.
std::int64_t FolderSelection::lastRow() const {
    const auto rows = with_.database.database().OpenRecordset("select max(idx) from details");
    const Value number = rows->Fields(0).value();
    const auto* whole = std::get_if<std::int64_t>(&number);
    return whole == nullptr ? 0 : *whole;
}

// A folder that was completed has a stamp, and the scan driver knows it; others are known by their rows. Of a
// scan that was cancelled the folders that it was in stay as they were saved.
bool FolderSelection::isLoaded(const std::string& key) const {
    return lastLoadedRow_ > 0 && modSavedScan::wasWalked(with_.database.database(), key, lastLoadedRow_);
}

// --- Holding ----------------------------------------------------------------------------------------------

void FolderSelection::release() {
    if (--holds_ == 0 && !held_.empty()) {
        const std::string key = std::exchange(held_, {});
        if (!suppressed_ && modGlobal::findNode(with_.tree, key)) { // it may have been another tree's
            tvw_NodeClick(key);
        }
    }
}

// --- Typed, refreshed, opened -----------------------------------------------------------------------------

void FolderSelection::cmdGo_Click(std::string_view typedPath) {
    modGlobal::trapped(moduleName, "cmdGo_Click", [&] {
        const std::string key = nodeOf(typedPath);
        if (key.empty()) {
            with_.userInterface.message(notFound);
            return;
        }
        FolderTree& tree = with_.tree;
        if (!modGlobal::findNode(tree, key)) {
            modGlobal::addTopNode(tree, with_.icons, key);
        }
        tree.selectNode(key);
        modGlobal::getDummyFolders(tree, key);
        tvw_NodeClick(key);
    });
}

void FolderSelection::refreshScreen() {
    modGlobal::trapped(moduleName, "refreshScreen", [&] {
        const std::string key = with_.tree.selectedKey();
        if (key.empty()) {
            with_.userInterface.message("You must first select a folder.");
            return;
        }
        if (holds_ > 0) {
            return;
        }
        if (with_.database.isOpen()) {
            with_.search.resetScanCompleteTime(key);
            // New rows may get the numbers of those that were deleted.
            lastLoadedRow_ = std::min(lastLoadedRow_, lastRow());
        }
        with_.views.clearFilesList();
        with_.search.CancelScan = with_.search.processing; // also when it is this folder's scan that runs
        tvw_NodeClick(key);
    });
}

void FolderSelection::openFolder(const std::string& key) {
    if (modGlobal::findNode(with_.tree, key)) {
        modGlobal::tvwSelectNode(with_.tree, key);
        tvw_NodeClick(key);
    }
}
