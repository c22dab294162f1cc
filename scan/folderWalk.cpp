#include "scan/folderWalk.h"

#include <cmath>
#include <utility>

#include "base/errorLog.h"
#include "base/errorTrap.h"
#include "base/numberFormat.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

constexpr int visitsPerThroughput = 20;
constexpr std::size_t entriesPerYield = 1024; // of one folder

// Odd on purpose: the low 32 bits, read as a signed number, unless full sizes are requested.
std::int64_t wrapped(std::int64_t size) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(size));
}

constexpr std::string_view moduleName = "modProcessFiles";
constexpr std::string_view procedureName = "getSubFolderInformation";

template <class Body>
void trapped(Body&& body) {
    modGlobal::trapped(moduleName, procedureName, std::forward<Body>(body));
}

} // namespace

FolderWalk::FolderWalk(clsSearch& search, const clsSettings& settings, clsUserInterface& userInterface,
                       std::function<std::int64_t()> elapsed)
    : search_(search), userInterface_(userInterface), withOwners_(settings.getOwnerInfo()),
      wholeSizes_(settings.fullFileSizes() || settings.exact()), readers_(settings.readers()),
      patterns_(settings.excludes()), elapsed_(std::move(elapsed)) {}

void FolderWalk::run(std::string_view path, const platform::EntryFacts& facts) {
    path_ = path;
    if (!patterns_->isEmpty()) {
        excludes_ = std::make_shared<const ExcludedEntries>(patterns_, path);
    }
    if (isExcluded()) {
        ++excluded_;
        search_.leaveOutStart(path_);
        return;
    }
    mountPoints_ = std::make_shared<const platform::PathSet>(platform::mountPointsBelow(path));
    readAhead();
    trapped([&] { enterFolder(facts); });
    while (depth_ > 0) {
        path_.resize(levels_[depth_ - 1]->pathLength);
        trapped([&] {
            Level& level = *levels_[depth_ - 1];
            if (level.next < level.folder->entries.size()) {
                recordEntry(level);
            } else {
                --depth_;
                leaveFolder(level);
            }
        });
    }
}

void FolderWalk::readAhead() {
    ahead_ = std::make_unique<ReadAhead>(ReadAhead::Walk{
        readers_, withOwners_,
        [mountPoints = mountPoints_, excludes = excludes_](std::string_view folder, std::string_view name) {
            return (mountPoints->empty() || !mountPoints->contains(std::string(folder).append(name))) &&
                   !(excludes && excludes->contain(folder, name));
        },
        [this] {
            userInterface_.yieldToEvents();
            return !search_.CancelScan;
        }});
}

// Begins the folder named by path_, unless it has to be skipped.
void FolderWalk::enterFolder(const platform::EntryFacts& facts) {
    showProgress();
    if (search_.CancelScan || search_.storageFailure()) {
        return;
    }
    if (!isRecordable()) {
        return;
    }
    const modFolderRows::RecordedFolder recorded = recordedFolder();
    if (recorded.stamp.empty()) {
        beginFolder(facts, recorded);
    } else if (depth_ > 0) {
        levels_[depth_ - 1]->items.addFolder(
            recorded.totals); // already scanned completely, with all below it
    }
}

// What was recorded for the folder named by path_ before this scan. Subfolders are looked up together with
// their siblings; below a folder without any rows there is nothing to look up.
modFolderRows::RecordedFolder FolderWalk::recordedFolder() {
    if (depth_ == 0) {
        return search_.recordedFolder(path_);
    }
    const Level& parent = *levels_[depth_ - 1];
    if (parent.subfolders.empty()) {
        return {};
    }
    const auto found =
        parent.subfolders.find(path_.substr(parent.pathLength, path_.size() - 1 - parent.pathLength));
    return found == parent.subfolders.end() ? modFolderRows::RecordedFolder() : found->second;
}

void FolderWalk::beginFolder(const platform::EntryFacts& facts,
                             const modFolderRows::RecordedFolder& recorded) {
    const bool isStart = depth_ == 0;
    if (depth_ == levels_.size()) {
        levels_.push_back(std::make_unique<Level>());
    }
    Level& level = *levels_[depth_];
    level.folder = read(!recorded.isThere());
    if (search_.CancelScan) {
        return; // with part of the entries, subfolders would seem to be gone
    }
    level.next = 0;
    level.pathLength = path_.size();
    level.facts = facts;
    level.items = {};
    level.isNew = !recorded.isThere();
    level.subfolders.clear();
    search_.gaps.forget(path_);
    if (!level.folder->isRead) {
        skipUnreadable(level.folder->failure);
    }
    if (!level.isNew) {
        replaceRecorded(level, recorded);
    }
    if (isStart && platform::entryFacts(std::string_view(path_).substr(0, path_.size() - 1)).isFolder) {
        search_.removeFileCalled(path_); // a link to a folder stays a file
    }
    ++depth_;
}

// The folder named by path_. Null only if the scan was cancelled.
ReadAhead::FolderPtr FolderWalk::read(bool isNew) {
    if (depth_ == 0) {
        return ahead_->start(path_, isNew);
    }
    const Level& parent = *levels_[depth_ - 1];
    return ahead_->subfolder(parent.folder, parent.next - 1, isNew);
}

// Only the subfolders that still exist keep their rows until the walk reaches them.
void FolderWalk::replaceRecorded(Level& level, const modFolderRows::RecordedFolder& recorded) {
    level.subfolders = search_.recordedSubfolders(path_);
    std::unordered_set<std::string, platform::NameHash, platform::NameEqual> walked;
    const platform::FolderListing& entries = level.folder->entries;
    for (std::size_t i = 0; i < entries.size() && !level.subfolders.empty(); ++i) {
        const platform::FolderEntry entry = entries[i];
        path_.append(entry.name);
        if (isWalked(entry) && !isExcluded()) {
            walked.emplace(entry.name);
        }
        path_.resize(level.pathLength);
    }
    std::vector<std::string> gone;
    for (const auto& [name, subfolder] : level.subfolders) {
        if (!walked.contains(name)) {
            gone.push_back(name);
        }
    }
    search_.replaceFolder(path_, recorded, gone);
    ahead_->open(level.folder, [&](std::string_view name) {
        const auto found = level.subfolders.find(std::string(name));
        if (found == level.subfolders.end()) {
            return ReadOrder::Plan::walkAsNew;
        }
        return found->second.stamp.empty() ? ReadOrder::Plan::walk : ReadOrder::Plan::skip;
    });
}

// Whether the entry named by path_ is a folder to walk, on this volume.
bool FolderWalk::isWalked(const platform::FolderEntry& entry) const {
    return entry.isFolder && (mountPoints_->empty() || !mountPoints_->contains(path_));
}

// Whether the entry named by path_ is a folder that is the root of another volume.
bool FolderWalk::isOtherVolume(const platform::FolderEntry& entry) const {
    return !mountPoints_->empty() && mountPoints_->contains(path_) &&
           (entry.isFolder || platform::folderExists(path_));
}

// False if a path is too long for the path model; nothing below it can be recorded.
bool FolderWalk::isRecordable() {
    try {
        file_.setFullPath(path_);
        static_cast<void>(file_.drive());
        return true;
    } catch (const RuntimeError& error) {
        constexpr std::size_t shownCharacters = 100;
        modGlobal::logError(error.number(),
                            std::string(error.what()) + ": " +
                                platform::displayPath(platform::firstCharacters(path_, shownCharacters)) +
                                "...",
                            moduleName, procedureName, true);
        skipUnreadable("The path is too long");
        return false;
    }
}

void FolderWalk::skipUnreadable(std::string_view reason) {
    ++unreadableFolders_;
    search_.gaps.add(path_, FigureGaps::Kind::unreadable, reason);
}

void FolderWalk::recordEntry(Level& level) {
    if (level.next % entriesPerYield == entriesPerYield - 1) {
        userInterface_.yieldToEvents();
        if (search_.CancelScan) {
            level.next = level.folder->entries.size(); // the others stay out; the folder gets no stamp
            return;
        }
    }
    const platform::FolderEntry entry = level.folder->entries[level.next++];
    path_.append(entry.name);
    if (isExcluded()) {
        ++excluded_;
        return;
    }
    if (isWalked(entry)) {
        path_ += '\\';
        enterFolder(entry);
        return;
    }
    if (isOtherVolume(entry)) {
        path_ += '\\';
        recordOtherVolume(level, entry);
        return;
    }
    if (!entry.known) {
        ++unreadableFiles_;
        search_.gaps.addFile(std::string_view(path_).substr(0, level.pathLength), entry.name,
                             platform::whyUnknown(entry));
    }
    const std::int64_t recordedSize = wholeSizes_ ? entry.size : wrapped(entry.size);
    if (recordedSize != entry.size) {
        ++wrappedFiles_;
        search_.gaps.addWrapped(std::string_view(path_).substr(0, level.pathLength));
    }
    const auto size = static_cast<double>(recordedSize);
    search_.filesSeen += 1;
    const double onDisk = search_.countedOnDisk(path_, entry);
    if (search_.updateDetail(path_, {}, size, accessedText(entry), modifiedText(entry), ownerOf(entry),
                             {.sizeOnDisk = onDisk})) {
        level.items.addFile(size, onDisk);
    }
}

// A folder without contents here: the volume has its own drive.
void FolderWalk::recordOtherVolume(Level& level, const platform::EntryFacts& facts) {
    search_.gaps.add(path_, FigureGaps::Kind::otherVolume, "Another volume is mounted here");
    const modFolderRows::Totals nothing;
    if (search_.updateDetail(path_, modFolderRows::otherVolume, 0, accessedText(facts), modifiedText(facts),
                             ownerOf(facts), {.totals = &nothing})) {
        level.items.addFolder(nothing);
    }
}

// Records the folder itself after all its contents.
void FolderWalk::leaveFolder(Level& level) {
    ahead_->leave(std::move(level.folder));
    const auto totals = search_.recordFolder(path_, {level.items, static_cast<double>(level.facts.sizeOnDisk),
                                                     level.isNew, accessedText(level.facts),
                                                     modifiedText(level.facts), ownerOf(level.facts)});
    if (totals && depth_ > 0) {
        levels_[depth_ - 1]->items.addFolder(*totals);
    }
}

void FolderWalk::showProgress() {
    const double seconds = static_cast<double>(elapsed_()) / 1000;
    if (visits_ % visitsPerThroughput == 0 && seconds > 0) {
        status_.clear();
        modFormat::appendNumber(status_, std::round(search_.filesSeen / seconds));
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
