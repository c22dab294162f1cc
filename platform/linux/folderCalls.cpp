#include "platform/linux/folderCalls.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <limits>
#include <utility>

#include "platform/linux/mountTable.h"
#include "platform/linux/realPath.h"

namespace platform {

namespace {

// Kept well below PATH_MAX, so that the last names of a path always fit after it.
constexpr std::size_t pathPieceLength = 3000;

constexpr std::int64_t mostBlocks = std::numeric_limits<std::int64_t>::max() / 512; // a server may claim more
constexpr std::int64_t statusBlock = 512; // of st_blocks, whatever the file system's blocks are

// The kernel's record of one entry. glibc offers the same as dirent64, but not the call itself.
struct KernelEntry {
    ino64_t inode;
    off64_t offset;
    unsigned short length;
    unsigned char type;
    char name[1]; // NOLINT: of any length
};

bool isSelfOrParent(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

Descriptor openAnything(int start, const char* path, int flags) {
    return Descriptor(::openat(start, path, flags));
}

// A folder on the volume of the one it starts from, without following any link on the way there, so that
// neither a folder that has become a link nor a volume mounted meanwhile leads elsewhere. ELOOP and EXDEV say
// that there is one.
Descriptor openBeneath(int start, const char* path, int flags) {
    constexpr int pathFlags =
        O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC; // this call takes no others with O_PATH
    open_how how{};
    how.flags = static_cast<unsigned>((flags & O_PATH) != 0 ? flags & pathFlags : flags);
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS | RESOLVE_NO_XDEV;
    return Descriptor(static_cast<int>(::syscall(SYS_openat2, start, path, &how, sizeof how)));
}

// The same name by name, for kernels (before 5.6) and containers without that call.
Descriptor openNameByName(int start, const char* path, int flags) {
    Descriptor folder;
    std::string_view rest(path);
    while (!rest.empty()) {
        const std::string name(rest.substr(0, rest.find('/')));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        const int from = folder.isOpen() ? folder.get() : start;
        folder = Descriptor(::openat(from, name.c_str(),
                                     (rest.empty() ? flags : O_PATH | O_CLOEXEC) | O_DIRECTORY | O_NOFOLLOW));
        if (!folder.isOpen()) {
            return folder;
        }
    }
    struct stat there {};
    struct stat here {};
    if (::fstat(start, &here) == 0 && ::fstat(folder.get(), &there) == 0 && here.st_dev != there.st_dev) {
        folder.reset();
        errno = EXDEV;
    }
    return folder;
}

bool hasOpenBeneath() {
    static const bool has = openBeneath(AT_FDCWD, ".", O_PATH | O_CLOEXEC).isOpen();
    return has;
}

// Reading a folder must not change its last access time if the system allows us to leave it alone.
Descriptor openFolder(OpenFrom open, int start, const char* path, int flags) {
    flags |= O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
    Descriptor folder = open(start, path, flags | O_NOATIME);
    if (!folder.isOpen() && errno == EPERM) {
        folder = open(start, path, flags);
    }
    return folder;
}

// Calls `take(name, the kernel's type)` for each of the kernel's records.
template <class Take>
void forEachRecord(std::string_view records, Take take) {
    for (std::size_t position = 0; position < records.size();) {
        const char* record = records.data() + position;
        unsigned short length = 0;
        std::memcpy(&length, record + offsetof(KernelEntry, length), sizeof length);
        const char* name = record + offsetof(KernelEntry, name);
        if (!isSelfOrParent(name)) {
            take(name, static_cast<unsigned char>(record[offsetof(KernelEntry, type)]));
        }
        position += length;
    }
}

// False if there is no such entry any more: it vanished after the folder was read.
bool askForFacts(const Descriptor& folder, const char* name, NameKind kind, EntryFacts& facts) {
    struct stat status {};
    if (kind == NameKind::mountPoint) {
        facts.isFolder = true;
    } else if (::fstatat(folder.get(), name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
        facts = factsOf(status);
    } else if (errno == ENOENT) {
        return false;
    } else {
        facts.isFolder = kind == NameKind::folder;
        facts.error = errno;
    }
    return true;
}

bool startsWithPiece(std::string_view path, std::string_view piece) {
    return path.size() > piece.size() && path[piece.size()] == '/' && path.starts_with(piece);
}

int status(const Descriptor& opened, EntryFacts& facts) {
    struct stat status {};
    if (!opened.isOpen() || ::fstat(opened.get(), &status) != 0) {
        return errno;
    }
    facts = factsOf(status);
    return 0;
}

} // namespace

void LongPathOpener::startFrom(std::shared_ptr<const Descriptor> folder) {
    pieces_.clear();
    start_ = std::move(folder);
}

Descriptor LongPathOpener::open(std::string_view native, int flags) {
    while (!pieces_.empty() && !startsWithPiece(native, pieces_.back().path)) {
        pieces_.pop_back();
    }
    std::size_t done = pieces_.empty() ? 0 : pieces_.back().path.size() + 1;
    while (native.size() - done > pathPieceLength) {
        const std::size_t end = native.rfind('/', done + pathPieceLength);
        if (end == std::string_view::npos || end <= done) {
            break;
        }
        const std::string piece(native.substr(done, end - done));
        Descriptor opened = open_(start(), piece.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        if (!opened.isOpen()) {
            return opened;
        }
        pieces_.push_back({std::string(native.substr(0, end)), std::move(opened)});
        done = end + 1;
    }
    rest_.assign(native.substr(done));
    return openFolder(open_, start(), rest_.c_str(), flags);
}

int LongPathOpener::start() const {
    const int whole = start_ && start_->isOpen() ? start_->get() : AT_FDCWD;
    return pieces_.empty() ? whole : pieces_.back().folder.get();
}

FolderCalls::FolderCalls()
    : opener_(openAnything), beneathStart_(hasOpenBeneath() ? openBeneath : openNameByName) {}

// Possibly through a link.
int FolderCalls::startAt(const std::string& native) {
    start_ = native.ends_with('/') ? native : native + '/';
    noteMountPoints(native);
    auto folder = std::make_shared<const Descriptor>(opener_.open(native, O_PATH));
    const int error = folder->isOpen() ? 0 : errno;
    beneathStart_.startFrom(std::move(folder));
    return error;
}

// The start is open only once, so that all read below the same folder, whatever its path leads to by now.
void FolderCalls::startWith(const FolderCalls& other) {
    start_ = other.start_;
    mountPoints_ = other.mountPoints_;
    beneathStart_.startFrom(other.beneathStart_.startFolder());
}

Descriptor FolderCalls::open(const std::string& native, int flags) {
    if (start_.empty() ||
        !std::string_view(native).starts_with(std::string_view(start_).substr(0, start_.size() - 1))) {
        return opener_.open(native, flags | O_NOFOLLOW);
    }
    const bool isStart = native.size() <= start_.size();
    return isStart ? opener_.open(native, flags)
                   : beneathStart_.open(std::string_view(native).substr(start_.size()), flags);
}

void FolderCalls::noteMountPoints(const std::string& native) {
    mountPoints_.clear();
    const auto real = resolvedPath(native);
    if (!real) {
        return;
    }
    const std::string realStart = *real == "/" ? *real : *real + '/';
    const MountTable table = MountTable::read();
    for (const Mount& mount : table.mounts()) {
        if (mount.mountPoint.size() > realStart.size() && mount.mountPoint.starts_with(realStart)) {
            const std::string path = start_ + mount.mountPoint.substr(realStart.size());
            const std::size_t nameStart = path.rfind('/') + 1;
            const std::size_t folderEnd = nameStart == start_.size() ? native.size() : nameStart - 1;
            mountPoints_[path.substr(0, folderEnd)].insert(path.substr(nameStart));
        }
    }
}

// To be asked for each entry, as a disk may take long for each.
bool FolderCalls::mayGoOn() {
    using Clock = std::chrono::steady_clock;
    constexpr unsigned entriesPerLook = 8;
    constexpr std::chrono::milliseconds untilNextLook{50};
    if (!goesOn_ || ++entriesSinceLook_ < entriesPerLook) {
        return true;
    }
    entriesSinceLook_ = 0;
    if (Clock::now() - lastLook_ < untilNextLook) {
        return true;
    }
    const bool may = goesOn_();
    lastLook_ = Clock::now();
    return may;
}

// Calls `take(records)` for each full buffer, and goesOn_ before the next.
template <class TakeRecords>
int FolderCalls::forEachBuffer(const Descriptor& folder, TakeRecords take) {
    constexpr long nearlyFull = bufferSize / 2;
    if (!folder.isOpen()) {
        return errno;
    }
    for (long count = 0;;) {
        if (count > nearlyFull && goesOn_ && !goesOn_()) {
            return EINTR;
        }
        count = ::syscall(SYS_getdents64, folder.get(), buffer_.data(), bufferSize);
        if (count <= 0) {
            return count == 0 ? 0 : errno;
        }
        const int error = take(std::string_view(buffer_.data(), static_cast<std::size_t>(count)));
        if (error != 0) {
            return error;
        }
    }
}

// Calls `take(name, the kernel's type)` for each entry.
template <class Take>
int FolderCalls::forEachEntry(const Descriptor& folder, Take take) {
    return forEachBuffer(folder, [&](std::string_view records) {
        forEachRecord(records, take);
        return 0;
    });
}

NameKind FolderCalls::kindOf(const std::string& folder, const char* name, unsigned char type) const {
    if (type != DT_DIR && type != DT_UNKNOWN) {
        return NameKind::other;
    }
    const auto found = mountPoints_.empty() ? mountPoints_.end() : mountPoints_.find(folder);
    if (found != mountPoints_.end() && found->second.contains(std::string_view(name))) {
        return NameKind::mountPoint;
    }
    return type == DT_DIR ? NameKind::folder : NameKind::other;
}

int FolderCalls::read(const std::string& native, const TakeEntry& take) {
    constexpr std::size_t worthDistributing = bufferSize / 4; // some 500 entries
    if (!folder_ || folder_.use_count() > 1) {
        folder_ = std::make_shared<Descriptor>();
    }
    *folder_ = open(native);
    const int error = forEachBuffer(*folder_, [&](std::string_view records) {
        if (distribute_ && records.size() > worthDistributing) {
            return distribute(folder_, native, records, take);
        }
        bool may = true;
        forEachRecord(records, [&](const char* name, unsigned char type) {
            EntryFacts facts;
            may = may && mayGoOn();
            if (may && askForFacts(*folder_, name, kindOf(native, name, type), facts)) {
                take(facts, name);
            }
        });
        return may ? 0 : EINTR;
    });
    if (folder_.use_count() == 1) {
        folder_->reset();
    }
    return error;
}

// Threads that are left behind keep what they work on.
int FolderCalls::distribute(const std::shared_ptr<const Descriptor>& folder, const std::string& native,
                            std::string_view records, const TakeEntry& take) {
    constexpr std::size_t entriesPerPart = 32;
    struct Entry {
        const char* name;
        NameKind kind;
        bool isThere;
        EntryFacts facts;
    };
    struct Batch {
        std::shared_ptr<const Descriptor> folder;
        std::string records;
        std::vector<Entry> entries;
    };
    const auto batch = std::make_shared<Batch>(Batch{folder, std::string(records), {}});
    forEachRecord(batch->records, [&](const char* name, unsigned char type) {
        batch->entries.push_back({name, kindOf(native, name, type), false, {}});
    });
    const std::size_t parts = (batch->entries.size() + entriesPerPart - 1) / entriesPerPart;
    const bool isDone = distribute_(parts, [batch](std::size_t part) {
        const std::size_t end = std::min(batch->entries.size(), (part + 1) * entriesPerPart);
        for (std::size_t i = part * entriesPerPart; i < end; ++i) {
            Entry& entry = batch->entries[i];
            entry.isThere = askForFacts(*batch->folder, entry.name, entry.kind, entry.facts);
        }
    });
    if (!isDone) {
        return EINTR;
    }
    for (const Entry& entry : batch->entries) {
        if (entry.isThere) {
            take(entry.facts, entry.name);
        }
    }
    return 0;
}

int FolderCalls::list(const std::string& native, const TakeName& take) {
    const Descriptor folder = open(native);
    return forEachEntry(
        folder, [&](const char* name, unsigned char type) { take(kindOf(native, name, type), name); });
}

int FolderCalls::facts(const std::string& native, std::span<const std::string_view> names,
                       const TakeEntry& take) {
    const Descriptor folder = open(native, O_PATH);
    if (!folder.isOpen()) {
        return errno;
    }
    std::string text;
    for (const std::string_view name : names) {
        text = name;
        EntryFacts facts;
        if (!askForFacts(folder, text.c_str(), NameKind::other, facts)) {
            facts.error = ENOENT;
        }
        take(facts, text.c_str());
    }
    return 0;
}

int FolderCalls::readNames(const std::string& native, const TakeEntry& take) {
    const Descriptor folder = opener_.open(native, 0);
    return forEachEntry(folder, [&](const char* name, unsigned char type) {
        EntryFacts facts;
        struct stat status {};
        facts.isFolder = type == DT_DIR;
        if (type == DT_UNKNOWN && ::fstatat(folder.get(), name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
            facts.isFolder = S_ISDIR(status.st_mode);
        }
        take(facts, name);
    });
}

EntryFacts factsOf(const struct stat& status) {
    EntryFacts facts;
    facts.isFolder = S_ISDIR(status.st_mode);
    facts.known = true;
    facts.size = status.st_size;
    facts.accessed = status.st_atim.tv_sec;
    facts.modified = status.st_mtim.tv_sec;
    facts.owner = status.st_uid;
    facts.sizeOnDisk = std::clamp<std::int64_t>(status.st_blocks, 0, mostBlocks) * statusBlock;
    if (status.st_nlink > 1 && !facts.isFolder) {
        facts.volume = status.st_dev;
        facts.number = status.st_ino;
    }
    return facts;
}

int folderStatus(const std::string& native, EntryFacts& facts) {
    return status(LongPathOpener(openAnything).open(native, O_PATH), facts);
}

int entryStatus(const std::string& native, EntryFacts& facts) {
    struct stat status {};
    if (::lstat(native.c_str(), &status) != 0) {
        return errno;
    }
    facts = factsOf(status);
    return 0;
}

int tryToOpen(const std::string& native) {
    return LongPathOpener(openAnything).open(native, 0).isOpen() ? 0 : errno;
}

int tryToRead(const std::string& native) {
    const Descriptor folder = LongPathOpener(openAnything).open(native, 0);
    constexpr std::size_t anyEntry = sizeof(KernelEntry) + NAME_MAX + 1;
    alignas(KernelEntry) std::array<char, anyEntry> buffer;
    const bool isRead =
        folder.isOpen() && ::syscall(SYS_getdents64, folder.get(), buffer.data(), buffer.size()) >= 0;
    return isRead ? 0 : errno;
}

} // namespace platform
