#include "export/folderHistory.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "base/modGlobal.h"
#include "platform/fileError.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "scan/savedScan.h"

namespace modExport {

namespace {

constexpr std::string_view savedScanExtension = ".mdb";

bool isSavedScan(std::string_view name) {
    constexpr std::size_t length = savedScanExtension.size();
    return name.size() > length &&
           platform::equalIgnoringAsciiCase(name.substr(name.size() - length), savedScanExtension);
}

// Where the file's scans have come by, though the folder was not there.
std::string scannedKey(const ScanFile& file, const std::vector<std::string>& keys) {
    const auto covered = std::find_if(keys.begin(), keys.end(), [&](const std::string& key) {
        return modScans::ofFolder(file.scans(), key) != nullptr;
    });
    return covered == keys.end() ? std::string() : *covered;
}

// Nothing if it is of other folders. `found` is the key of the folder, if it has it.
std::optional<HistoryPoint> readPoint(const std::string& path, const std::vector<std::string>& keys,
                                      std::string& found) {
    const ScanFile file(path);
    found = file.find(keys);
    HistoryPoint point;
    point.folder = file.folder(found);
    const std::string key = point.folder ? found : scannedKey(file, keys);
    if (key.empty()) {
        return {};
    }
    point.moment = file.finished(key);
    point.file = path;
    if (const modScans::Scan* const scan = modScans::ofFolder(file.scans(), key)) {
        point.host = scan->host;
        point.isCancelled = scan->cancelled;
    }
    return point;
}

void addChanges(std::vector<HistoryPoint>& points) {
    std::unordered_map<std::string, double> last; // by host
    for (HistoryPoint& point : points) {
        if (!point.folder) {
            continue;
        }
        const auto [before, isFirst] = last.try_emplace(point.host, point.folder->size);
        if (!isFirst) {
            point.change = point.folder->size - std::exchange(before->second, point.folder->size);
        }
    }
}

} // namespace

bool FolderHistory::hasFolder() const {
    return std::any_of(points.begin(), points.end(),
                       [](const HistoryPoint& point) { return point.folder.has_value(); });
}

bool FolderHistory::hasSeveralHosts() const {
    return std::any_of(points.begin(), points.end(),
                       [&](const HistoryPoint& point) { return point.host != points.front().host; });
}

double FolderHistory::largest() const {
    double result = 0;
    for (const HistoryPoint& point : points) {
        result = std::max(result, point.folder ? point.folder->size : 0);
    }
    return result;
}

std::vector<std::string> savedScansAt(std::string_view typedPath) {
    const std::string path = platform::toInternal(typedPath);
    if (path.empty() || !platform::folderExists(path)) {
        return {path}; // whoever opens it says what is wrong
    }
    const std::string folder = modGlobal::addBackslash(path);
    platform::FolderReader reader;
    platform::FolderListing entries;
    if (!reader.read(folder, entries, true)) {
        throw RuntimeError(errorNumber::pathFileAccess, reader.failure());
    }
    std::vector<std::string> result;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (isSavedScan(entries[i].name) && !entries[i].isFolder) {
            result.push_back(folder + std::string(entries[i].name));
        }
    }
    if (result.empty()) {
        throw RuntimeError(errorNumber::fileNotFound, "There is no saved scan (*.mdb) in this folder");
    }
    std::sort(result.begin(), result.end(), [](std::string_view left, std::string_view right) {
        left.remove_suffix(savedScanExtension.size()); // "x-2.mdb" comes behind "x.mdb"
        right.remove_suffix(savedScanExtension.size());
        return left < right;
    });
    return result;
}

FolderHistory readHistory(const std::vector<std::string>& files, std::string_view typedPath,
                          const std::function<bool()>& goesOn) {
    const std::vector<std::string> keys = modSavedScan::possibleKeys(typedPath);
    FolderHistory history;
    history.folder = typedPath;
    std::string found;
    for (const std::string& file : files) {
        if (!goesOn()) {
            break;
        }
        try {
            auto point = readPoint(file, keys, found);
            if (point) {
                history.folder = point->folder ? platform::displayPath(found) : history.folder;
                history.points.push_back(std::move(*point));
            } else {
                ++history.others;
            }
        } catch (const RuntimeError& error) {
            history.failures.emplace_back(error.what());
        }
    }
    std::stable_sort(history.points.begin(), history.points.end(),
                     [](const auto& left, const auto& right) { return left.moment < right.moment; });
    addChanges(history.points);
    return history;
}

std::string_view remarkOf(const HistoryPoint& point) {
    return !point.folder ? "not there" : point.isCancelled ? "cancelled" : "";
}

} // namespace modExport
