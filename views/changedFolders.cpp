#include "views/changedFolders.h"

#include <algorithm>
#include <utility>

#include "platform/locale.h"

namespace modChanges {

namespace {

// Of the paths of folders that no scan has a row for. Cancelled scans lack rows on the way to one folder; a
// file that somebody has made up may claim thousands in a single path.
constexpr std::size_t mostInvented = 16U << 20;

State stateOf(const std::optional<double>& before, const std::optional<double>& now, bool isTouched) {
    if (!before || !now) {
        return before ? State::gone : State::appeared;
    }
    if (*before != *now) {
        return *now > *before ? State::grown : State::shrunk;
    }
    return isTouched ? State::touched : State::same;
}

// A date that the system did not tell is none.
bool haveOtherDates(const Entry* before, const Entry* now) {
    return before != nullptr && now != nullptr && before->modified != now->modified &&
           !before->modified.empty() && !now->modified.empty();
}

std::size_t indexOf(State state) {
    return static_cast<std::size_t>(state);
}

} // namespace

ChangedFolders::ChangedFolders(Table& table, const Request& request, Result& result)
    : table_(table), result_(result), keepsSame_(request.keepsSame), path_(request.folder),
      start_(request.folder.size()) {
    Level& itself = levels_.emplace_back();
    itself.pathEnd = start_;
    itself.folder.name = splitKey(request.folder).second;
    itself.folder.before.isThere = true;
    itself.folder.now.isThere = true;
}

ChangedFolders::Folder ChangedFolders::folderOf(const Entry* before, const Entry* now) {
    const Entry& known = now != nullptr ? *now : *before;
    Folder folder{std::string(known.name), {}, {}, false, std::string(known.modified),
                  std::string(known.owner)};
    if (before != nullptr) {
        folder.before = {true, before->size};
    }
    if (now != nullptr) {
        folder.now = {true, now->size};
    }
    folder.otherDate = haveOtherDates(before, now);
    return folder;
}

void ChangedFolders::setItself(const std::optional<Entry>& before, const std::optional<Entry>& now) {
    if (before || now) {
        std::string name = std::move(levels_.front().folder.name);
        Folder& itself = levels_.front().folder;
        itself = folderOf(before ? &*before : nullptr, now ? &*now : nullptr);
        itself.name = std::move(name);
        itself.before.isThere = true;
        itself.now.isThere = true;
    }
}

void ChangedFolders::add(const Entry* before, const Entry* now) {
    const Entry& known = now != nullptr ? *now : *before;
    goTo(known.folder);
    Folder& current = levels_.back().folder;
    current.before.isThere = current.before.isThere || before != nullptr;
    current.now.isThere = current.now.isThere || now != nullptr;
    if (known.isFolder) {
        levels_.back().subfolders.push_back(folderOf(before, now));
    } else {
        addFile(before, now);
    }
}

void ChangedFolders::addFile(const Entry* before, const Entry* now) {
    Level& level = levels_.back();
    std::optional<double> sizeBefore;
    std::optional<double> sizeNow;
    if (before != nullptr) {
        sizeBefore = before->size;
        level.filesBefore += before->size;
    }
    if (now != nullptr) {
        sizeNow = now->size;
        level.filesNow += now->size;
    }
    const State state = stateOf(sizeBefore, sizeNow, haveOtherDates(before, now));
    ++result_.files.at(indexOf(state));
    level.differences += state == State::same ? 0 : 1;
    if (state != State::same || keepsSame_) {
        const Entry& known = now != nullptr ? *now : *before;
        change_.folder.assign(path_);
        change_.name.assign(known.name);
        change_.isFolder = false;
        change_.before = sizeBefore;
        change_.now = sizeNow;
        change_.state = state;
        change_.filesBefore = 0;
        change_.filesNow = 0;
        change_.differences = 0;
        change_.modified.assign(known.modified);
        change_.owner.assign(known.owner);
        change_.extension.assign(known.extension);
        table_.append(change_);
    }
}

void ChangedFolders::goTo(std::string_view folder) {
    const auto current = [this](std::size_t end) {
        return std::string_view(path_).substr(start_, end - start_);
    };
    while (levels_.size() > 1) {
        const std::string_view open = current(levels_.back().pathEnd);
        if (platform::compareNames(folder.substr(0, open.size()), open) == 0) {
            break;
        }
        leave();
    }
    for (std::size_t at = levels_.back().pathEnd - start_; at < folder.size();) {
        const std::size_t end = std::min(folder.find('\\', at), folder.size() - 1) + 1;
        enter(folder.substr(at, end - at));
        at = end;
    }
}

// The subfolders come in the order in which their contents do.
void ChangedFolders::enter(std::string_view name) {
    Folder folder;
    folder.name = name;
    while (levels_.back().next < levels_.back().subfolders.size()) {
        Level& parent = levels_.back();
        const int order = platform::compareNames(parent.subfolders[parent.next].name, name);
        if (order > 0) {
            break;
        }
        Folder first = std::move(parent.subfolders[parent.next++]);
        if (order == 0) {
            folder = std::move(first);
            break;
        }
        leaveSubfolder(first);
    }
    path_.append(name);
    Level& level = levels_.emplace_back();
    level.pathEnd = path_.size();
    level.folder = std::move(folder);
}

// One in which nothing is recorded.
void ChangedFolders::leaveSubfolder(const Folder& folder) {
    const std::size_t parentEnd = path_.size();
    Level level;
    level.folder = folder;
    record(level, parentEnd);
}

void ChangedFolders::leave() {
    while (levels_.back().next < levels_.back().subfolders.size()) {
        const Folder first = std::move(levels_.back().subfolders[levels_.back().next++]);
        leaveSubfolder(first);
    }
    const Level level = std::move(levels_.back());
    levels_.pop_back();
    path_.resize(levels_.empty() ? splitKey(path_).first.size() : levels_.back().pathEnd);
    record(level, path_.size());
}

void ChangedFolders::record(const Level& level, std::size_t parentEnd) {
    const Folder& folder = level.folder;
    const auto sizeOf = [](const Scan& scan, double content) {
        return scan.isThere ? std::optional(scan.ownSize.value_or(content)) : std::nullopt;
    };
    change_.folder.assign(path_, 0, parentEnd);
    change_.name.assign(folder.name);
    change_.isFolder = true;
    change_.before = sizeOf(folder.before, level.filesBefore + level.foldersBefore);
    change_.now = sizeOf(folder.now, level.filesNow + level.foldersNow);
    change_.state = stateOf(change_.before, change_.now, folder.otherDate || level.differences > 0);
    // What is not of a subfolder; in a scan that was saved without its files, this is all that tells.
    change_.filesBefore = change_.before.value_or(0) - level.foldersBefore;
    change_.filesNow = change_.now.value_or(0) - level.foldersNow;
    change_.differences = level.differences;
    change_.modified.assign(folder.modified);
    change_.owner.assign(folder.owner);
    change_.extension.clear();
    const bool differs = change_.state != State::same;
    if (levels_.empty()) {
        result_.folder = change_;
    } else {
        Level& parent = levels_.back();
        parent.foldersBefore += change_.before.value_or(0);
        parent.foldersNow += change_.now.value_or(0);
        parent.differences += level.differences + (differs ? 1 : 0);
        parent.folder.before.isThere = parent.folder.before.isThere || folder.before.isThere;
        parent.folder.now.isThere = parent.folder.now.isThere || folder.now.isThere;
        ++result_.folders.at(indexOf(change_.state));
    }
    const bool hasRow = levels_.empty() || folder.before.ownSize || folder.now.ownSize;
    if ((differs || keepsSame_) && (hasRow || mayInvent(parentEnd + folder.name.size()))) {
        table_.append(change_);
    }
}

bool ChangedFolders::mayInvent(std::size_t bytes) {
    invented_ += bytes;
    return invented_ <= mostInvented;
}

void ChangedFolders::finish() {
    goTo({});
    leave();
}

} // namespace modChanges
