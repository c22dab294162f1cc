#include "scan/clsSearch.h"

#include "db/values.h"
#include "platform/locale.h"
#include "platform/text.h"

namespace {

constexpr std::size_t longestStoredPath = 255;
constexpr std::string_view detailsTable = "details";

// Kinds of values, as vts and vtsSQL count them.
constexpr int textKind = 6;
constexpr int numberKind = 3;

// Of a new row, whose fields are NULL. Empty texts are stored so.
void setText(Field& field, std::string_view text) {
    if (const auto value = modGlobal::vts(text, textKind)) {
        field.setText(*value);
    }
}

// True for what befalls the file rather than the row: no further row would fare better.
bool endsStoring(const RuntimeError& error) {
    return error.number() != databaseError::duplicateKey && error.number() != errorNumber::overflow &&
           error.number() != errorNumber::invalidCall;
}

} // namespace

bool clsSearch::updateDetail(std::string_view path, std::string_view description, double size,
                             std::string_view dateAccessed, std::string_view dateModified,
                             std::string_view owner) {
    return appendRow(path, description, size, dateAccessed, dateModified, owner, {});
}

bool clsSearch::appendRow(std::string_view path, std::string_view description, double size,
                          std::string_view dateAccessed, std::string_view dateModified,
                          std::string_view owner, std::string_view stamp) {
    try {
        DetailsTable& row = database_.details();
        file_.setFullPath(path);
        const bool isFolder = path.ends_with('\\');
        const std::string_view parent = file_.parentFolder();
        row.rows->AddNew();
        setText(row.fullPath, platform::firstCharacters(file_.fullPathNoDrive(), longestStoredPath));
        setText(row.drive, file_.drive());
        // A folder's own name and the "\" behind it are what its path has over its parent's.
        setText(row.folder, isFolder ? parent : file_.folder());
        setText(row.fileName,
                isFolder ? std::string_view(file_.fullPath()).substr(parent.size()) : file_.FileName());
        std::string_view extension = file_.fileExtension();
        if (!settings_.caseSensitiveExt()) {
            extension_.clear();
            platform::appendLowerCase(extension_, extension);
            extension = extension_;
        }
        setText(row.extension, extension);
        setText(row.description, description);
        row.size.setNumber(size);
        setText(row.dateAccessed, dateAccessed);
        setText(row.dateModified, dateModified);
        setText(row.owner, owner);
        setText(row.dateInserted, currentDate_.of(platform::now()));
        setText(row.parentFolder, parent);
        row.isFolder.setInteger(isFolder ? 1 : 0);
        setText(row.scanCompleteTime, stamp);
        row.rows->Update();
        return true;
    } catch (const RuntimeError& error) {
        if (!storageFailure_ && endsStoring(error)) {
            storageFailure_ = error;
        }
        return false;
    }
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

bool clsSearch::recordFolder(std::string_view path, double size, std::string_view dateAccessed,
                             std::string_view dateModified, std::string_view owner) {
    constexpr std::string_view description = "File Folder";
    file_.setFullPath(path);
    const std::size_t length = platform::characterCount(file_.fullPathNoDrive());
    stamp_ = CancelScan ? std::string_view() : currentDate_.of(platform::now());
    // The stamp goes to the rows whose stored path is the folder's whole one: never to one that was cut, and
    // of a path that just fits also to the rows below it, whose paths were cut to the same text.
    const bool stampsItself = bulkLoad_ && length < longestStoredPath;
    const bool isRoot = length == 0;
    const bool stored = !isRoot && appendRow(path, description, size, dateAccessed, dateModified, owner,
                                             stampsItself ? std::string_view(stamp_) : std::string_view());
    if (stamp_.empty() || stampsItself) {
        return stored;
    }
    if (!bulkLoad_) {
        stampFolder(path, stamp_);
    } else if (length == longestStoredPath) {
        lateStamps_.emplace_back(path, stamp_);
    }
    return stored;
}

std::string clsSearch::locationCondition(std::string_view path) {
    file_.setFullPath(path);
    return "fullPath=" + modGlobal::quoted(file_.fullPathNoDrive()) +
           " and drive=" + modGlobal::quoted(file_.drive());
}

std::string clsSearch::getLastScanStopTimeByLocationKey(std::string_view path) {
    if (bulkLoad_) {
        return {};
    }
    const auto rows = database_.database().OpenRecordset("select scanCompleteTime from details where " +
                                                         locationCondition(path));
    return rows->EndOfFile() ? std::string() : std::string(rows->Fields(0).text());
}

void clsSearch::resetScanCompleteTime(std::string_view path) {
    leaveBulkLoad(); // what it relies on ends when a person refreshes a folder in the midst of it
    database_.database().Execute("delete * from details where (" + locationCondition(path) +
                                 ") or parentFolder=" + modGlobal::quoted(path));
}

double clsSearch::folderSum(std::string_view path) const {
    const auto rows = database_.database().OpenRecordset(
        "SELECT Sum(details.size) AS SumOfsize From details WHERE (((details.parentFolder)=" +
        modGlobal::quoted(path) + "));");
    return rows->EndOfFile() ? 0 : rows->Fields("sumofsize").number();
}

void clsSearch::stampFolder(std::string_view path, std::string_view stamp) {
    database_.database().Execute("update details set scanCompleteTime='" + std::string(stamp) + "' where " +
                                 locationCondition(path));
}

void clsSearch::beginScan() {
    storageFailure_.reset();
    lateStamps_.clear();
    takenIndexes_.clear();
    filesSeen = 0;
    Database& database = database_.database();
    database.BeginTrans();
    bulkLoad_ = database.OpenRecordset("select idx from details")->EndOfFile();
    if (bulkLoad_) {
        takenIndexes_ = database.TakeIndexes(detailsTable);
    }
}

void clsSearch::leaveBulkLoad() {
    if (!bulkLoad_) {
        return;
    }
    bulkLoad_ = false;
    database_.database().RestoreIndexes(takenIndexes_);
    for (const auto& [folder, stamp] : lateStamps_) {
        stampFolder(folder, stamp);
    }
}

void clsSearch::endScan() {
    leaveBulkLoad();
    database_.database().CommitTrans();
}

void clsSearch::abandonScan() {
    bulkLoad_ = false;
    database_.startAnew();
}
