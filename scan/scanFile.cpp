#include "scan/scanFile.h"

#include "base/clsFile.h"
#include "base/formatSize.h"
#include "db/folderRows.h"
#include "db/values.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "scan/savedScan.h"

namespace {

constexpr std::string_view table = "details";

std::optional<std::int64_t> wholeOf(double number) {
    constexpr double most = 1e15;
    const bool isSound = number >= 0 && number < most;
    return isSound ? std::optional(static_cast<std::int64_t>(number)) : std::nullopt;
}

std::optional<std::int64_t> wholeOf(const Field& field) {
    return field.isNull() ? std::nullopt : wholeOf(field.number());
}

// Always with a condition: what counts a whole table goes through its pages without taking steps, and those
// may be linked so that there is no end.
std::int64_t countOf(Database& database, const std::string& condition) {
    const auto rows = database.OpenRecordset("select count(*) as total from details where " + condition);
    return static_cast<std::int64_t>(rows->Fields(0).number());
}

} // namespace

ScanFile::ScanFile(std::string_view path)
    : database_(DBEngine::OpenDatabase(platform::toInternal(path), OpenMode::inPlace)) {
    database_->requireStored(table);
    scans_ = modScans::stored(*database_);
    const std::string file = platform::toInternal(platform::resolveLinks(path));
    changed_ = platform::entryFacts(file).modified;
    const auto none = database_->OpenRecordset("select * from details where idx is null");
    storesCounts_ = none->find("fileCount") != nullptr && none->find("folderCount") != nullptr;
}

platform::Seconds ScanFile::finished(std::string_view key) const {
    const modScans::Scan* const scan = modScans::ofFolder(scans_, key);
    const auto moment = scan == nullptr ? modScans::lastFinished(scans_) : scan->finished;
    return moment.value_or(changed_);
}

std::string ScanFile::find(const std::vector<std::string>& keys) const {
    return modSavedScan::findFolder(*database_, keys);
}

std::optional<ScanFile::Folder> ScanFile::folder(std::string_view key) const {
    if (key.empty()) {
        return {};
    }
    const std::string itself = modFolderRows::itself(key);
    std::optional<double> size;
    Counts counts;
    const auto own = database_->OpenRecordset("select size from details where " + itself);
    if (!own->EndOfFile()) {
        size = own->Fields(0).number();
        counts = storedCounts(itself);
    } else if (clsFile(key).fullPathNoDrive().empty()) { // a drive's root has no row
        const auto direct = database_->OpenRecordset("select sum(size) as total from details where " +
                                                     modFolderRows::directlyIn(key));
        size = direct->Fields(0).isNull() ? size : std::optional(direct->Fields(0).number());
        counts = storedCountsOfRoot(key);
    }
    if (!size) {
        return {};
    }
    if (!counts.files || !counts.folders) {
        counts = counted(key);
    }
    const bool hasNoFiles = counts.files == 0 && *size != 0;
    return Folder{modLvw::soundSize(*size), hasNoFiles ? std::nullopt : counts.files, counts.folders};
}

ScanFile::Counts ScanFile::storedCounts(const std::string& itself) const {
    if (!storesCounts_) {
        return {};
    }
    const auto own = database_->OpenRecordset("select fileCount, folderCount from details where " + itself);
    return {wholeOf(own->Fields(0)), wholeOf(own->Fields(1))};
}

// Those of the folders directly in it, if all have them, and what lies there.
ScanFile::Counts ScanFile::storedCountsOfRoot(std::string_view key) const {
    if (!storesCounts_) {
        return {};
    }
    const auto counts = modFolderRows::storedCounts(*database_, key);
    return counts ? Counts{counts->files, counts->folders} : Counts();
}

ScanFile::Counts ScanFile::counted(std::string_view key) const {
    const std::int64_t folders = countOf(*database_, modFolderRows::foldersAnywhereIn(key));
    return {countOf(*database_, modFolderRows::anywhereIn(key)) - folders, folders};
}
