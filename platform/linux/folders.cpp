#include "platform/folders.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>

#include "platform/linux/descriptor.h"
#include "platform/linux/mountTable.h"
#include "platform/linux/realPath.h"
#include "platform/paths.h"
#include "platform/systemError.h"

namespace platform {

namespace {

constexpr std::size_t readBufferSize = std::size_t{64} << 10;

// Kept well below PATH_MAX, so that the last names of a path always fit after it.
constexpr std::size_t pathPieceLength = 3000;

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

EntryFacts factsOf(const struct stat& status) {
    return {S_ISDIR(status.st_mode), true,         status.st_size, status.st_atim.tv_sec,
            status.st_mtim.tv_sec,   status.st_uid};
}

// Opens what a path leads to, from an open folder.
using Open = Descriptor (*)(int start, const char* path, int flags);

Descriptor openAnything(int start, const char* path, int flags) {
    return Descriptor(::openat(start, path, flags));
}

// A folder on the volume of the one it starts from, without following any link on the way there, so that
// neither a folder that has become a link nor a volume mounted meanwhile leads elsewhere. ELOOP and EXDEV say
// that there is one.
Descriptor openBeneath(int start, const char* path, int flags) {
    open_how how{};
    how.flags = static_cast<unsigned>(flags);
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
Descriptor openFolder(Open open, int start, const char* path, int flags) {
    flags |= O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
    Descriptor folder = open(start, path, flags | O_NOATIME);
    if (!folder.isOpen() && errno == EPERM) {
        folder = open(start, path, flags);
    }
    return folder;
}

// Opens folders by paths of any length. A path that is too long for the system is opened in pieces; the
// descriptors of the pieces are kept for the next path that begins the same way.
class LongPathOpener {
public:
    explicit LongPathOpener(Open how = openAnything) : open_(how) {}

    // From here on, paths start from this folder.
    void startFrom(Descriptor folder) {
        pieces_.clear();
        start_ = std::move(folder);
    }

    Descriptor open(std::string_view native, int flags) {
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

private:
    struct Piece {
        std::string path;
        Descriptor folder;
    };

    static bool startsWithPiece(std::string_view path, std::string_view piece) {
        return path.size() > piece.size() && path[piece.size()] == '/' && path.starts_with(piece);
    }

    [[nodiscard]] int start() const {
        const int whole = start_.isOpen() ? start_.get() : AT_FDCWD;
        return pieces_.empty() ? whole : pieces_.back().folder.get();
    }

    Open open_;
    Descriptor start_;
    std::vector<Piece> pieces_;
    std::string rest_;
};

// Calls `take(name, the kernel's type)` for each entry of an open folder, and `goesOn` behind each full
// buffer.
template <class Take>
bool forEachEntry(int folder, char* buffer, const std::function<bool()>& goesOn, Take take) {
    constexpr long nearlyFull = readBufferSize / 2;
    long count = 0;
    for (;;) {
        if (count > nearlyFull && goesOn && !goesOn()) {
            errno = EINTR;
            return false;
        }
        count = ::syscall(SYS_getdents64, folder, buffer, readBufferSize);
        if (count <= 0) {
            return count == 0;
        }
        for (long position = 0; position < count;) {
            const char* record = buffer + position;
            unsigned short length = 0;
            std::memcpy(&length, record + offsetof(KernelEntry, length), sizeof length);
            const char* name = record + offsetof(KernelEntry, name);
            if (!isSelfOrParent(name)) {
                take(name, static_cast<unsigned char>(record[offsetof(KernelEntry, type)]));
            }
            position += length;
        }
    }
}

} // namespace

struct FolderReader::Implementation {
    LongPathOpener opener; // for folders outside of the start
    std::string start;     // native, with "/" at its end; empty if there is none
    LongPathOpener beneathStart{hasOpenBeneath() ? openBeneath : openNameByName};
    std::string native;
    std::string share; // the last share, and where it is mounted
    std::string shareNative;
    int error = 0; // of the last folder
    std::function<bool()> goesOn;
    alignas(KernelEntry) std::array<char, readBufferSize> buffer;

    // Where a walk starts, possibly through a link.
    Descriptor openStart(std::string_view internalFolder) {
        findNative(internalFolder);
        start = native.ends_with('/') ? native : native + '/';
        beneathStart.startFrom(opener.open(native, O_PATH));
        return opener.open(native, 0);
    }

    Descriptor open(std::string_view internalFolder) {
        findNative(internalFolder);
        const bool isBelow = !start.empty() && native.size() > start.size() && native.starts_with(start);
        return isBelow ? beneathStart.open(std::string_view(native).substr(start.size()), 0)
                       : opener.open(native, O_NOFOLLOW);
    }

    // A share's mount point is looked up only when the share changes, not for every folder.
    void findNative(std::string_view internalFolder) {
        if (share.empty() || !internalFolder.starts_with(share)) {
            native = toNative(internalFolder);
            const std::size_t server = internalFolder.starts_with("\\\\") ? internalFolder.find('\\', 2) : 0;
            share = internalFolder.substr(0, server == 0 ? 0 : internalFolder.find('\\', server + 1) + 1);
            shareNative = share.empty() ? std::string() : toNative(share);
            return;
        }
        native = shareNative;
        const std::string_view names = internalFolder.substr(share.size());
        if (!names.empty()) {
            native += '/';
            appendNativeName(native, names.ends_with('\\') ? names.substr(0, names.size() - 1) : names);
        }
    }

    // Calls `take(the open folder, an entry's name, its kernel's type)` for each entry.
    template <class Take>
    bool read(const Descriptor& folder, Take take) {
        const bool isRead = folder.isOpen() && forEachEntry(folder.get(), buffer.data(), goesOn,
                                                            [&](const char* name, auto type) {
                                                                take(folder.get(), name, type);
                                                            });
        error = isRead ? 0 : errno;
        return isRead;
    }
};

FolderReader::FolderReader() : implementation_(std::make_unique<Implementation>()) {}
FolderReader::~FolderReader() = default;

bool FolderReader::read(std::string_view internalFolder, FolderListing& listing, bool isStart) {
    listing.clear();
    const Descriptor opened =
        isStart ? implementation_->openStart(internalFolder) : implementation_->open(internalFolder);
    return implementation_->read(opened, [&](int folder, const char* name, unsigned char type) {
        EntryFacts facts;
        struct stat status {};
        if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
            facts = factsOf(status);
        } else if (errno == ENOENT) {
            return; // it vanished after the folder was read
        } else {
            facts.isFolder = type == DT_DIR;
            facts.error = errno;
        }
        listing.append(facts, name);
    });
}

bool FolderReader::readNames(std::string_view internalFolder, FolderListing& listing) {
    listing.clear();
    implementation_->findNative(internalFolder);
    const Descriptor opened = implementation_->opener.open(implementation_->native, 0);
    return implementation_->read(opened, [&](int folder, const char* name, unsigned char type) {
        EntryFacts facts;
        struct stat status {};
        facts.isFolder = type == DT_DIR;
        if (type == DT_UNKNOWN && ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
            facts.isFolder = S_ISDIR(status.st_mode);
        }
        listing.append(facts, name);
    });
}

void FolderReader::setGoesOn(std::function<bool()> goesOn) {
    implementation_->goesOn = std::move(goesOn);
}

std::string FolderReader::failure() const {
    switch (implementation_->error) {
    case ELOOP:
        return "The folder, or one above it, has become a link";
    case EXDEV:
        return "Another volume has been mounted";
    default:
        return systemMessage(implementation_->error);
    }
}

bool folderExists(std::string_view internalPath) {
    return folderFacts(internalPath).has_value();
}

std::string recordedPath(std::string_view internalFolder) {
    const auto resolved = realPath(toNative(internalFolder));
    std::string path = resolved ? toInternal(*resolved) : std::string(internalFolder);
    return path.ends_with('\\') ? path : path + '\\';
}

EntryFacts entryFacts(std::string_view internalPath) {
    struct stat status {};
    const bool known = ::lstat(toNative(internalPath).c_str(), &status) == 0;
    return known ? factsOf(status) : EntryFacts();
}

std::optional<EntryFacts> folderFacts(std::string_view internalFolder) {
    // Opened, not queried by name, so that the path may have any length.
    const Descriptor folder = LongPathOpener().open(toNative(internalFolder), O_PATH);
    struct stat status {};
    if (!folder.isOpen() || ::fstat(folder.get(), &status) != 0) {
        return std::nullopt;
    }
    return factsOf(status);
}

std::string whyHidden(std::string_view internalPath) {
    const Descriptor folder = LongPathOpener().open(toNative(internalPath), O_PATH);
    const int cause = folder.isOpen() ? 0 : errno;
    const bool isKnown = cause == 0 || cause == ENOENT || cause == ENOTDIR || cause == ENAMETOOLONG;
    return isKnown ? std::string() : systemMessage(cause);
}

std::string whyUnreadable(std::string_view internalFolder) {
    const Descriptor folder = LongPathOpener().open(toNative(internalFolder), 0);
    return folder.isOpen() ? std::string() : systemMessage(errno);
}

PathSet mountPointsBelow(std::string_view internalFolder) {
    PathSet result;
    const auto resolved = realPath(toNative(internalFolder));
    if (!resolved) {
        return result;
    }
    std::string start = *resolved;
    if (start != "/") {
        start += '/';
    }
    const MountTable table = MountTable::read();
    for (const Mount& mount : table.mounts()) {
        if (!mount.mountPoint.starts_with(start)) {
            continue;
        }
        std::string path(internalFolder);
        if (!path.ends_with('\\')) {
            path += '\\';
        }
        for (std::string_view rest = std::string_view(mount.mountPoint).substr(start.size());
             !rest.empty();) {
            const std::size_t end = std::min(rest.find('/'), rest.size());
            appendInternalName(path, rest.substr(0, end));
            rest.remove_prefix(end);
            if (!rest.empty()) {
                path += '\\';
                rest.remove_prefix(1);
            }
        }
        result.insert(std::move(path));
    }
    return result;
}

} // namespace platform
