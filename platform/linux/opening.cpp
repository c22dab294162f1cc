#include "platform/linux/opening.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/files.h"
#include "platform/linux/strangers.h"
#include "platform/paths.h"
#include "platform/systemError.h"

namespace platform {

namespace {

constexpr mode_t newFileMode = 0666; // minus the umask
constexpr mode_t ownerOnly = 0600;

bool folderIsThere(const std::string& nativeFile) {
    struct stat status {};
    return ::stat(nativeFile.substr(0, nativeFile.rfind('/') + 1).c_str(), &status) == 0;
}

NotDone notDoneOf(int flags) {
    return (flags & O_ACCMODE) == O_RDONLY ? NotDone::read : NotDone::written;
}

RuntimeError openingError(int cause, const std::string& native, std::string_view path, NotDone notDone) {
    if (cause == EISDIR) {
        return noRegularFile(path, true, notDone);
    }
    return systemError(cause == ENOENT && !folderIsThere(native) ? ENOTDIR : cause, path, notDone);
}

// Devices belong to whom the system gave them.
void requireOwn(const Descriptor& file, std::string_view path, const std::string& native, NotDone notDone) {
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) {
        throw systemError(errno, path, notDone);
    }
    if ((S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode)) && isStrangers(status, native)) {
        throw strangersFile(path, notDone);
    }
}

} // namespace

std::string nativeOf(std::string_view path, NotDone notDone) {
    std::string native = toNative(toInternal(path));
    if (native.empty()) {
        throw systemError(ENOENT, path, notDone);
    }
    return native;
}

Descriptor openOrThrow(std::string_view path, const std::string& native, int flags) {
    Descriptor file(::open(native.c_str(), flags | O_CLOEXEC, newFileMode));
    if (!file.isOpen()) {
        throw openingError(errno, native, path, notDoneOf(flags));
    }
    return file;
}

// Created and opened by separate calls, so that no file appears where a link leads; and emptied when it is
// known whose it is.
Descriptor openOwn(std::string_view path, int flags) {
    const NotDone notDone = notDoneOf(flags);
    const std::string native = nativeOf(path, notDone);
    if ((flags & O_CREAT) != 0) {
        Descriptor created(::open(native.c_str(), flags | O_EXCL | O_CLOEXEC, ownerOnly));
        if (created.isOpen()) {
            return created;
        }
        if (errno != EEXIST) {
            throw openingError(errno, native, path, notDone);
        }
    }
    if (const Followed target = follow(native, notDone); target.isOpenFile) {
        return openOrThrow(path, target.native, flags & ~O_CREAT);
    }
    if (isLink(path)) {
        throw linkInsteadOfFile(path, notDone);
    }
    Descriptor file = openOrThrow(path, native, (flags & ~(O_CREAT | O_TRUNC)) | O_NOFOLLOW);
    requireOwn(file, path, native, notDone);
    if ((flags & O_TRUNC) != 0 && ::ftruncate(file.get(), 0) != 0 &&
        errno != EINVAL) { // a device has no length
        throw systemError(errno, path, notDone);
    }
    return file;
}

Descriptor openOwnForReading(std::string_view path) {
    const std::string native = follow(nativeOf(path, NotDone::read), NotDone::read).native;
    Descriptor file = openOrThrow(path, native, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW);
    requireOwn(file, path, native, NotDone::read);
    return file;
}

void writeAll(int descriptor, std::string_view text, std::string_view path) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            throw systemError(errno, path, NotDone::written);
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void requireWritable(std::string_view path, const std::string& native, NotDone notDone) {
    if (::faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) != 0 && errno == EACCES) {
        throw systemError(EACCES, path, notDone);
    }
}

} // namespace platform
