#include "tree/folderSelection.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "base/clsFile.h"
#include "base/errorTrap.h"
#include "base/modGlobal.h"
#include "db/folderRows.h"
#include "db/values.h"
#include "platform/answering.h"
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

// Behind the text of a folder's node.
constexpr QStringView accessDenied = u" (Access Denied)";
constexpr QStringView notAnswering = u" (not answering)";

// Empty if it is a relative path, and the current folder no longer exists.
std::string internalOf(std::string_view typedPath) {
    try {
        return modGlobal::addBackslash(platform::toInternal(typedPath));
    } catch (const RuntimeError&) {
        return {};
    }
}

// The key of the node for a typed path; empty if there is no such folder.
std::string nodeOf(std::string_view typedPath) {
    const std::string path = internalOf(typedPath);
    return path.empty() || !platform::folderExists(path) ? "" : platform::recordedPath(path);
}

// Says why there is no node for a typed path.
void tellWhyNoNode(clsUserInterface& userInterface, std::string_view typedPath) {
    const std::string path = internalOf(typedPath);
    const std::string reason = path.empty() ? "" : platform::whyHidden(path);
    if (reason.empty()) {
        userInterface.messageAbout(notFound, typedPath);
    } else {
        userInterface.message(reason + ": " + std::string(typedPath));
    }
}

} // namespace

void FolderSelection::tvw_Expand(const std::string& key) {
    modGlobal::trapped(moduleName, "tvw_Expand", [&] {
        FolderTree& tree = dependencies_.tree;
        if (waitForVolume(key) != Answer::yes) {
            tree.setExpanded(key, false);
            return;
        }
        const std::string placeholder = modNodeKeys::placeholderOf(key);
        if (modGlobal::findNode(tree, placeholder)) {
            tree.removePlaceholder(placeholder);
        }
        if (modNodeKeys::isFolderKey(key) && tree.tag(key).isEmpty()) {
            const BusyPointer busy(dependencies_.userInterface);
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
    modGlobal::getChildFoldersAPI(dependencies_.tree, dependencies_.userInterface, dependencies_.icons, key);
    modGlobal::getDummyFolders(dependencies_.tree, key);
    listLoadedSubfolders(key);
}

// Loaded folders may be on another machine or no longer exist, so the rows show which folders there are.
void FolderSelection::listLoadedSubfolders(const std::string& key) {
    if (lastLoadedRow_ == 0 || holds_ > 0) {
        return;
    }
    const std::vector<std::string> paths = modSavedScan::subfolders(dependencies_.database.database(), key);
    std::vector<std::string_view> sound;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(sound), modNodeKeys::isSound);
    modGlobal::addNodes(sound, dependencies_.tree, key, dependencies_.icons);
    for (const std::string_view path : sound) {
        const bool isNew = dependencies_.tree.findNode(path) && dependencies_.tree.tag(path).isEmpty() &&
                           dependencies_.tree.childKeys(path).empty();
        if (isNew && !dependencies_.tree.findNode(modNodeKeys::placeholderOf(path))) {
            dependencies_.tree.addPlaceholder(path);
        }
    }
}

void FolderSelection::clickNode(const std::string& key) {
    if (dependencies_.tree.isFirstNode(key) || !modNodeKeys::isFolderKey(key)) {
        return;
    }
    const bool isAskedLater = dependencies_.search.processing && platform::mayNotAnswer(key);
    const bool isThere = !isAskedLater && waitForVolume(key) == Answer::yes;
    if (isThere && goesElsewhere(key)) {
        return;
    }
    Q_EMIT folderShown(key);
    dependencies_.views.updateGraph();
    if (isThere) {
        listAndScan(key);
    } else if (isAskedLater) {
        queue(key);
    }
    if (!suppressed_ && dependencies_.database.isOpen()) {
        const BusyPointer busy(dependencies_.userInterface);
        showFigures();
    }
}

// The view need not wait for the indexes of what was scanned into an empty table.
void FolderSelection::showFigures(void (FolderViews::*refresh)()) {
    showItems();
    (dependencies_.views.*refresh)();
    if (!dependencies_.search.processing) {
        makeIndexes();
    }
    Q_EMIT figuresChanged();
}

void FolderSelection::makeIndexes() {
    const bool isDone = modGlobal::trapped(moduleName, "makeIndexes", [&] {
        dependencies_.search.makeIndexes();
        return true;
    });
    if (!isDone) { // the rows are gone
        starts_.clear();
        showItems();
        dependencies_.views.refreshActiveView();
    }
}

void FolderSelection::listAndScan(const std::string& key) {
    const bool isElsewhere = lastLoadedRow_ > 0 && !platform::folderExists(key); // it was loaded
    const bool isReadable = isElsewhere || platform::whyUnreadable(key).empty();
    showProblem(key, isReadable || isGone(key) ? QStringView() : accessDenied);
    if (isReadable) {
        listSubfolders(key);
    }
    if (!dependencies_.database.isOpen()) { // the reason was shown when it happened
        dependencies_.userInterface.status(StatusPanel::folder, "The working database is not available.");
        return;
    }
    if (dependencies_.search.processing) {
        queue(key);
    } else {
        dependencies_.search.nextNode.clear();
        if (isGone(key)) {
            forgetGone(key);
        } else if (!isLoaded(key)) {
            scan(key);
        }
    }
}

// Waiting counts as a scan of the folder: it can be cancelled, a click elsewhere ends it, and the window can
// be closed. A scan that is running goes on after at most platform::patience.
FolderSelection::Answer FolderSelection::waitForVolume(const std::string& key) {
    clsSearch& search = dependencies_.search;
    if (!platform::mayNotAnswer(key) || search.processing || holds_ > 0) {
        return Answer::yes;
    }
    search.processing = true;
    search.rootPath = key;
    search.CancelScan = false;
    search.nextNode.clear();
    Q_EMIT scanRuns(true);
    bool waited = false;
    const bool isThere = platform::answers(key, [&] {
        waited = true;
        dependencies_.userInterface.status(StatusPanel::folder, "Waiting for " + platform::displayPath(key));
        dependencies_.userInterface.yieldToEvents();
        return !search.CancelScan;
    });
    search.processing = false;
    Q_EMIT scanRuns(false);
    const bool isCancelled = std::exchange(search.CancelScan, false) || suppressed_;
    if (waited || !isThere) {
        dependencies_.userInterface.status(
            StatusPanel::folder,
            isThere || isCancelled ? std::string() : std::string(platform::notAnswering) + ".");
    }
    if (!isCancelled && modGlobal::findNode(dependencies_.tree, key)) {
        showProblem(key, isThere ? QStringView() : notAnswering);
    }
    if (!search.nextNode.empty()) {
        handleQueued(std::exchange(search.nextNode, {}));
    }
    return isCancelled ? Answer::cancelled : isThere ? Answer::yes : Answer::none;
}

// The root of another volume is recorded under its own drive, and a folder that has become a link where that
// leads; likewise what a drive's node shows when the drive is no longer mounted there.
bool FolderSelection::goesElsewhere(const std::string& key) {
    const std::string recorded = dependencies_.recordedPath(key);
    if (recorded == key || !dependencies_.database.isOpen() || isLoaded(key)) {
        return false;
    }
    if (lastLoadedRow_ == 0 && modFolderRows::find(dependencies_.database.database(), key).hasContent) {
        dependencies_.search.resetWholeFolder(key);
        forgetStarts(key);
    }
    goTo(recorded);
    return true;
}

bool FolderSelection::isGone(const std::string& key) {
    return !platform::folderExists(key) && platform::whyHidden(key).empty();
}

// The tree shows the folder still; what was recorded of it no longer counts. Loaded rows stay.
void FolderSelection::forgetGone(const std::string& key) {
    if (lastLoadedRow_ == 0) {
        forgetStarts(key);
        dependencies_.search.resetWholeFolder(key);
        dependencies_.userInterface.status(StatusPanel::folder, "The folder no longer exists.");
        dependencies_.userInterface.status(StatusPanel::remarks, {});
    }
}

// If the user clicks the folder that is being scanned, the scan simply goes on.
void FolderSelection::queue(const std::string& key) {
    clsSearch& search = dependencies_.search;
    if (search.CancelScan || search.rootPath != key) {
        search.CancelScan = true;
        search.nextNode = key;
    }
}

// The problem stands behind the node's text; none takes it away.
void FolderSelection::showProblem(const std::string& key, QStringView problem) {
    const QString before = dependencies_.tree.text(key);
    QString text = before;
    for (const QStringView other : {accessDenied, notAnswering}) {
        if (other != problem && text.endsWith(other)) {
            text.chop(other.size());
        }
    }
    if (!problem.isEmpty() &&
        !text.endsWith(problem.mid(1), Qt::CaseInsensitive)) { // a folder may be called so
        text += problem;
    }
    if (text != before) {
        dependencies_.tree.setText(key, text);
    }
}

// A Cancel Scan that came when nothing was running must not affect this scan. A queued node is handled after
// this scan has ended completely: listing the folder before the next scan does not accept input.
bool FolderSelection::scan(const std::string& key) {
    dependencies_.search.CancelScan = false;
    noteStart(key);
    Q_EMIT scanRuns(true);
    const auto result =
        modProcessFiles::processMain(key, {dependencies_.search, dependencies_.settings,
                                           dependencies_.userInterface, [this](const std::string& node) {
                                               Q_EMIT scanRuns(false);
                                               handleQueued(node);
                                           }});
    if (!result.stored) { // the rows are gone
        lastLoadedRow_ = 0;
        starts_.clear();
    }
    if (result.cancelled) {
        unfinished_.insert(key);
    } else {
        unfinished_.erase(key);
    }
    Q_EMIT scanRuns(false);
    Q_EMIT scanned(result);
    return result.stored && !result.cancelled;
}

// Called at the end of a scan. Nodes that are queued while a queued node is handled are taken in turn here,
// so that the scans of many clicks do not nest.
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
    const clsSearch& search = dependencies_.search;
    const clsSearch::Progress& progress = search.progress();
    dependencies_.userInterface.status(
        StatusPanel::items, search.isBulkLoad() ? modFigures::itemsText(progress.files + progress.folders)
                                                : modFigures::itemsText(dependencies_.database.database()));
}

// --- Loaded rows -----------------------------------------------------------------------------------------

void FolderSelection::showLoaded() {
    modGlobal::trapped(moduleName, "showLoaded", [&] {
        lastLoadedRow_ = lastRow();
        starts_.clear();
        unfinished_.clear();
        dependencies_.search.rowsReplaced();
        held_.clear(); // it belonged to another tree
        showItems();
        Q_EMIT rowsLoaded();
        Q_EMIT figuresChanged();
    });
}

// The number of the last recorded row.
std::int64_t FolderSelection::lastRow() const {
    const auto rows = dependencies_.database.database().OpenRecordset("select max(idx) from details");
    const Value number = rows->Fields(0).value();
    const auto* whole = std::get_if<std::int64_t>(&number);
    return whole == nullptr ? 0 : *whole;
}

// A completed folder has a stamp, which the scan driver recognises; other folders are recognised by their
// rows. The unfinished folders of a cancelled scan stay as they were saved.
bool FolderSelection::isLoaded(const std::string& key) const {
    return lastLoadedRow_ > 0 &&
           (modSavedScan::wasWalked(dependencies_.database.database(), key, lastLoadedRow_) ||
            hasLoadedRow(modFolderRows::itself(key)));
}

// True if rows of the folder were loaded and it does not exist here.
bool FolderSelection::isOnlyLoaded(const std::string& key) const {
    if (lastLoadedRow_ == 0 || !dependencies_.database.isOpen() || platform::folderExists(key)) {
        return false;
    }
    return hasLoadedRow(modFolderRows::itself(key)) || hasLoadedRow(modFolderRows::anywhereIn(key));
}

bool FolderSelection::holdsLoadedRowsIn(const std::string& key) const {
    return lastLoadedRow_ > 0 && dependencies_.database.isOpen() &&
           hasLoadedRow(modFolderRows::anywhereIn(key));
}

bool FolderSelection::hasLoadedRow(const std::string& condition) const {
    return !dependencies_.database.database()
                .OpenRecordset("select idx from details where " + condition +
                               " and idx<=" + std::to_string(lastLoadedRow_))
                ->EndOfFile();
}

// --- Holding ----------------------------------------------------------------------------------------------

void FolderSelection::release() {
    if (--holds_ == 0 && !held_.empty()) {
        const std::string key = std::exchange(held_, {});
        if (!suppressed_ && modGlobal::findNode(dependencies_.tree, key)) { // it may have been another tree's
            tvw_NodeClick(key);
        }
    }
}

// --- Typed, refreshed, opened -----------------------------------------------------------------------------

void FolderSelection::cmdGo_Click(std::string_view typedPath) {
    modGlobal::trapped(moduleName, "cmdGo_Click", [&] {
        if (const Answer answer = waitForVolume(internalOf(typedPath)); answer != Answer::yes) {
            if (answer == Answer::none) {
                dependencies_.userInterface.message(std::string(platform::notAnswering) + ": " +
                                                    std::string(typedPath));
            }
            return;
        }
        const std::string key = nodeOf(typedPath);
        if (!key.empty()) {
            goTo(key);
        } else if (!dependencies_.openFile(typedPath)) {
            tellWhyNoNode(dependencies_.userInterface, typedPath);
        }
    });
}

void FolderSelection::goTo(const std::string& key) {
    FolderTree& tree = dependencies_.tree;
    if (!modGlobal::findNode(tree, key)) {
        modGlobal::addTopNode(tree, dependencies_.icons, key);
    }
    tree.selectNode(key);
    modGlobal::getDummyFolders(tree, key);
    tvw_NodeClick(key);
}

bool FolderSelection::holdsLoadedRows() const {
    return lastLoadedRow_ > 0 && dependencies_.database.isOpen() && hasLoadedRow("idx>0");
}

void FolderSelection::openFolder(const std::string& key) {
    if (modGlobal::findNode(dependencies_.tree, key)) {
        modGlobal::tvwSelectNode(dependencies_.tree, key);
        tvw_NodeClick(key);
    }
}

void FolderSelection::showFolder(const std::string& key) {
    modGlobal::trapped(moduleName, "showFolder", [&] {
        if (modGlobal::findNode(dependencies_.tree, key)) {
            openFolder(key);
        } else if (platform::folderExists(key)) {
            goTo(platform::recordedPath(key));
        } else {
            tellWhyNoNode(dependencies_.userInterface, platform::displayPath(key));
        }
    });
}

bool FolderSelection::canShow(const std::string& key) const {
    return modGlobal::trapped(moduleName, "canShow",
                              [&] { return platform::folderExists(key) || isOnlyLoaded(key); });
}

void FolderSelection::revealFolder(const std::string& key) {
    std::vector<std::string> above; // those to be listed
    for (std::string folder = key; !modGlobal::findNode(dependencies_.tree, folder);) {
        std::string parent(clsFile(folder).parentFolder());
        if (parent.empty() || parent == folder) {
            return;
        }
        above.insert(above.begin(), parent);
        folder = std::move(parent);
    }
    for (const std::string& folder : above) {
        tvw_Expand(folder);
    }
    openFolder(key);
}
