#include "platform/linux/volumeCalls.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/answering.h"
#include "platform/linux/mountTable.h"
#include "platform/linux/realPath.h"

namespace platform {

namespace {

// The calls, as the first byte of a request; the path follows.
namespace call {
constexpr char startAt = 's';
constexpr char read = 'r';
constexpr char readNames = 'n';
constexpr char list = 'l';
constexpr char facts = 'i';
constexpr char folderStatus = 'f';
constexpr char entryStatus = 'e';
constexpr char tryToOpen = 'o';
constexpr char tryToRead = 't';
constexpr char resolve = 'p';
} // namespace call

// Within a walk, a server may need to be woken up or started anew.
constexpr std::chrono::seconds patienceWithinWalk{30};

void nothing(std::string_view) {}

std::string bytesOf(const EntryFacts& facts) {
    std::string bytes(sizeof facts, '\0');
    std::memcpy(bytes.data(), &facts, sizeof facts);
    return bytes;
}

EntryFacts factsIn(std::string_view bytes) {
    EntryFacts facts;
    std::memcpy(&facts, bytes.data(), sizeof facts);
    return facts;
}

// Takes the pieces that are an entry's facts and its name.
VolumeProcess::Piece takingEntries(const TakeEntry& take) {
    return [&take, name = std::string()](std::string_view piece) mutable {
        name = piece.substr(sizeof(EntryFacts));
        take(factsIn(piece), name.c_str());
    };
}

// What follows the folder's path in a request for facts.
std::string joined(std::span<const std::string_view> names) {
    std::string text;
    for (const std::string_view name : names) {
        text.append(1, '\0').append(name);
    }
    return text;
}

std::vector<std::string_view> split(std::string_view text) {
    std::vector<std::string_view> parts;
    for (std::size_t end = text.find('\0'); end != std::string_view::npos; end = text.find('\0')) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

// In the other process.
int serveFacts(FolderCalls& calls, std::string_view request, const TakeEntry& take) {
    const std::vector<std::string_view> parts = split(request);
    return calls.facts(std::string(parts.front()), std::span(parts).subspan(1), take);
}

int serve(FolderCalls& calls, std::string_view request, const VolumeProcess::Piece& answer) {
    const std::string native(request.substr(1));
    const TakeEntry take = [&](const EntryFacts& facts, const char* name) { answer(bytesOf(facts) + name); };
    EntryFacts facts;
    int result = 0;
    switch (request.front()) {
    case call::startAt:
        return calls.startAt(native);
    case call::read:
        return calls.read(native, take);
    case call::readNames:
        return calls.readNames(native, take);
    case call::list:
        return calls.list(native, [&](NameKind kind, const char* name) {
            answer(std::string(1, static_cast<char>(kind)) + name);
        });
    case call::facts:
        return serveFacts(calls, native, take);
    case call::folderStatus:
        result = folderStatus(native, facts);
        break;
    case call::entryStatus:
        result = entryStatus(native, facts);
        break;
    case call::tryToOpen:
        return tryToOpen(native);
    case call::tryToRead:
        return tryToRead(native);
    case call::resolve:
        if (const auto path = resolvedPath(native)) {
            answer(*path);
            return 0;
        }
        return errno;
    default:
        return EINVAL;
    }
    answer(bytesOf(facts));
    return result;
}

// Processes that are not at work: one that can be asked, and those that still wait for their volume.
class Processes {
public:
    // Never destroyed, as a thread that was left behind may still ask.
    static Processes& all() {
        static auto* const processes = new Processes; // NOLINT(cppcoreguidelines-owning-memory)
        return *processes;
    }

    std::unique_ptr<VolumeProcess> take() {
        const std::lock_guard guard(mutex_);
        return idle_ ? std::move(idle_) : std::make_unique<VolumeProcess>(maker_);
    }

    void giveBack(std::unique_ptr<VolumeProcess> process) {
        const std::lock_guard guard(mutex_);
        idle_ = std::move(process);
    }

    void leaveBehind(const std::string& volume, std::unique_ptr<VolumeProcess> process) {
        const std::lock_guard guard(mutex_);
        waiting_[volume] = std::move(process);
    }

    bool isSilent(const std::string& volume) {
        const std::lock_guard guard(mutex_);
        std::erase_if(waiting_, [](const auto& item) { return !item.second->isWaiting(); });
        return waiting_.contains(volume);
    }

private:
    static void work(int socket) {
        FolderCalls calls;
        VolumeProcess::serve(socket, [&](std::string_view request, const VolumeProcess::Piece& answer) {
            return serve(calls, request, answer);
        });
    }

    ProcessMaker maker_{work};
    std::mutex mutex_;
    std::unique_ptr<VolumeProcess> idle_;
    std::map<std::string, std::unique_ptr<VolumeProcess>> waiting_;
};

// What stands for the volume: its mount, or the path itself if links lead there.
std::string volumeOf(std::string_view native) {
    const auto table = MountTable::current();
    const Mount* const mount = table->volumeOf(native);
    return mount != nullptr && mount->mayNotAnswer() ? mount->id : std::string(native);
}

} // namespace

bool couldHang(std::string_view native) {
    const auto table = MountTable::current();
    return native.starts_with('/') && std::any_of(table->mounts().begin(), table->mounts().end(),
                                                  [](const Mount& mount) { return mount.mayNotAnswer(); });
}

VolumeCalls::VolumeCalls(std::string_view native) : volume_(volumeOf(native)) {}

VolumeCalls::~VolumeCalls() {
    if (process_ && start_.empty()) {
        Processes::all().giveBack(std::move(process_));
    }
}

int VolumeCalls::startAt(const std::string& native) {
    start_ = native;
    return ask(call::startAt, native, nothing, patience);
}

int VolumeCalls::read(const std::string& native, const TakeEntry& take) {
    return askWithinWalk(call::read, native, {}, takingEntries(take));
}

int VolumeCalls::list(const std::string& native, const TakeName& take) {
    std::string name;
    return askWithinWalk(call::list, native, {}, [&](std::string_view piece) {
        name = piece.substr(1);
        take(static_cast<NameKind>(piece.front()), name.c_str());
    });
}

int VolumeCalls::facts(const std::string& native, std::span<const std::string_view> names,
                       const TakeEntry& take) {
    return askWithinWalk(call::facts, native, joined(names), takingEntries(take));
}

// A volume that answers again has a new process, which does not know the start.
int VolumeCalls::askWithinWalk(char call, const std::string& native, std::string_view rest,
                               const VolumeProcess::Piece& take) {
    const int error = process_ || start_.empty() ? 0 : startAt(std::string(start_));
    return error != 0 ? error
                      : ask(call, native + std::string(rest), take,
                            native == start_ ? patience : patienceWithinWalk);
}

int VolumeCalls::readNames(const std::string& native, const TakeEntry& take) {
    return ask(call::readNames, native, takingEntries(take), patience);
}

int VolumeCalls::folderStatus(const std::string& native, EntryFacts& facts) {
    return ask(
        call::folderStatus, native, [&](std::string_view piece) { facts = factsIn(piece); }, patience);
}

int VolumeCalls::entryStatus(const std::string& native, EntryFacts& facts) {
    return ask(
        call::entryStatus, native, [&](std::string_view piece) { facts = factsIn(piece); }, patience);
}

int VolumeCalls::tryToOpen(const std::string& native) {
    return ask(call::tryToOpen, native, nothing, patience);
}

int VolumeCalls::tryToRead(const std::string& native) {
    return ask(call::tryToRead, native, nothing, patience);
}

int VolumeCalls::resolve(const std::string& native, std::string& path) {
    return ask(
        call::resolve, native, [&](std::string_view piece) { path = piece; }, patience);
}

// A process that was cancelled while its volume still answered is not left behind, but ended.
int VolumeCalls::ask(char call, const std::string& request, const VolumeProcess::Piece& take,
                     std::chrono::milliseconds longestPause) {
    if (Processes::all().isSilent(volume_)) {
        return ETIMEDOUT;
    }
    if (!process_) {
        process_ = Processes::all().take();
    }
    const int result = process_->ask(call + request, take, {longestPause, goesOn_});
    const bool isSilent = process_->isWaiting() && process_->silence() >= patience;
    if (isSilent) {
        Processes::all().leaveBehind(volume_, std::move(process_));
    } else if (process_->isWaiting() || result == EIO || result == EAGAIN) {
        process_.reset();
    }
    return result;
}

} // namespace platform
