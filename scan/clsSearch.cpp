#include "scan/clsSearch.h"

#include <algorithm>
#include <utility>

#include "db/values.h"
#include "platform/locale.h"
#include "platform/text.h"

namespace {

constexpr std::size_t longestStoredPath = 255;
constexpr std::string_view detailsTable = "details";

// Kinds of values, as used by vts and vtsSQL.
constexpr int textKind = 6;
constexpr int numberKind = 3;

// For a field of a new row, which is still NULL. An empty text leaves it NULL.
void setText(Field& field, std::string_view text) {
    if (const auto value = modGlobal::vts(text, textKind)) {
        field.setText(*value);
    }
}

// True for errors that concern the file and not the row: no other row could be stored either.
bool endsStoring(const RuntimeError& error) {
    return error.number() != databaseError::duplicateKey && error.number() != errorNumber::overflow &&
           error.number() != errorNumber::invalidCall;
}

} // namespace

// If it cannot be read or removed, it must not be recorded a second time.
template <class Body>
void clsSearch::storing(Body body) {
    try {
        body();
    } catch (const RuntimeError& error) {
        if (!storageFailure_) {
            storageFailure_ = error;
        }
        throw;
    }
}

double clsSearch::countedOnDisk(std::string_view path, const platform::EntryFacts& facts) {
    std::int64_t bytes = facts.sizeOnDisk;
    if (facts.number != 0) {
        storing([&] { bytes = links_.record(database_.database(), path, facts, lastNumber_ + 1); });
    }
    return static_cast<double>(bytes);
}

bool clsSearch::updateDetail(std::string_view path, std::string_view description, double size,
                             std::string_view dateAccessed, std::string_view dateModified,
                             std::string_view owner, const FurtherDetails& further) {
    try {
        DetailsTable& row = database_.details();
        rowPath_.set(path);
        row.rows->AddNew();
        if (!scanned_.empty()) {
            numberRow(row);
        }
        setText(row.fullPath, platform::firstCharacters(rowPath_.withoutDrive(), longestStoredPath));
        setText(row.drive, rowPath_.drive());
        setText(row.folder, rowPath_.folder());
        setText(row.fileName, rowPath_.fileName());
        setText(row.extension, storedExtension());
        setText(row.description, description);
        row.size.setNumber(size);
        setText(row.dateAccessed, dateAccessed);
        setText(row.dateModified, dateModified);
        setText(row.owner, owner);
        setText(row.dateInserted, currentDate_.of(platform::now()));
        setText(row.parentFolder, rowPath_.parent());
        row.isFolder.setInteger(rowPath_.isFolder() ? 1 : 0);
        setText(row.scanCompleteTime, further.stamp);
        if (further.totals == nullptr) {
            row.sizeOnDisk.setNumber(further.sizeOnDisk);
        } else if (further.totals->isKnown) {
            row.sizeOnDisk.setNumber(further.totals->sizeOnDisk);
            row.fileCount.setInteger(further.totals->files);
            row.folderCount.setInteger(further.totals->folders);
        }
        row.rows->Update();
        lastIsThere_ = !scanned_.empty();
        rowPath_.isFolder() ? ++progress_.folders : ++progress_.files;
        progress_.size += rowPath_.isFolder() ? 0 : size;
        progress_.sizeOnDisk += rowPath_.isFolder() ? 0 : further.sizeOnDisk;
        return true;
    } catch (const RuntimeError& error) {
        lastIsThere_ = false;
        if (!storageFailure_ && endsStoring(error)) {
            storageFailure_ = error;
        }
        return false;
    }
}

// The engine numbers a row by itself with less work, namely one behind the highest that is there.
void clsSearch::numberRow(DetailsTable& row) {
    ++lastNumber_;
    if (!lastIsThere_) {
        row.idx.setInteger(lastNumber_);
    }
}

std::string_view clsSearch::storedExtension() {
    if (settings_.caseSensitiveExt()) {
        return rowPath_.extension();
    }
    extension_.clear();
    platform::appendLowerCase(extension_, rowPath_.extension());
    return extension_;
}

void clsSearch::updateDetailSQLMETHOD(std::string_view path, std::string_view description, double size,
                                      std::string_view dateAccessed, std::string_view dateModified,
                                      std::string_view owner) {
    file_.setFullPath(path);
    std::string statement =
        "insert into details (fullPath,folder,filename,extension,description,size,dateAccessed,"
        "dateModified,owner,dateInserted) values (";
    for (const std::string_view text :
         {file_.fullPathNoDrive(), file_.folder(), file_.FileName(), file_.fileExtension(), description}) {
        statement += modGlobal::vtsSQL(std::string(text), textKind) + ",";
    }
    statement += modGlobal::vtsSQL(size, numberKind);
    for (const std::string_view text :
         {dateAccessed, dateModified, owner, currentDate_.of(platform::now())}) {
        statement += "," + modGlobal::vtsSQL(std::string(text), textKind);
    }
    database_.database().Execute(statement + ")");
}

std::string clsSearch::getLastScanStopTimeByLocationKey(std::string_view path) {
    return modFolderRows::find(database_.database(), path).stamp;
}

double clsSearch::folderSum(std::string_view path) const {
    return modFolderRows::sum(database_.database(), path);
}

// --- Resets -----------------------------------------------------------------------------------------------

void clsSearch::resetScanCompleteTime(std::string_view path) {
    beginReset(path);
    modFolderRows::remove(database_.database(),
                          "(" + modFolderRows::itself(path) + ") or " + modFolderRows::directlyIn(path));
    endReset(path, false);
    gaps.forgetWithSubfolders(path);
}

void clsSearch::resetWholeFolder(std::string_view path) {
    beginReset(path);
    modFolderRows::removeWhole(database_.database(), path);
    modScans::forget(database_.database(), path);
    endReset(path, false);
    gaps.forgetWhole(path);
}

void clsSearch::removeEntry(std::string_view path) {
    const bool isFolder = path.ends_with('\\');
    const std::string folder = isFolder ? std::string(path) : std::string(path) + "\\";
    beginReset(folder);
    if (isFolder) {
        modFolderRows::removeWhole(database_.database(), path);
        modScans::forget(database_.database(), path);
    } else {
        file_.setFullPath(path);
        modFolderRows::remove(database_.database(),
                              modFolderRows::fileIn(file_.parentFolder(), file_.lastFolder()));
    }
    endReset(folder, true);
    gaps.forgetWhole(folder);
}

void clsSearch::resetAll() {
    beginReset({});
    database_.database().Execute("delete * from details");
    modScans::forgetAll(database_.database());
    rowsReplaced();
}

// The user may refresh a folder during a scan. The folder may be empty, for none.
void clsSearch::beginReset(std::string_view folder) {
    noteLastNumber();
    makeIndexes();
    if (!folder.empty()) {
        above_.prepare(database_.database(), folder);
    }
    if (!scanned_.empty()) {
        disturbed_ = true;
        CancelScan = true;
    }
}

void clsSearch::endReset(std::string_view folder, bool isComplete) {
    above_.follow(database_.database(), folder, isComplete);
    links_.settle(database_.database());
}

void clsSearch::noteLastNumber() {
    lastIsThere_ = false;
    const auto rows = database_.database().OpenRecordset("select max(idx) from details");
    lastNumber_ = std::max(lastNumber_, static_cast<std::int64_t>(rows->Fields(0).number()));
}

void clsSearch::rowsReplaced() noexcept {
    bulkLoad_ = false; // their indexes have come with them
    above_.forget();
    links_.forget();
    gaps.clear();
}

// --- One scan ---------------------------------------------------------------------------------------------

void clsSearch::beginScan(std::string_view path) {
    makeIndexes();
    storageFailure_.reset();
    takenIndexes_.clear();
    stamp_.clear();
    filesSeen = 0;
    progress_ = {};
    changed_ = false;
    recorded_ = false;
    disturbed_ = false;
    Database& database = database_.database();
    database.BeginTrans();
    noteLastNumber();
    firstNumber_ = lastNumber_ + 1;
    links_.beginScan(firstNumber_);
    scanned_ = path;
    bulkLoad_ = database.OpenRecordset("select idx from details")->EndOfFile();
    if (bulkLoad_) {
        takenIndexes_ = database.TakeIndexes(detailsTable);
    }
}

void clsSearch::makeIndexes() {
    if (!std::exchange(bulkLoad_, false)) {
        return;
    }
    Database& database = database_.database();
    const bool isScanRunning = !scanned_.empty(); // it has a transaction, and abandons it if this fails
    if (isScanRunning) {
        database.RestoreIndexes(takenIndexes_);
        return;
    }
    try {
        database.BeginTrans();
        database.RestoreIndexes(takenIndexes_);
        database.CommitTrans();
    } catch (const RuntimeError&) {
        abandonScan();
        throw;
    }
}

void clsSearch::recordScan(const modScans::Scan& scan) {
    if (!recorded_) {
        return;
    }
    if (bulkLoad_) {
        modScans::forgetAll(database_.database()); // there was no row of any
    }
    modScans::record(database_.database(), scan, firstNumber_ - 1);
}

void clsSearch::endScan() {
    if (bulkLoad_) {
        above_.forget(); // there was no row for it
    } else if (changed_) {
        above_.follow(database_.database(), scanned_, !stamp_.empty());
        links_.settle(database_.database());
    }
    database_.lookForSizesOnDisk();
    database_.database().CommitTrans();
    scanned_.clear();
}

void clsSearch::abandonScan() {
    bulkLoad_ = false;
    scanned_.clear();
    rowsReplaced();
    database_.startAnew();
}

modFolderRows::RecordedFolder clsSearch::recordedFolder(std::string_view path) {
    modFolderRows::RecordedFolder result;
    if (!bulkLoad_) {
        storing([&] { result = modFolderRows::find(database_.database(), path); });
    }
    return result;
}

modFolderRows::RecordedFolders clsSearch::recordedSubfolders(std::string_view path) {
    modFolderRows::RecordedFolders result;
    storing([&] { result = modFolderRows::subfolders(database_.database(), path); });
    return result;
}

void clsSearch::replaceFolder(std::string_view path, const modFolderRows::RecordedFolder& recorded,
                              const std::vector<std::string>& goneSubfolders) {
    lastIsThere_ = false;
    storing([&] {
        Database& database = database_.database();
        beginChange();
        if (recorded.hasOwnRow) {
            modFolderRows::remove(database, modFolderRows::itself(path));
        }
        if (recorded.hasContent) {
            modFolderRows::remove(database, modFolderRows::directlyIn(path) + " and isFolder=0");
        }
        for (const std::string& name : goneSubfolders) {
            const std::string folder = std::string(path).append(name).append("\\");
            modFolderRows::removeWhole(database, folder);
            gaps.forgetWhole(folder);
        }
    });
}

void clsSearch::removeFileCalled(std::string_view path) {
    if (!bulkLoad_) {
        file_.setFullPath(path);
        const std::string file = modFolderRows::fileIn(file_.parentFolder(), file_.lastFolder());
        storing([&] {
            beginChange();
            modFolderRows::remove(database_.database(), file);
        });
    }
}

// For the folders above, it is complete.
void clsSearch::leaveOutStart(std::string_view path) {
    lastIsThere_ = false;
    storing([&] {
        beginChange();
        modFolderRows::removeWhole(database_.database(), path);
        modScans::forget(database_.database(), path);
        gaps.forgetWhole(path);
    });
    stamp_ = currentDate_.of(platform::now());
}

// Before the first change of what the folders above have been summed up from.
void clsSearch::beginChange() {
    if (!std::exchange(changed_, true) && !bulkLoad_) {
        above_.prepare(database_.database(), scanned_);
    }
}

std::optional<modFolderRows::Totals> clsSearch::recordFolder(std::string_view path, const LeftFolder& left) {
    constexpr std::string_view description = "File Folder";
    file_.setFullPath(path);
    const bool isRoot = file_.fullPathNoDrive().empty();
    stamp_ = CancelScan ? std::string_view() : currentDate_.of(platform::now());
    recorded_ = recorded_ || path == scanned_;
    if (!changed_) {
        storing([this] { beginChange(); });
    }
    above_.scannedAnew(path);
    // A cancelled scan has not reached all recorded items of the folder.
    const bool isPart = disturbed_ || (CancelScan && !left.isNew);
    modFolderRows::Totals totals = isPart ? modFolderRows::totals(database_.database(), path) : left.items;
    totals.sizeOnDisk += left.ownSizeOnDisk;
    progress_.sizeOnDisk += isRoot ? 0 : left.ownSizeOnDisk;
    if (isRoot || !updateDetail(path, description, totals.size, left.dateAccessed, left.dateModified,
                                left.owner, {.stamp = stamp_, .totals = &totals})) {
        return {};
    }
    return totals;
}
