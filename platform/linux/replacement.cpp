#include "platform/linux/replacement.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <optional>
#include <utility>

#include "platform/files.h"
#include "platform/linux/opening.h"
#include "platform/linux/strangers.h"
#include "platform/systemError.h"

namespace platform {

namespace {

constexpr mode_t newFileMode = 0666; // minus the umask
constexpr mode_t ownerOnly = 0600;   // until it gets the permissions of the file that it replaces

// Gives the new file the owner and permissions of the one that it replaces. If the owner, the group or the
// access list cannot be kept, nobody gets more rights than before.
void keepPermissions(int file, const std::string& target, const struct stat& existing) noexcept {
    constexpr mode_t groupBits = 070;
    constexpr const char* accessList = "system.posix_acl_access";
    mode_t mode = existing.st_mode & 07777;
    bool groupIsKept = true;
    if (::fchown(file, existing.st_uid, existing.st_gid) != 0) {
        mode &= ~static_cast<mode_t>(S_ISUID);
        groupIsKept = ::fchown(file, static_cast<uid_t>(-1), existing.st_gid) == 0;
    }
    ::fremovexattr(file, accessList); // those of the folder, which a new file gets
    std::array<char, 4096> list{};
    const ssize_t length = ::lgetxattr(target.c_str(), accessList, list.data(), list.size());
    const bool hasList = length > 0 || (length < 0 && errno == ERANGE);
    if (!groupIsKept || hasList) { // with an access list, the group's bits have another meaning
        const mode_t modeOfOthers = (mode & ~groupBits) | (mode << 3 & groupBits & mode);
        ::fchmod(file, modeOfOthers & ~static_cast<mode_t>(S_ISGID));
    } else {
        ::fchmod(file, mode);
    }
    if (groupIsKept && length > 0) {
        ::fsetxattr(file, accessList, list.data(), static_cast<std::size_t>(length), 0);
    }
}

// If the volume supports it, the new file has no name until it is complete, so that nothing is ever left
// behind. Otherwise it has its own name. Both are locked while they are being written: a file with such a
// name and without a lock was left by a program that was killed.
class ReplacementFile final : public OutputFile {
public:
    // The target's folder, its name there, and the existing file, if any.
    ReplacementFile(std::string_view path, const std::string& folder, std::string name,
                    const std::optional<struct stat>& existing, NewFile newFile, Making making)
        : path_(path), name_(std::move(name)), replaces_(existing.has_value()),
          folder_(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {
        if (!folder_.isOpen()) {
            throw systemError(errno == ENOENT ? ENOTDIR : errno, path, NotDone::written);
        }
        removeLeftovers(existing ? existing->st_uid : ::geteuid());
        const mode_t mode = replaces_ || newFile == NewFile::own ? ownerOnly : newFileMode;
        if (making == Making::named || !openUnnamed(mode)) {
            openNamed(mode);
        }
        // What is for the user alone does not take up the permissions that another user has chosen.
        if (existing && (newFile != NewFile::own || existing->st_uid == ::geteuid() || ::geteuid() == 0)) {
            keepPermissions(file_.get(), folder + name_, *existing);
        }
    }
    ~ReplacementFile() override {
        if (!temporary_.empty()) {
            ::unlinkat(folder_.get(), temporary_.c_str(), 0);
        }
    }
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    void write(std::string_view text) override { writeAll(file_.get(), text, path_); }

    // Flushed to the disk before the rename: otherwise a power failure might leave neither content.
    void finish() override {
        if (::fsync(file_.get()) != 0 && errno != EINVAL && errno != ENOTSUP) {
            throw systemError(errno, path_, NotDone::written);
        }
        if (temporary_.empty() && !replaces_ && giveName(name_)) {
            return;
        }
        for (int number = 1; temporary_.empty() && number <= mostReplacements; ++number) {
            if (std::string name = replacementName(name_, number); giveName(name)) {
                temporary_ = std::move(name); // copying it could fail
            }
        }
        if (temporary_.empty()) {
            throw systemError(EBUSY, path_, NotDone::written);
        }
        if (::renameat(folder_.get(), temporary_.c_str(), folder_.get(), name_.c_str()) != 0) {
            throw systemError(errno, path_, NotDone::written);
        }
        temporary_.clear();
    }

private:
    [[nodiscard]] static std::string nameInProc(const Descriptor& file) {
        return "/proc/self/fd/" + std::to_string(file.get());
    }

    // Removes what a killed program has left: regular files with one of these names, owned by this user or
    // the target's owner, that nobody has locked.
    void removeLeftovers(uid_t owner) const {
        for (int number = 1; number <= mostReplacements; ++number) {
            const std::string name = replacementName(name_, number);
            const Descriptor left(::openat(folder_.get(), name.c_str(),
                                           O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
            struct stat status {};
            struct stat named {};
            if (left.isOpen() && ::fstat(left.get(), &status) == 0 && S_ISREG(status.st_mode) &&
                (status.st_uid == ::geteuid() || status.st_uid == owner) &&
                ::flock(left.get(), LOCK_EX | LOCK_NB) == 0 &&
                ::fstatat(folder_.get(), name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
                named.st_dev == status.st_dev && named.st_ino == status.st_ino) {
                ::unlinkat(folder_.get(), name.c_str(), 0);
            }
        }
    }

    // False if files without a name are not supported, or if there is no /proc, which is needed to name them.
    bool openUnnamed(mode_t mode) {
        Descriptor file(::openat(folder_.get(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
        struct stat status {};
        if (!file.isOpen() || ::stat(nameInProc(file).c_str(), &status) != 0) {
            return false;
        }
        ::flock(file.get(), LOCK_EX | LOCK_NB);
        file_ = std::move(file);
        return true;
    }

    void openNamed(mode_t mode) {
        for (int number = 1; number <= mostReplacements; ++number) {
            std::string name = replacementName(name_, number);
            Descriptor file(::openat(folder_.get(), name.c_str(),
                                     O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
            if (!file.isOpen() && errno != EEXIST) {
                const bool refused = errno == EACCES || errno == EPERM;
                throw refused ? noRoomBeside(path_) : systemError(errno, path_, NotDone::written);
            }
            if (file.isOpen() && isOwn(file)) {
                file_ = std::move(file);
                temporary_ = std::move(name);
                return;
            }
        }
        throw systemError(EBUSY, path_, NotDone::written);
    }

    // False if another program, looking for leftovers, was quicker to lock the new file; that program removes
    // it.
    [[nodiscard]] static bool isOwn(const Descriptor& file) {
        struct stat status {};
        return (::flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) &&
               ::fstat(file.get(), &status) == 0 && status.st_nlink > 0;
    }

    // False if the name is taken.
    [[nodiscard]] bool giveName(const std::string& name) const {
        if (::linkat(AT_FDCWD, nameInProc(file_).c_str(), folder_.get(), name.c_str(), AT_SYMLINK_FOLLOW) ==
            0) {
            return true;
        }
        if (errno != EEXIST) {
            throw systemError(errno, path_, NotDone::written);
        }
        return false;
    }

    std::string path_;
    std::string name_;
    bool replaces_;
    Descriptor folder_;
    Descriptor file_;
    std::string temporary_; // the file's name beside its target; empty for none
};

// In a folder that everybody can write to, what another user has put in the target's place may be a trap. A
// file is replaced there only where they could replace the new one as well.
void requireOwnTarget(std::string_view path, const std::string& native, const struct stat& existing) {
    if (S_ISLNK(existing.st_mode)) {
        throw systemError(ELOOP, path, NotDone::written);
    }
    struct stat folder {};
    if (::stat(native.substr(0, native.rfind('/') + 1).c_str(), &folder) != 0 ||
        (folder.st_mode & S_IWOTH) == 0 || !isStrangers(existing, native)) {
        return;
    }
    const bool isSticky = (folder.st_mode & S_ISVTX) != 0;
    if (S_ISFIFO(existing.st_mode) || (isSticky && S_ISREG(existing.st_mode))) {
        throw strangersFile(path, NotDone::written);
    }
}

} // namespace

bool isStream(std::string_view path) noexcept {
    try {
        return path == standardOutput || follow(nativeOf(path), NotDone::opened).isOpenFile;
    } catch (...) { // not a valid path
        return false;
    }
}

std::unique_ptr<OutputFile> openReplacement(std::string_view path, NewFile newFile) {
    return openReplacement(path, newFile, Making::unnamed);
}

std::unique_ptr<OutputFile> openReplacement(std::string_view path, NewFile newFile, Making making) {
    if (path == standardOutput) {
        return openStandardOutput();
    }
    const Followed target = follow(nativeOf(path, NotDone::written), NotDone::written);
    if (target.isOpenFile) { // whoever opened it may already have written to it
        return openInPlace(path, target.native, O_APPEND);
    }
    std::optional<struct stat> existing{std::in_place};
    if (::lstat(target.native.c_str(), &*existing) != 0) {
        if (errno != ENOENT) {
            throw systemError(errno, path, NotDone::written);
        }
        existing.reset();
    }
    if (existing) {
        requireOwnTarget(path, target.native, *existing);
    }
    if (existing && !S_ISREG(existing->st_mode)) {
        return openInPlace(path, target.native, O_NOFOLLOW);
    }
    requireWritable(path, target.native, NotDone::written);
    const std::size_t nameStart = target.native.rfind('/') + 1;
    return std::make_unique<ReplacementFile>(path, target.native.substr(0, nameStart),
                                             target.native.substr(nameStart), existing, newFile, making);
}

} // namespace platform
