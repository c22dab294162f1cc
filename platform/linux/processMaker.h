#pragma once

#include <sys/types.h>

#include <functional>
#include <mutex>

#include "platform/linux/descriptor.h"

namespace platform {

// Makes processes that are copies of this program as it was when the first one was needed. They are copied
// from a process that was set aside then and has one thread: in the copy of a program with several threads, a
// lock that another thread held would stay locked for ever.
class ProcessMaker {
public:
    // Runs in the other process, which ends when it returns. It has nothing of its parent's open but the
    // socket.
    using Work = std::function<void(int socket)>;

    explicit ProcessMaker(Work work) : work_(std::move(work)) {}

    // The process that works with the socket; -1 if the system has none for it.
    pid_t make(const Descriptor& socket);

    // Ends a process that was made here, but does not wait until it has ended.
    void end(pid_t process);

private:
    bool setAside();

    std::mutex mutex_;
    Work work_;
    pid_t setAside_ = -1;
    Descriptor control_;
};

} // namespace platform
