#include "export/readHistories.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <unordered_map>
#include <utility>

#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "scan/savedScan.h"

namespace modExport {

namespace {

// What one saved scan tells.
struct Told {
    bool isTried = false;
    std::string failure;                                 // why it could not be read
    std::string key;                                     // of the folder, if the scan has it
    std::optional<HistoryPoint> folder;                  // nothing if it is a scan of other folders
    std::vector<std::optional<HistoryPoint>> subfolders; // in the order of their names
};

// Where the file's scans have come by, though the folder was not there.
std::string scannedKey(const ScanFile& file, const std::vector<std::string>& keys) {
    const auto covered = std::find_if(keys.begin(), keys.end(), [&](const std::string& key) {
        return modScans::ofFolder(file.scans(), key) != nullptr;
    });
    return covered == keys.end() ? std::string() : *covered;
}

HistoryPoint pointOf(const ScanFile& file, const std::string& path, const std::string& key,
                     std::optional<ScanFile::Folder> folder) {
    HistoryPoint point;
    point.folder = folder;
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

void finish(FolderHistory& history) {
    std::stable_sort(history.points.begin(), history.points.end(),
                     [](const auto& left, const auto& right) { return left.moment < right.moment; });
    addChanges(history.points);
}

class Reading {
public:
    Reading(const std::vector<std::string>& files, std::string_view typedPath, const HistoryWish& wish)
        : files_(files), typedPath_(typedPath), keys_(modSavedScan::possibleKeys(typedPath)), wish_(wish) {}

    // The subfolders are the largest of the first file that has the folder.
    void read(const std::vector<std::size_t>& order) {
        told_.assign(files_.size(), {});
        names_.clear();
        first_.reset();
        std::size_t done = 0;
        for (const std::size_t file : order) {
            if (!wish_.goesOn() || !readFile(file)) {
                return;
            }
            if (wish_.progress) {
                wish_.progress(++done);
            }
        }
    }

    // The first file, if a newer scan turns out to be in another one: that one.
    [[nodiscard]] std::optional<std::size_t> newerThanFirst() const {
        std::optional<std::size_t> newest = first_;
        for (std::size_t file = 0; newest && file < told_.size(); ++file) {
            const Told& told = told_[file];
            if (told.folder && told.folder->folder && told.folder->moment > told_[*newest].folder->moment) {
                newest = file;
            }
        }
        return newest == first_ ? std::nullopt : newest;
    }

    [[nodiscard]] FolderHistories result() {
        FolderHistories result;
        result.folder.folder = typedPath_;
        result.subfolders.resize(names_.size());
        for (Told& told : told_) {
            result.files += told.isTried ? 1 : 0;
            if (!told.failure.empty()) {
                result.folder.failures.push_back(std::move(told.failure));
            } else if (told.isTried && !told.folder) {
                ++result.folder.others;
            } else if (told.folder) {
                take(told, result);
            }
        }
        finish(result.folder);
        std::for_each(result.subfolders.begin(), result.subfolders.end(), finish);
        return result;
    }

private:
    // False if it was interrupted.
    bool readFile(std::size_t file) {
        Told& told = told_[file];
        try {
            readFile(files_[file], told);
            if (wish_.mostSubfolders > 0 && !first_ && told.folder && told.folder->folder) {
                first_ = file;
            }
        } catch (const RuntimeError& error) {
            told = {};
            if (!wish_.goesOn()) {
                return false;
            }
            told.failure = error.what();
        }
        told.isTried = true;
        return true;
    }

    void readFile(const std::string& path, Told& told) {
        ScanFile file(path);
        file.setGoesOn(wish_.goesOn);
        const std::string found = file.find(keys_);
        auto folder = file.folder(found);
        const std::string key = folder ? found : scannedKey(file, keys_);
        if (key.empty()) {
            return;
        }
        told.folder = pointOf(file, path, key, folder);
        told.key = folder ? found : std::string();
        if (!first_ && folder && wish_.mostSubfolders > 0) {
            names_ = file.largestIn(found, wish_.mostSubfolders);
            for (std::string& name : names_) {
                name.erase(0, found.size());
            }
        }
        for (const std::string& name : names_) {
            const std::string subfolder = key + name;
            auto recorded = file.folder(subfolder, ScanFile::Counts::ifStored);
            const bool wasScanned =
                recorded || folder || modScans::ofFolder(file.scans(), subfolder) != nullptr;
            told.subfolders.push_back(wasScanned ? std::optional(pointOf(file, path, subfolder, recorded))
                                                 : std::nullopt);
        }
    }

    void take(Told& told, FolderHistories& result) const {
        if (!told.key.empty()) {
            result.folder.folder = platform::displayPath(told.key);
        }
        // Where the folder was not, there was nothing in it; that is known without looking.
        if (told.subfolders.empty() && !told.folder->folder) {
            told.subfolders.assign(names_.size(), told.folder);
        }
        result.folder.points.push_back(std::move(*told.folder));
        for (std::size_t i = 0; i < names_.size(); ++i) {
            FolderHistory& history = result.subfolders[i];
            if (!told.key.empty() || history.folder.empty()) {
                history.folder = platform::displayPath(told.key + names_[i]);
            }
            if (i < told.subfolders.size() && told.subfolders[i]) {
                history.points.push_back(std::move(*told.subfolders[i]));
            }
        }
    }

    const std::vector<std::string>& files_;
    std::string typedPath_;
    std::vector<std::string> keys_;
    const HistoryWish& wish_;
    std::vector<Told> told_;           // of each file
    std::vector<std::string> names_;   // of the subfolders, each ending in "\"
    std::optional<std::size_t> first_; // the file that they are from
};

} // namespace

FolderHistories readHistories(const std::vector<std::string>& files, std::string_view typedPath,
                              const HistoryWish& wish) {
    std::vector<std::size_t> order(files.size());
    std::iota(order.begin(), order.end(), 0);
    if (wish.mostSubfolders > 0) {
        std::vector<platform::Seconds> changed;
        std::transform(files.begin(), files.end(), std::back_inserter(changed),
                       [](const std::string& file) { return platform::entryFacts(file).modified; });
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t left, std::size_t right) { return changed[left] > changed[right]; });
    }
    Reading reading(files, typedPath, wish);
    reading.read(order);
    if (const auto newest = reading.newerThanFirst(); newest && wish.goesOn()) {
        const auto place = std::find(order.begin(), order.end(), *newest);
        std::rotate(order.begin(), place, place + 1);
        reading.read(order);
    }
    return reading.result();
}

FolderHistory readHistory(const std::vector<std::string>& files, std::string_view typedPath,
                          const std::function<bool()>& goesOn) {
    return readHistories(files, typedPath, {0, goesOn, {}}).folder;
}

} // namespace modExport
