#include "scan/readOrder.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t mostSpare = 1024;
constexpr std::size_t largestSpare = 8192; // bytes

} // namespace

ReadOrder::FolderPtr ReadOrder::newFolder() {
    if (spare_.empty()) {
        return std::make_shared<Folder>();
    }
    FolderPtr folder = std::move(spare_.back());
    spare_.pop_back();
    return folder;
}

ReadOrder::FolderPtr ReadOrder::start(std::string_view path, bool isNew) {
    FolderPtr folder = newFolder();
    folder->path_ = path;
    folder->isNew_ = isNew;
    folder->isTaken_ = true;
    return folder;
}

// Only folders that are being read, of which there are as many as readers, are passed over.
ReadOrder::FolderPtr ReadOrder::choose() {
    for (auto place = order_.begin(); place != order_.end(); ++place) {
        Folder& parent = **place;
        if (parent.state_ == Folder::State::beingRead) {
            continue;
        }
        const Folder::Subfolder& subfolder = parent.subfolders_[parent.next_];
        FolderPtr chosen = newFolder();
        chosen->path_.append(parent.path_).append(parent.entries[subfolder.index].name).append(1, '\\');
        chosen->isNew_ = subfolder.isNew;
        chosen->index_ = subfolder.index;
        parent.chosen_.push_back(chosen);
        this->place(chosen, place);
        chosen->state_ = Folder::State::beingRead; // only now, as nobody reads it if there is no memory
        ++parent.next_;
        if (parent.next_ == parent.subfolders_.size()) {
            unplace(parent);
        }
        return chosen;
    }
    return nullptr;
}

bool ReadOrder::hasNext() const {
    return std::any_of(order_.begin(), order_.end(),
                       [](const FolderPtr& folder) { return folder->state_ != Folder::State::beingRead; });
}

void ReadOrder::findSubfolders(Folder& folder) const {
    for (std::size_t i = 0; i < folder.entries.size(); ++i) {
        const platform::FolderEntry entry = folder.entries[i];
        if (entry.isFolder && isWalked_(folder.path_, entry.name)) {
            folder.subfolders_.push_back({i, true});
        }
    }
}

void ReadOrder::finish(const FolderPtr& folder) {
    folder->state_ = Folder::State::read;
    if (folder->isDropped_) {
        return;
    }
    if (!folder->isTaken_) {
        waitingBytes_ += bytesOf(*folder);
    }
    if (!folder->isNew_ || folder->subfolders_.empty()) {
        unplace(*folder);
    } else if (!folder->isPlaced_) {
        place(folder, order_.begin()); // the walk itself has read it, and is there
    }
}

void ReadOrder::giveBack(const FolderPtr& folder) {
    folder->entries.clear();
    folder->subfolders_.clear();
    folder->state_ = Folder::State::unread;
    unplace(*folder);
}

ReadOrder::FolderPtr ReadOrder::take(Folder& parent, std::size_t index, bool isNew) {
    while (parent.passed_ < parent.chosen_.size() && parent.chosen_[parent.passed_]->index_ < index) {
        const FolderPtr passed = std::move(parent.chosen_[parent.passed_++]);
        drop(*passed);
    }
    while (parent.next_ < parent.subfolders_.size() && parent.subfolders_[parent.next_].index <= index) {
        ++parent.next_;
    }
    if (parent.next_ == parent.subfolders_.size()) {
        unplace(parent);
    }
    if (parent.passed_ == parent.chosen_.size() || parent.chosen_[parent.passed_]->index_ != index) {
        FolderPtr folder = start(parent.path_, isNew);
        folder->path_.append(parent.entries[index].name).append(1, '\\');
        return folder;
    }
    FolderPtr folder = std::move(parent.chosen_[parent.passed_++]);
    folder->isTaken_ = true;
    if (folder->state_ == Folder::State::read) {
        waitingBytes_ -= bytesOf(*folder);
    }
    return folder;
}

void ReadOrder::open(const FolderPtr& folder, const std::function<Plan(std::string_view name)>& planFor) {
    if (folder->isNew_) {
        return; // its subfolders are read ahead already
    }
    std::vector<Folder::Subfolder> walked;
    for (const Folder::Subfolder& subfolder : folder->subfolders_) {
        const Plan plan = planFor(folder->entries[subfolder.index].name);
        if (plan != Plan::skip) {
            walked.push_back({subfolder.index, plan == Plan::walkAsNew});
        }
    }
    folder->subfolders_ = std::move(walked);
    if (!folder->subfolders_.empty()) {
        place(folder, order_.begin());
    }
}

void ReadOrder::leave(FolderPtr folder) {
    drop(*folder);
    if (folder.use_count() == 1 && spare_.size() < mostSpare && bytesOf(*folder) <= largestSpare) {
        folder->reset();
        spare_.push_back(std::move(folder));
    }
}

void ReadOrder::Folder::reset() {
    path_.clear();
    entries.clear();
    isRead = false;
    failure.clear();
    state_ = State::unread;
    isNew_ = true;
    isTaken_ = false;
    isDropped_ = false;
    subfolders_.clear();
    next_ = 0;
    chosen_.clear();
    passed_ = 0;
}

void ReadOrder::place(const FolderPtr& folder, Place before) {
    folder->place_ = order_.insert(before, folder);
    folder->isPlaced_ = true;
}

void ReadOrder::unplace(Folder& folder) {
    if (folder.isPlaced_) {
        folder.isPlaced_ = false;
        order_.erase(folder.place_); // which may be the last reference to it
    }
}

// With everything below it that has been chosen; as deep as that is.
void ReadOrder::drop(Folder& top) {
    std::vector<FolderPtr> left;
    const auto dropOne = [&](Folder& folder) {
        folder.isDropped_ = true;
        if (!folder.isTaken_ && folder.state_ == Folder::State::read) {
            waitingBytes_ -= bytesOf(folder);
        }
        for (; folder.passed_ < folder.chosen_.size(); ++folder.passed_) {
            left.push_back(std::move(folder.chosen_[folder.passed_]));
        }
        unplace(folder);
    };
    dropOne(top);
    while (!left.empty()) {
        const FolderPtr folder = std::move(left.back());
        left.pop_back();
        dropOne(*folder);
    }
}

std::size_t ReadOrder::bytesOf(const Folder& folder) {
    return sizeof(Folder) + folder.path_.size() + folder.entries.bytes() +
           folder.subfolders_.size() * sizeof(Folder::Subfolder);
}
