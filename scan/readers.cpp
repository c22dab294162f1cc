#include "scan/readers.h"

#include <algorithm>
#include <new>
#include <thread>
#include <utility>

#include "platform/clock.h"

namespace {

constexpr int mostReaders = 32;
constexpr int readersOfDisk = 8;
constexpr std::size_t mostWaiting = std::size_t{16} << 20; // bytes that are read but not taken
constexpr std::chrono::milliseconds untilNextLook{50};     // between two looks whether the walk goes on
constexpr std::chrono::milliseconds farewell{100};

} // namespace

void Readers::startWith(const platform::FolderReader& reader, bool withOwners) {
    const Lock lock(mutex_);
    pattern_ = reader.another();
    withOwners_ = withOwners;
    wake();
}

void Readers::end() {
    Lock lock(mutex_);
    ends_ = true;
    work_.notify_all();
    done_.wait_for(lock, farewell, [this] { return running_ == 0; });
}

void Readers::finish(const ReadOrder::FolderPtr& folder) {
    order_.findSubfolders(*folder);
    const Lock lock(mutex_);
    order_.finish(folder);
    wake();
}

// The walk reads what it will want next rather than sleep: to be woken for each folder takes time, too.
bool Readers::wait(const ReadOrder::Folder& folder, platform::FolderReader* reader,
                   const std::function<bool()>& goesOn) {
    auto lastLook = Clock::now();
    Lock lock(mutex_);
    const auto isRead = [&] { return !ReadOrder::isBeingRead(folder); };
    const auto isReadOrMayHelp = [&] { return isRead() || (reader != nullptr && hasWork()); };
    while (!isRead()) {
        bool hasHelped = false;
        try {
            hasHelped = reader != nullptr && doWork(lock, *reader);
        } catch (const std::bad_alloc&) { // what it waits for may come all the same
            reader = nullptr;
        }
        const bool lookIsDue = hasHelped ? Clock::now() - lastLook >= untilNextLook
                                         : !done_.wait_for(lock, untilNextLook, isReadOrMayHelp);
        if (lookIsDue) {
            lock.unlock();
            if (!goesOn()) {
                return false;
            }
            lastLook = Clock::now();
            lock.lock();
        }
    }
    return true;
}

// The calling thread does the parts that no other has begun.
bool Readers::distribute(std::size_t count, const platform::FolderReader::Work& work,
                         platform::FolderReader& reader, const std::function<bool()>& goesOn) {
    const auto job = std::make_shared<Job>(Job{work, count});
    auto lastLook = Clock::now();
    Lock lock(mutex_);
    jobs_.push_back(job);
    done_.notify_all(); // the walk may be waiting for this folder, and help
    const auto mayGoOn = [&] {
        lastLook = Clock::now();
        lock.unlock();
        const bool may = goesOn();
        lock.lock();
        return may;
    };
    bool may = true;
    while (may && doPart(lock, *job, reader)) {
        may = Clock::now() - lastLook < untilNextLook || mayGoOn();
    }
    while (may && !done_.wait_for(lock, untilNextLook, [&] { return job->done == count; })) {
        may = mayGoOn();
    }
    std::erase(jobs_, job);
    return may && !job->failed;
}

// --- the threads ------------------------------------------------------------------------------------------

void Readers::run() {
    bool isOutOfMemory = false;
    try {
        readUntilEnd();
    } catch (...) { // the walk reads what is left to it
        isOutOfMemory = true;
    }
    const Lock lock(mutex_);
    --running_;
    if (isOutOfMemory) {
        limit_ = running_;
    }
    done_.notify_all();
}

void Readers::readUntilEnd() {
    Lock lock(mutex_);
    const std::unique_ptr<platform::FolderReader> reader = pattern_->another();
    const std::function<bool()> goesOn = [this] { return !ends_; };
    reader->setGoesOn(goesOn);
    reader->setWithOwners(withOwners_);
    reader->setDistribute([&](std::size_t count, const platform::FolderReader::Work& work) {
        return distribute(count, work, *reader, goesOn);
    });
    Load load;
    while (!ends_) {
        const auto begin = Clock::now();
        if (doWork(lock, *reader)) {
            follow(load, Clock::now() - begin);
        } else {
            ++idle_;
            work_.wait(lock);
            --idle_;
        }
    }
    lock.unlock(); // its reader may have to end a process
}

bool Readers::doWork(Lock& lock, platform::FolderReader& reader) {
    if (!jobs_.empty()) {
        const std::shared_ptr<Job> job = jobs_.front();
        return doPart(lock, *job, reader);
    }
    return readNext(lock, reader);
}

bool Readers::doPart(Lock& lock, Job& job, platform::FolderReader& reader) {
    if (job.next == job.count) {
        return false;
    }
    const std::size_t part = job.next++;
    if (job.next == job.count) {
        std::erase_if(jobs_, [&](const auto& other) { return other.get() == &job; });
    }
    wake();
    lock.unlock();
    bool failed = false;
    try {
        job.work(part, reader);
    } catch (...) { // no memory
        failed = true;
    }
    lock.lock();
    job.failed = job.failed || failed;
    if (++job.done == job.count) {
        done_.notify_all();
    }
    return true;
}

bool Readers::readNext(Lock& lock, platform::FolderReader& reader) {
    if (!hasRoom()) {
        return false;
    }
    const ReadOrder::FolderPtr folder = order_.choose();
    if (!folder) {
        return false;
    }
    wake();
    lock.unlock();
    bool isDone = false;
    try {
        folder->isRead = reader.read(folder->path(), folder->entries);
        folder->failure = folder->isRead ? std::string() : reader.failure();
        isDone = folder->isRead || !reader.lacksResources();
        order_.findSubfolders(*folder);
    } catch (...) { // no memory: the walk tries again, and fails itself
        isDone = false;
    }
    lock.lock();
    if (isDone) {
        order_.finish(folder);
    } else {
        order_.giveBack(folder);
    }
    done_.notify_all();
    wake();
    return true;
}

// More threads help where they wait, and not where they compute: many where they do little else, as for an
// answer over a network, and some where a disk is read. A short while of that may have been other programs'
// turns.
void Readers::follow(Load& load, Clock::duration busy) {
    constexpr std::chrono::milliseconds span{5};
    constexpr int mostlyWaiting = 4; // times as long as the processor was used
    constexpr double oftenWaiting = 1.4;
    constexpr int spansInARow = 4; // after which it is no accident
    load.busy += busy;
    if (!mayBecomeMore_ || load.busy < span) {
        return;
    }
    const std::chrono::microseconds processor = platform::threadProcessorTime();
    const std::chrono::microseconds used = processor - load.processor;
    const int often = used * oftenWaiting < load.busy ? load.often + 1 : 0;
    const int most = used * mostlyWaiting < load.busy ? mostReaders
                     : often >= spansInARow           ? readersOfDisk
                                                      : 0;
    if (running_ == limit_ && limit_ < most) {
        limit_ = std::min(limit_ * 2, most);
    }
    load = {{}, processor, often};
}

// Has one more thread look for work. Whoever takes work does this, so that there are as many as can help.
void Readers::wake() {
    if (ends_ || !pattern_ || !hasWork()) {
        return;
    }
    if (idle_ > 0) {
        work_.notify_one();
    } else if (running_ < limit_) {
        try {
            std::thread([self = shared_from_this()] { self->run(); }).detach();
            ++running_;
        } catch (...) {
            limit_ = running_; // the system has no more threads, or no memory
        }
    }
}

bool Readers::hasRoom() const {
    return order_.waitingBytes() < mostWaiting;
}

bool Readers::hasWork() const {
    return !jobs_.empty() || (hasRoom() && order_.hasNext());
}
