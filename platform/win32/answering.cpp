#include "platform/answering.h"

#include <windows.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "platform/drives.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/win32/wide.h"

namespace platform {

namespace {

// What the thread that asks and the one that waits for it share. The thread may never come back.
struct Question {
    std::mutex mutex;
    std::condition_variable changed;
    bool isAnswered = false;
};

// The drives whose threads have not come back.
struct Silent {
    std::mutex mutex;
    std::set<std::string> drives;

    static Silent& all() {
        static auto* const silent =
            new Silent; // NOLINT(cppcoreguidelines-owning-memory): left to those threads
        return *silent;
    }
};

std::string driveOf(std::string_view internalPath) {
    if (!internalPath.starts_with("\\\\")) {
        return std::string(internalPath.substr(0, internalPath.find('\\') + 1));
    }
    const std::size_t server = internalPath.find('\\', 2);
    const std::size_t share = server == std::string_view::npos ? server : internalPath.find('\\', server + 1);
    return std::string(share == std::string_view::npos ? internalPath : internalPath.substr(0, share + 1));
}

void ask(const std::string& drive, const std::shared_ptr<Question>& question) {
    static_cast<void>(::GetFileAttributesW(wide(drive).c_str()));
    {
        const std::lock_guard guard(Silent::all().mutex);
        Silent::all().drives.erase(drive);
    }
    const std::lock_guard guard(question->mutex);
    question->isAnswered = true;
    question->changed.notify_all();
}

} // namespace

bool mayNotAnswer(std::string_view internalPath) {
    return internalPath.starts_with("\\\\") || driveType(driveOf(internalPath)) == drive::remote;
}

bool answers(std::string_view internalPath, const std::function<bool()>& goesOn) {
    if (!mayNotAnswer(internalPath)) {
        return true;
    }
    const std::string drive = driveOf(internalPath);
    {
        const std::lock_guard guard(Silent::all().mutex);
        if (!Silent::all().drives.insert(drive).second) {
            return false;
        }
    }
    const auto question = std::make_shared<Question>();
    std::thread(ask, drive, question).detach();
    constexpr std::chrono::milliseconds turn{50};
    const auto end = std::chrono::steady_clock::now() + patience;
    std::unique_lock lock(question->mutex);
    while (!question->changed.wait_for(lock, turn, [&] { return question->isAnswered; })) {
        lock.unlock();
        if ((goesOn && !goesOn()) || std::chrono::steady_clock::now() > end) {
            return false;
        }
        lock.lock();
    }
    return true;
}

bool seemsToBeFolder(std::string_view internalPath) {
    return mayNotAnswer(internalPath) || folderExists(internalPath);
}

} // namespace platform
