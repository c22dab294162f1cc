#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "platform/folders.h"
#include "scan/readOrder.h"

// The threads that read folders ahead of a walk, and what they and the walk's thread share. Each of the
// threads keeps this object, so that one that waits for its volume can be left behind.
class Readers : public std::enable_shared_from_this<Readers> {
public:
    // At most `count` threads; more if `mayBecomeMore` and they mostly wait.
    Readers(int count, bool mayBecomeMore, ReadOrder::IsWalked isWalked)
        : limit_(count), mayBecomeMore_(mayBecomeMore), order_(std::move(isWalked)) {}

    // The walk has read its start with this reader, which each thread gets another of.
    void startWith(const platform::FolderReader& reader, bool withOwners);

    // Has all threads end; those that wait for their volume are not waited for.
    void end();

    // Waits while the folder is being read. False if `goesOn` said no. Meanwhile the caller does with
    // `reader` what the threads do; if that is null, it only waits.
    bool wait(const ReadOrder::Folder& folder, platform::FolderReader* reader,
              const std::function<bool()>& goesOn);

    // platform::FolderReader::Distribute, for the reader of the calling thread.
    bool distribute(std::size_t count, const platform::FolderReader::Work& work,
                    platform::FolderReader& reader, const std::function<bool()>& goesOn);

    // The walk's thread has read the folder.
    void finish(const ReadOrder::FolderPtr& folder);

    // Calls `use(order)` while no other thread does, and has the threads do what there is to do afterwards.
    template <class Use>
    auto withOrder(Use use) {
        const std::unique_lock lock(mutex_);
        struct Wake {
            Readers& readers;
            ~Wake() { readers.wake(); }
        } wake{*this};
        return use(order_);
    }

private:
    using Clock = std::chrono::steady_clock;
    using Lock = std::unique_lock<std::mutex>;

    // The parts of the work on a large folder.
    struct Job {
        platform::FolderReader::Work work;
        std::size_t count;
        std::size_t next = 0;
        std::size_t done = 0;
        bool failed = false;
    };

    // How much of its time one thread has waited.
    struct Load {
        Clock::duration busy{};
        std::chrono::microseconds processor{};
        int often = 0; // the number of spans in a row in which it waited often
    };

    void run();
    void readUntilEnd();
    bool doWork(Lock& lock, platform::FolderReader& reader);
    bool doPart(Lock& lock, Job& job, platform::FolderReader& reader);
    bool readNext(Lock& lock, platform::FolderReader& reader);
    void follow(Load& load, Clock::duration busy);
    void wake();
    [[nodiscard]] bool hasRoom() const;
    [[nodiscard]] bool hasWork() const;

    std::mutex mutex_;
    std::condition_variable work_;
    std::condition_variable done_; // a folder, a part, or a thread
    std::unique_ptr<platform::FolderReader> pattern_;
    bool withOwners_ = false;
    int limit_;
    const bool mayBecomeMore_;
    int running_ = 0;
    int idle_ = 0;
    std::atomic<bool> ends_ = false;
    std::deque<std::shared_ptr<Job>> jobs_; // that have parts nobody has begun
    ReadOrder order_;
};
