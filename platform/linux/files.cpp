#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <optional>

#include "platform/linux/opening.h"
#include "platform/linux/realPath.h"
#include "platform/paths.h"
#include "platform/systemError.h"

namespace platform {

namespace {

// The status of the file, with links followed; nothing if it cannot be found out.
std::optional<struct stat> statusOf(std::string_view path) noexcept {
    try {
        struct stat status {};
        if (::stat(nativeOf(path).c_str(), &status) == 0) {
            return status;
        }
    } catch (...) { // not a valid path
    }
    return std::nullopt;
}

} // namespace

bool fileExists(std::string_view path) noexcept {
    const std::optional<struct stat> status = statusOf(path);
    return status && S_ISREG(status->st_mode);
}

std::uint64_t fileSize(std::string_view path) noexcept {
    const std::optional<struct stat> status = statusOf(path);
    return status ? static_cast<std::uint64_t>(status->st_size) : 0;
}

bool somethingExists(std::string_view path) noexcept {
    try {
        struct stat status {};
        return ::lstat(nativeOf(path).c_str(), &status) == 0;
    } catch (...) {
        return false;
    }
}

bool fileIsWritable(std::string_view path) noexcept {
    try {
        return ::faccessat(AT_FDCWD, nativeOf(path).c_str(), W_OK, AT_EACCESS) == 0;
    } catch (...) {
        return false;
    }
}

std::string resolveLinks(std::string_view path) {
    const auto whole = realPath(nativeOf(path));
    return whole ? toInternal(*whole) : resolveFolderLinks(path);
}

std::string resolveFolderLinks(std::string_view path) {
    const std::string native = nativeOf(path);
    const std::size_t nameStart = native.rfind('/') + 1;
    if (auto folder = realPath(native.substr(0, nameStart))) {
        return toInternal(folder->append("/").append(native, nameStart));
    }
    return toInternal(native);
}

bool isLink(std::string_view path) noexcept {
    try {
        struct stat status {};
        return ::lstat(nativeOf(path).c_str(), &status) == 0 && S_ISLNK(status.st_mode);
    } catch (...) { // not a valid path
        return false;
    }
}

bool isSameFile(std::string_view left, std::string_view right) noexcept {
    const std::optional<struct stat> one = statusOf(left);
    const std::optional<struct stat> other = statusOf(right);
    return one && other && one->st_dev == other->st_dev && one->st_ino == other->st_ino;
}

void deleteFile(std::string_view path) {
    const std::string native = nativeOf(path, NotDone::deleted);
    struct stat status {};
    if (::lstat(native.c_str(), &status) != 0) {
        throw systemError(errno, path, NotDone::deleted);
    }
    if (!S_ISREG(status.st_mode)) {
        throw noRegularFile(path, S_ISDIR(status.st_mode), NotDone::deleted);
    }
    requireWritable(path, native, NotDone::deleted);
    if (::unlink(native.c_str()) != 0) {
        throw systemError(errno, path, NotDone::deleted);
    }
}

void moveFile(std::string_view from, std::string_view to) {
    if (::rename(nativeOf(from).c_str(), nativeOf(to).c_str()) != 0) {
        throw systemError(errno, to, NotDone::written);
    }
}

void appendToFile(std::string_view path, std::string_view text) {
    const Descriptor file = openOwn(path, O_WRONLY | O_APPEND | O_NONBLOCK | O_NOCTTY);
    writeAll(file.get(), text, path);
}

void makeFolders(std::string_view path) {
    const std::string native = nativeOf(path, NotDone::created);
    for (std::size_t end = native.find('/', 1);; end = native.find('/', end + 1)) {
        const std::string folder = native.substr(0, end);
        if (::mkdir(folder.c_str(), 0700) != 0) {
            const int cause = errno;
            struct stat status {};
            if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
                throw systemError(cause, path, NotDone::created);
            }
        }
        if (end == std::string::npos) {
            return;
        }
    }
}

std::unique_ptr<FileLock> FileLock::tryAcquire(std::string_view path) {
    for (;;) {
        Descriptor file = openOwn(path, O_RDWR | O_CREAT | O_NONBLOCK | O_NOCTTY);
        struct stat opened {};
        if (::fstat(file.get(), &opened) != 0 || !S_ISREG(opened.st_mode)) {
            throw noRegularFile(path, false, NotDone::opened);
        }
        if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
            if (errno == EWOULDBLOCK) {
                return nullptr;
            }
            throw systemError(errno, path, NotDone::opened);
        }
        // Its last holder may have deleted it before the lock was free.
        const std::optional<struct stat> named = statusOf(path);
        if (named && named->st_dev == opened.st_dev && named->st_ino == opened.st_ino) {
            return std::unique_ptr<FileLock>(new FileLock(file.release(), path));
        }
    }
}

FileLock::~FileLock() {
    if (remove_) { // before it is unlocked
        try {
            deleteFile(path_);
        } catch (...) { // it is gone, or cannot be deleted
        }
    }
    ::close(static_cast<int>(handle_));
}

} // namespace platform
