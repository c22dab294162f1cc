#include "scan/readAhead.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "base/clsSettings.h"

namespace {

// As needed, the walk's own thread has a processor too.
int readerCount(int wanted) {
    constexpr int mostProcessors = 8;
    const auto processors = static_cast<int>(std::thread::hardware_concurrency());
    return wanted >= 0 ? std::min(wanted, clsSettings::mostReaders)
                       : std::clamp(processors - 1, 1, mostProcessors);
}

} // namespace

ReadAhead::ReadAhead(const Walk& walk)
    : withOwners_(walk.withOwners), goesOn_(walk.goesOn),
      readers_(std::make_shared<Readers>(readerCount(walk.readers), walk.readers < 0, walk.isWalked)) {
    reader_.setGoesOn(goesOn_);
    reader_.setWithOwners(withOwners_);
    if (walk.readers != 0) {
        reader_.setDistribute([this](std::size_t count, const platform::FolderReader::Work& work) {
            return readers_->distribute(count, work, reader_, goesOn_);
        });
    }
}

ReadAhead::~ReadAhead() {
    readers_->end();
}

ReadAhead::FolderPtr ReadAhead::start(std::string_view path, bool isNew) {
    FolderPtr folder = readers_->withOrder([&](ReadOrder& order) { return order.start(path, isNew); });
    readItself(folder, true);
    helps_ = !reader_.mayNotAnswer();
    readers_->startWith(reader_, withOwners_);
    return folder;
}

ReadAhead::FolderPtr ReadAhead::subfolder(const FolderPtr& parent, std::size_t index, bool isNew) {
    FolderPtr folder =
        readers_->withOrder([&](ReadOrder& order) { return order.take(*parent, index, isNew); });
    if (!readers_->wait(*folder, helps_ ? &reader_ : nullptr, goesOn_)) {
        return nullptr;
    }
    if (ReadOrder::isUnread(*folder)) {
        readItself(folder, false);
    }
    return folder;
}

void ReadAhead::readItself(const FolderPtr& folder, bool isStart) {
    folder->isRead = reader_.read(folder->path(), folder->entries, isStart);
    folder->failure = folder->isRead ? std::string() : reader_.failure();
    readers_->finish(folder);
}

void ReadAhead::open(const FolderPtr& folder,
                     const std::function<ReadOrder::Plan(std::string_view name)>& planFor) {
    readers_->withOrder([&](ReadOrder& order) { order.open(folder, planFor); });
}

void ReadAhead::leave(FolderPtr folder) {
    readers_->withOrder([&](ReadOrder& order) { order.leave(std::move(folder)); });
}
