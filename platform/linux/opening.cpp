#include "platform/linux/opening.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/paths.h"
#include "platform/systemError.h"

namespace platform {

namespace {

constexpr mode_t newFileMode = 0666; // minus the umask

bool folderIsThere(const std::string& nativeFile) {
    struct stat status {};
    return ::stat(nativeFile.substr(0, nativeFile.rfind('/') + 1).c_str(), &status) == 0;
}

} // namespace

std::string nativeOf(std::string_view path) {
    std::string native = toNative(toInternal(path));
    if (native.empty()) {
        throw systemError(ENOENT, path);
    }
    return native;
}

Descriptor openOrThrow(std::string_view path, const std::string& native, int flags) {
    Descriptor file(::open(native.c_str(), flags | O_CLOEXEC, newFileMode));
    if (!file.isOpen()) {
        const int cause = errno;
        throw systemError(cause == ENOENT && !folderIsThere(native) ? ENOTDIR : cause, path);
    }
    return file;
}

void writeAll(int descriptor, std::string_view text, std::string_view path) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            throw systemError(errno, path);
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void requireWritable(std::string_view path, const std::string& native) {
    if (::faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) != 0 && errno == EACCES) {
        throw systemError(EACCES, path);
    }
}

} // namespace platform
