#include "scan/folderWalk.h"

#include <cmath>
#include <utility>

#include "app/errorLog.h"
#include "platform/clock.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

constexpr int visitsPerThroughput = 20;

// Deliberately the low 32 bits, read as a signed number, unless whole sizes are asked for: 3 GiB come out
// negative and 4 GiB as 0.
double recordedSize(std::int64_t size, bool whole) {
    return whole ? static_cast<double>(size)
                 : static_cast<double>(static_cast<std::int32_t>(static_cast<std::uint32_t>(size)));
}

template <class Body>
void trapped(Body&& body) {
    modGlobal::trapped("modProcessFiles", "getSubFolderInformation", std::forward<Body>(body));
}

} // namespace

FolderWalk::FolderWalk(clsSearch& search, const clsSettings& settings, clsUserInterface& userInterface,
                       std::int64_t startTick)
    : search_(search), userInterface_(userInterface), withOwners_(settings.getOwnerInfo()),
      wholeSizes_(settings.fullFileSizes()), startTick_(startTick) {}

void FolderWalk::run(std::string_view path, const platform::EntryFacts& facts) {
    path_ = path;
    mountPoints_ = platform::mountPointsBelow(path);
    trapped([&] { enterFolder(facts); });
    while (depth_ > 0) {
        path_.resize(levels_[depth_ - 1]->pathLength);
        trapped([&] {
            Level& level = *levels_[depth_ - 1];
            if (level.next < level.entries.size()) {
                recordEntry(level);
            } else {
                --depth_;
                leaveFolder(level);
            }
        });
    }
}

// Begins the folder that path_ names, unless it is to be left out.
void FolderWalk::enterFolder(const platform::EntryFacts& facts) {
    showProgress();
    if (search_.CancelScan || search_.storageFailure()) {
        return;
    }
    requireRecordable();
    if (!search_.getLastScanStopTimeByLocationKey(path_).empty()) {
        return; // was scanned completely before, with all below it
    }
    if (depth_ == levels_.size()) {
        levels_.push_back(std::make_unique<Level>());
    }
    Level& level = *levels_[depth_++];
    level.next = 0;
    level.pathLength = path_.size();
    level.facts = facts;
    level.size = 0;
    const bool isStart = depth_ == 1;
    if (!reader_.read(path_, level.entries, isStart) && ++unreadableFolders_ == 1) {
        firstUnreadable_ = path_;
    }
}

// Fails for a path that is longer than the path model takes; what lies below cannot be recorded.
void FolderWalk::requireRecordable() {
    try {
        file_.setFullPath(path_);
        static_cast<void>(file_.drive());
    } catch (const RuntimeError& error) {
        constexpr std::size_t shownCharacters = 100;
        throw RuntimeError(error.number(),
                           std::string(error.what()) + ": " +
                               platform::displayPath(platform::firstCharacters(path_, shownCharacters)) +
                               "...");
    }
}

void FolderWalk::recordEntry(Level& level) {
    const platform::FolderEntry entry = level.entries[level.next++];
    path_.append(entry.name);
    const bool isFolder = entry.isFolder && (mountPoints_.empty() || !mountPoints_.contains(path_));
    if (isFolder) {
        path_ += '\\';
        enterFolder(entry);
        return;
    }
    const double size = recordedSize(entry.size, wholeSizes_);
    search_.filesSeen += 1;
    if (search_.updateDetail(path_, {}, size, accessedText(entry), modifiedText(entry), ownerOf(entry))) {
        level.size += size;
    }
}

// Records the folder itself, whose contents are all recorded.
void FolderWalk::leaveFolder(Level& level) {
    level.entries.clear();
    const double size = search_.isBulkLoad() ? level.size : search_.folderSum(path_);
    const bool stored = search_.recordFolder(path_, size, accessedText(level.facts),
                                             modifiedText(level.facts), ownerOf(level.facts));
    if (stored && depth_ > 0) {
        levels_[depth_ - 1]->size += size;
    }
}

void FolderWalk::showProgress() {
    const double seconds = static_cast<double>(platform::tickCount() - startTick_) / 1000;
    if (visits_ % visitsPerThroughput == 0 && seconds > 0) {
        status_.clear();
        appendNumber(status_, std::round(search_.filesSeen / seconds));
        userInterface_.status(StatusPanel::throughput, status_.append(" files/sec"));
        visits_ = 1;
    }
    ++visits_;
    status_.clear();
    platform::appendDisplayPath(status_, path_);
    userInterface_.status(StatusPanel::folder, status_);
    userInterface_.yieldToEvents();
}

std::string_view FolderWalk::accessedText(const platform::EntryFacts& facts) {
    return facts.known ? accessed_.of(facts.accessed) : std::string_view();
}

std::string_view FolderWalk::modifiedText(const platform::EntryFacts& facts) {
    return facts.known ? modified_.of(facts.modified) : std::string_view();
}

std::string_view FolderWalk::ownerOf(const platform::EntryFacts& facts) {
    return withOwners_ ? owners_.ownerOf(path_, facts) : std::string_view();
}
