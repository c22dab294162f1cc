#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <optional>
#include <vector>

#include "platform/paths.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/realPath.h"
#include "platform/posix/systemError.h"

namespace platform {

namespace {

constexpr std::size_t bufferSize = std::size_t{256} << 10;
constexpr mode_t newFileMode = 0666; // less the umask

std::string nativeOf(std::string_view path) {
    std::string native = toNative(toInternal(path));
    if (native.empty()) {
        throw systemError(ENOENT, path);
    }
    return native;
}

// What is at the path, links followed; nothing when it cannot be told.
std::optional<struct stat> statusOf(std::string_view path) noexcept {
    try {
        struct stat status {};
        if (::stat(nativeOf(path).c_str(), &status) == 0) {
            return status;
        }
    } catch (...) { // a path that names nothing
    }
    return std::nullopt;
}

bool folderIsThere(const std::string& nativeFile) {
    struct stat status {};
    return ::stat(nativeFile.substr(0, nativeFile.rfind('/') + 1).c_str(), &status) == 0;
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

// Some file systems tell of a full disk only when a file is closed.
void closeOrThrow(int descriptor, std::string_view path) {
    if (::close(descriptor) != 0 && errno != EINTR) {
        throw systemError(errno, path);
    }
}

// Opens a file for writing from its beginning. A pipe that nobody reads is an error, not a wait.
Descriptor openForWriting(std::string_view path, const std::string& native) {
    Descriptor file = openOrThrow(path, native, O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY);
    const int flags = ::fcntl(file.get(), F_GETFL);
    ::fcntl(file.get(), F_SETFL, flags & ~O_NONBLOCK);
    return file;
}

// What may not be written may not be replaced or deleted either, though its folder allows it.
void requireWritable(std::string_view path, const std::string& native) {
    if (::faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) != 0 && errno == EACCES) {
        throw systemError(EACCES, path);
    }
}

// A file beside the one it is to replace; vanishes with its owner unless put in place.
class Replacement {
public:
    Replacement(std::string_view path, const std::string& native) : path_(path), target_(native) {
        struct stat existing {};
        const bool exists = ::stat(native.c_str(), &existing) == 0;
        direct_ = exists && !S_ISREG(existing.st_mode);
        if (direct_) { // a device or a pipe takes the bytes itself
            file_ = openForWriting(path, native);
            return;
        }
        target_ = realPath(native).value_or(native);
        requireWritable(path, native);
        // Short, for the target's own name may be as long as names can be; and never through a file that
        // somebody else has put there.
        static std::atomic<unsigned> count = 0;
        const std::string name = target_.substr(0, target_.rfind('/') + 1) + ".spannory-" +
                                 std::to_string(::getpid()) + "-" + std::to_string(++count);
        ::unlink(name.c_str());
        file_ = openOrThrow(path, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
        temporary_ = name;
        if (exists) { // best effort: the owner is kept where the system allows it
            static_cast<void>(::fchown(file_.get(), existing.st_uid, existing.st_gid) == 0);
            ::fchmod(file_.get(), existing.st_mode & 07777);
        }
    }
    ~Replacement() {
        if (!temporary_.empty()) {
            ::unlink(temporary_.c_str());
        }
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    [[nodiscard]] int descriptor() const noexcept { return file_.get(); }

    void putInPlace() {
        if (!direct_ && ::fsync(file_.get()) != 0 && errno != EINVAL && errno != ENOTSUP) {
            throw systemError(errno, path_);
        }
        closeOrThrow(file_.release(), path_);
        if (!direct_) {
            if (::rename(temporary_.c_str(), target_.c_str()) != 0) {
                throw systemError(errno, path_);
            }
            temporary_.clear();
        }
    }

private:
    std::string_view path_;
    std::string target_;
    std::string temporary_;
    Descriptor file_;
    bool direct_ = false;
};

// Calls `take` with each block of the open file's content.
template <class Take>
void readBlocks(int descriptor, std::string_view path, Take take) {
    std::vector<char> buffer(bufferSize);
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count == 0) {
            return;
        }
        if (count > 0) {
            take(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
        } else if (errno != EINTR) {
            throw systemError(errno, path);
        }
    }
}

Descriptor openRegularFile(std::string_view path) {
    Descriptor file = openOrThrow(path, nativeOf(path), O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) {
        throw systemError(errno, path);
    }
    if (!S_ISREG(status.st_mode)) {
        throw systemError(S_ISDIR(status.st_mode) ? EISDIR : EINVAL, path);
    }
    return file;
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

void copyFile(std::string_view from, std::string_view to) {
    const Descriptor source = openRegularFile(from);
    Replacement target(to, nativeOf(to));
    readBlocks(source.get(), from, [&](std::string_view block) { writeAll(target.descriptor(), block, to); });
    target.putInPlace();
}

std::string readFile(std::string_view path, std::uint64_t limit) {
    const Descriptor file = openRegularFile(path);
    std::string content;
    readBlocks(file.get(), path, [&](std::string_view block) {
        if (content.size() + block.size() > limit) {
            throw RuntimeError::about(errorNumber::overflow, displayPath(path));
        }
        content.append(block);
    });
    return content;
}

void replaceFile(std::string_view path, std::string_view content) {
    Replacement target(path, nativeOf(path));
    writeAll(target.descriptor(), content, path);
    target.putInPlace();
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

FileSink::FileSink(std::string_view path) : path_(path) {
    buffer_.reserve(bufferSize + bufferSize / 4);
    handle_ = openForWriting(path, nativeOf(path)).release();
}

FileSink::~FileSink() {
    if (handle_ >= 0) {
        try {
            flush();
        } catch (...) { // the writer has failed already and reported why
        }
        ::close(static_cast<int>(handle_));
    }
}

void FileSink::write(std::string_view text) {
    buffer_.append(text);
    if (buffer_.size() >= bufferSize) {
        flush();
    }
}

void FileSink::flush() {
    try {
        writeAll(static_cast<int>(handle_), buffer_, path_);
    } catch (...) {
        buffer_.clear(); // not written twice by the destructor
        throw;
    }
    buffer_.clear();
}

void FileSink::close() {
    flush();
    closeOrThrow(static_cast<int>(std::exchange(handle_, -1)), path_);
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
