#include "export/folderHistory.h"

#include <algorithm>
#include <utility>

#include "base/modGlobal.h"
#include "platform/fileError.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace modExport {

namespace {

constexpr std::string_view savedScanExtension = ".mdb";

bool isSavedScan(std::string_view name) {
    constexpr std::size_t length = savedScanExtension.size();
    return name.size() > length &&
           platform::equalIgnoringAsciiCase(name.substr(name.size() - length), savedScanExtension);
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

std::string_view remarkOf(const HistoryPoint& point) {
    return !point.folder ? "not there" : point.isCancelled ? "cancelled" : "";
}

} // namespace modExport
