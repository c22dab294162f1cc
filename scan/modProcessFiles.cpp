#include "scan/modProcessFiles.h"

#include <cmath>

#include "base/errorTrap.h"
#include "base/excludes.h"
#include "base/modGlobal.h"
#include "base/numberFormat.h"
#include "platform/environment.h"
#include "platform/folders.h"
#include "scan/dateTexts.h"
#include "scan/folderWalk.h"

namespace {

using modProcessFiles::Dependencies;
using modProcessFiles::ScanResult;

constexpr std::string_view moduleName = "modProcessFiles";
constexpr std::string_view procedureName = "processMain";

modScans::Scan begunScan(const std::string& path, const clsSettings& settings) {
    modScans::Scan scan;
    scan.host = platform::hostName();
    scan.system = platform::systemName();
    scan.path = path;
    scan.started = platform::now();
    scan.exact = settings.exact() || settings.fullFileSizes();
    scan.withOwners = settings.getOwnerInfo();
    scan.onDisk = true;
    for (const std::string& pattern : settings.excludes()->texts()) {
        scan.excludes.append(scan.excludes.empty() ? "" : "\n").append(pattern);
    }
    scan.programVersion = SPANNORY_VERSION;
    scan.uniqueId = modScans::newUniqueId();
    return scan;
}

void walkAndStore(FolderWalk& walk, const Dependencies& dependencies, const std::string& path) {
    clsSearch& search = dependencies.search;
    modScans::Scan scan = begunScan(path, dependencies.settings);
    search.beginScan(path);
    walk.run(path, platform::folderFacts(path).value_or(platform::EntryFacts{}));
    if (search.storageFailure()) {
        throw *search.storageFailure();
    }
    scan.finished = platform::now();
    scan.cancelled = search.CancelScan;
    scan.unreadableFolders = walk.unreadableFolders();
    scan.unreadableFiles = walk.unreadableFiles();
    search.recordScan(scan);
    search.endScan();
}

// The whole walk in one transaction.
ScanResult scan(const std::string& path, const Dependencies& dependencies, std::int64_t startTick) {
    clsSearch& search = dependencies.search;
    FolderWalk walk(search, dependencies.settings, dependencies.userInterface,
                    [&] { return dependencies.tickCount() - startTick; });
    try {
        walkAndStore(walk, dependencies, path);
    } catch (...) {
        modGlobal::trapped(moduleName, procedureName, [&] { search.abandonScan(); });
        throw;
    }
    ScanResult result;
    result.unreadableFolders = walk.unreadableFolders();
    result.unreadableFiles = walk.unreadableFiles();
    result.wrappedFiles = walk.wrappedFiles();
    result.excluded = walk.excluded();
    result.stored = true;
    return result;
}

// What the figures of the scanned folder lack; empty if nothing.
std::string remarks(const clsSearch& search, const ScanResult& result) {
    std::string text = result.cancelled ? "The scan was cancelled." : "";
    if (const Unreadable unreadable = search.gaps.unreadableIn(search.rootPath); unreadable.isAny()) {
        text.append(text.empty() ? "" : " ").append(unreadableText(unreadable));
    }
    if (result.excluded > 0) {
        text.append(text.empty() ? "" : " ").append(modExcludes::leftOutText(result.excluded));
    }
    return text;
}

} // namespace

ScanResult modProcessFiles::processMain(std::string_view path, const Dependencies& dependencies) {
    clsSearch& search = dependencies.search;
    const std::int64_t startTick = dependencies.tickCount();
    ScanResult result;
    std::string queued;
    {
        const BusyPointer busy(dependencies.userInterface);
        search.processing = true;
        search.rootPath = modGlobal::addBackslash(path);
        result = modGlobal::trapped(moduleName, procedureName,
                                    [&] { return scan(search.rootPath, dependencies, startTick); });
        result.files = search.filesSeen;
        result.cancelled = search.CancelScan;
        dependencies.userInterface.status(StatusPanel::remarks, remarks(search, result));
        search.processing = false;
        search.CancelScan = false;
        queued.swap(search.nextNode);
        if (!queued.empty() && dependencies.handleNode) {
            modGlobal::trapped(moduleName, procedureName, [&] { dependencies.handleNode(queued); });
        }
    }
    result.seconds = static_cast<double>(dependencies.tickCount() - startTick) / 1000;
    dependencies.userInterface.status(StatusPanel::folder, finishedText(result.seconds));
    return result;
}

std::string modProcessFiles::getFolderFileDate(platform::Seconds fileTime) {
    DateTexts texts;
    return std::string(texts.of(fileTime));
}

std::string modProcessFiles::wrappedText(std::int64_t files) {
    return std::to_string(files) + (files == 1 ? " file" : " files") + " of 2 GB or more " +
           (files == 1 ? "is" : "are") + " counted with wrapped sizes.";
}

std::string modProcessFiles::finishedText(double seconds) {
    constexpr double secondsPerMinute = 60;
    const bool inSeconds = seconds < secondsPerMinute;
    std::string text = "Finished in ";
    modFormat::appendNumber(text, std::round((inSeconds ? seconds : seconds / secondsPerMinute) * 10) / 10);
    return text + (inSeconds ? " seconds." : " minutes.");
}
