#include "base/errorLog.h"
#include "console/consoleRun.h"
#include "platform/files.h"
#include "platform/runtimeError.h"
#include "scan/savedScan.h"
#include "scan/scanFile.h"

// What --collect does at the end of a run.

void ConsoleRun::collectScans() {
    if (!collecting_.isWanted() || !scanned_) {
        return;
    }
    if (lost_ || cancelled_) {
        failed_ = true;
        collecting_.refuse(lost_ ? "no scan was collected, because it could not be stored"
                                 : "no scan was collected, because it was cancelled");
        return;
    }
    const Collecting::Rows rows{working_.database(), modScans::all(working_.database())};
    collect(rows, options_.paths.empty() ? modCollect::scannedKeys(rows.scans) : shown_);
}

// A saved scan that is only to be sent need not be loaded. False if it must: an earlier version's lacks
// columns.
bool ConsoleRun::collectFile() {
    constexpr std::uint64_t leastBytesEach = 16; // of a row
    if (!options_.quiet || !outputs_.empty() || comparison_ || !collecting_.isWanted()) {
        return false;
    }
    try {
        const ScanFile file(options_.loadFile);
        Database& database = file.database();
        if (!modCollect::hasColumns(database)) {
            return false;
        }
        std::vector<std::string> keys = modCollect::scannedKeys(file.scans());
        if (!options_.paths.empty()) {
            keys.clear();
        }
        for (const std::string& typed : options_.paths) {
            keys.push_back(modSavedScan::findFolder(database, typed));
            if (keys.back().empty()) {
                keys.pop_back();
                fail(typed, "Folder not found in " + options_.loadFile);
            }
        }
        const std::uint64_t size =
            platform::fileSize(database.Name()) + platform::fileSize(database.Name() + "-wal");
        collect({database, file.scans(), static_cast<std::int64_t>(size / leastBytesEach)}, keys);
    } catch (const RuntimeError& error) {
        modGlobal::logCurrentException("spannory-scan", "collect", true);
        fail({}, error.what());
    }
    return true;
}

void ConsoleRun::collect(const Collecting::Rows& rows, const std::vector<std::string>& keys) {
    if (keys.empty() && options_.paths.empty()) {
        fail(options_.loadFile, "not collected, because it does not say which machine it is of");
    }
    std::string lines;
    const Collecting::Result result = collecting_.send(rows, keys, lines);
    failed_ = failed_ || result != Collecting::Result::done;
    cancelled_ = result == Collecting::Result::cancelled;
    if (!options_.quiet) {
        print(lines);
    }
}
