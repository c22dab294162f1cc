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
    const std::string native = nativeOf(path);
    if (const auto whole = realPath(native)) {
        return toInternal(*whole);
    }
    const std::size_t nameStart = native.rfind('/') + 1;
    if (auto folder = realPath(native.substr(0, nameStart))) {
        return toInternal(folder->append("/").append(native, nameStart));
    }
    return toInternal(native);
}

bool isSameFile(std::string_view left, std::string_view right) noexcept {
    const std::optional<struct stat> one = statusOf(left);
    const std::optional<struct stat> other = statusOf(right);
    return one && other && one->st_dev == other->st_dev && one->st_ino == other->st_ino;
}

void deleteFile(std::string_view path) {
    const std::string native = nativeOf(path);
    struct stat status {};
    if (::lstat(native.c_str(), &status) != 0) {
        throw systemError(errno, path);
    }
    if (!S_ISREG(status.st_mode)) {
        throw systemError(S_ISDIR(status.st_mode) ? EISDIR : EINVAL, path);
    }
    requireWritable(path, native);
    if (::unlink(native.c_str()) != 0) {
        throw systemError(errno, path);
    }
}

void moveFile(std::string_view from, std::string_view to) {
    if (::rename(nativeOf(from).c_str(), nativeOf(to).c_str()) != 0) {
        throw systemError(errno, to);
    }
}

void appendToFile(std::string_view path, std::string_view text) {
    const Descriptor file = openOrThrow(path, nativeOf(path), O_WRONLY | O_APPEND | O_NONBLOCK | O_NOCTTY);
    writeAll(file.get(), text, path);
}

void makeFolders(std::string_view path) {
    const std::string native = nativeOf(path);
    for (std::size_t end = native.find('/', 1);; end = native.find('/', end + 1)) {
        const std::string folder = native.substr(0, end);
        if (::mkdir(folder.c_str(), 0777) != 0) {
            const int cause = errno;
            struct stat status {};
            if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
                throw systemError(cause, path);
            }
        }
        if (end == std::string::npos) {
            return;
        }
    }
}

std::unique_ptr<FileLock> FileLock::tryAcquire(std::string_view path) {
    Descriptor file = openOrThrow(path, nativeOf(path), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK);
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) {
            return nullptr;
        }
        throw systemError(errno, path);
    }
    return std::unique_ptr<FileLock>(new FileLock(file.release()));
}

FileLock::~FileLock() {
    ::close(static_cast<int>(handle_));
}

} // namespace platform
