#include "scan/modProcessFiles.h"

#include <cmath>

#include "app/errorLog.h"
#include "app/modGlobal.h"
#include "app/pictures.h"
#include "platform/folders.h"
#include "scan/dateTexts.h"
#include "scan/folderWalk.h"

namespace {

using modProcessFiles::ScanResult;
using modProcessFiles::Surroundings;

constexpr std::string_view moduleName = "modProcessFiles";
constexpr std::string_view procedureName = "processMain";

void walkAndStore(FolderWalk& walk, clsSearch& search, const std::string& path) {
    search.beginScan();
    walk.run(path, platform::folderFacts(path).value_or(platform::EntryFacts{}));
    if (search.storageFailure()) {
        throw *search.storageFailure();
    }
    search.endScan();
}

// The walk as one transaction.
ScanResult scan(const std::string& path, const Surroundings& surroundings, std::int64_t startTick) {
    clsSearch& search = surroundings.search;
    FolderWalk walk(search, surroundings.settings, surroundings.userInterface, startTick);
    try {
        walkAndStore(walk, search, path);
    } catch (...) {
        modGlobal::trapped(moduleName, procedureName, [&] { search.abandonScan(); });
        throw;
    }
    ScanResult result;
    result.unreadableFolders = walk.unreadableFolders();
    result.firstUnreadable = walk.firstUnreadable();
    result.stored = true;
    return result;
}

} // namespace

ScanResult modProcessFiles::processMain(std::string_view path, const Surroundings& surroundings) {
    clsSearch& search = surroundings.search;
    const std::int64_t startTick = platform::tickCount();
    ScanResult result;
    std::string queued;
    {
        const BusyPointer busy(surroundings.userInterface);
        search.processing = true;
        search.rootPath = modGlobal::addBackslash(path);
        result = modGlobal::trapped(moduleName, procedureName,
                                    [&] { return scan(search.rootPath, surroundings, startTick); });
        result.files = search.filesSeen;
        result.cancelled = search.CancelScan;
        search.processing = false;
        search.CancelScan = false;
        queued.swap(search.nextNode);
        if (!queued.empty() && surroundings.handleNode) {
            modGlobal::trapped(moduleName, procedureName, [&] { surroundings.handleNode(queued); });
        }
    }
    result.seconds = static_cast<double>(platform::tickCount() - startTick) / 1000;
    surroundings.userInterface.status(StatusPanel::folder, finishedText(result.seconds));
    return result;
}

std::string modProcessFiles::getFolderFileDate(platform::Seconds fileTime) {
    DateTexts texts;
    return std::string(texts.of(fileTime));
}

std::string modProcessFiles::finishedText(double seconds) {
    constexpr double secondsPerMinute = 60;
    const bool inSeconds = seconds < secondsPerMinute;
    std::string text = "Finished in ";
    appendNumber(text, std::round((inSeconds ? seconds : seconds / secondsPerMinute) * 10) / 10);
    return text + (inSeconds ? " seconds." : " minutes.");
}
