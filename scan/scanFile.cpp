#include "scan/scanFile.h"

#include <functional>
#include <iterator>
#include <map>
#include <utility>

#include "base/clsFile.h"
#include "base/formatSize.h"
#include "base/modGlobal.h"
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

std::optional<ScanFile::Folder> ScanFile::folder(std::string_view key, Counts wanted) const {
    if (key.empty()) {
        return {};
    }
    const std::string itself = modFolderRows::itself(key);
    std::optional<double> size;
    ItemCounts counts;
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
    if (wanted == Counts::always && (!counts.files || !counts.folders)) {
        counts = counted(key);
    }
    const bool hasNoFiles = counts.files == 0 && *size != 0;
    return Folder{modLvw::soundSize(*size), hasNoFiles ? std::nullopt : counts.files, counts.folders};
}

// Goes through what lies directly in it, and keeps no more than it returns.
std::vector<std::string> ScanFile::largestIn(std::string_view key, std::size_t most) const {
    std::multimap<double, std::string, std::greater<>> largest;
    const auto rows = database_->OpenRecordset("select fileName, size from details where " +
                                               modFolderRows::directlyIn(key) + " and isFolder+0=1");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const double size = modLvw::soundSize(rows->Fields(1).number());
        if (largest.size() == most && (most == 0 || size <= std::prev(largest.end())->first)) {
            continue;
        }
        std::string path(key);
        path.append(rows->Fields(0).text());
        largest.emplace(size, modGlobal::addBackslash(path));
        if (largest.size() > most) {
            largest.erase(std::prev(largest.end()));
        }
    }
    std::vector<std::string> result;
    for (auto& [size, path] : largest) {
        result.push_back(std::move(path));
    }
    return result;
}

void ScanFile::setGoesOn(std::function<bool()> goesOn) {
    database_->setLongWork([this, asked = std::move(goesOn)] {
        if (!asked()) {
            database_->interrupt();
        }
    });
}

ScanFile::ItemCounts ScanFile::storedCounts(const std::string& itself) const {
    if (!storesCounts_) {
        return {};
    }
    const auto own = database_->OpenRecordset("select fileCount, folderCount from details where " + itself);
    return {wholeOf(own->Fields(0)), wholeOf(own->Fields(1))};
}

// Those of the folders directly in it, if all have them, and what lies there.
ScanFile::ItemCounts ScanFile::storedCountsOfRoot(std::string_view key) const {
    if (!storesCounts_) {
        return {};
    }
    const auto counts = modFolderRows::storedCounts(*database_, key);
    return counts ? ItemCounts{counts->files, counts->folders} : ItemCounts();
}

ScanFile::ItemCounts ScanFile::counted(std::string_view key) const {
    const std::int64_t folders = countOf(*database_, modFolderRows::foldersAnywhereIn(key));
    return {countOf(*database_, modFolderRows::anywhereIn(key)) - folders, folders};
}
