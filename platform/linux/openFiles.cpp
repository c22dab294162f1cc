#include "platform/openFiles.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/files.h"
#include "platform/linux/opening.h"
#include "platform/systemError.h"

namespace platform {

namespace {

constexpr int writing = O_WRONLY | O_NONBLOCK | O_NOCTTY;

class FileInPlace final : public OutputFile {
public:
    FileInPlace(std::string_view path, Descriptor file) : path_(path), file_(std::move(file)) {
        const int flags = ::fcntl(file_.get(), F_GETFL);
        ::fcntl(file_.get(), F_SETFL, flags & ~O_NONBLOCK);
    }
    void write(std::string_view text) override { writeAll(file_.get(), text, path_); }
    void finish() override {
        // Some file systems report a full disk only when a file is closed.
        if (::close(file_.release()) != 0 && errno != EINTR) {
            throw systemError(errno, path_, NotDone::written);
        }
    }

private:
    std::string path_;
    Descriptor file_;
};

class RegularFile final : public InputFile {
public:
    RegularFile(std::string_view path, Descriptor file) : path_(path), file_(std::move(file)) {
        struct stat status {};
        if (::fstat(file_.get(), &status) != 0) {
            throw systemError(errno, path, NotDone::read);
        }
        if (!S_ISREG(status.st_mode)) {
            throw noRegularFile(path, S_ISDIR(status.st_mode), NotDone::read);
        }
    }
    std::size_t read(std::span<char> block) override {
        for (;;) {
            const ssize_t count = ::read(file_.get(), block.data(), block.size());
            if (count >= 0) {
                return static_cast<std::size_t>(count);
            }
            if (errno != EINTR) {
                throw systemError(errno, path_, NotDone::read);
            }
        }
    }

private:
    std::string path_;
    Descriptor file_;
};

} // namespace

std::unique_ptr<OutputFile> openInPlace(std::string_view path, const std::string& native, int flag) {
    return std::make_unique<FileInPlace>(path, openOrThrow(path, native, writing | flag));
}

std::unique_ptr<OutputFile> openStandardOutput() {
    Descriptor copy(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    if (!copy.isOpen()) {
        throw systemError(errno, standardOutput, NotDone::written);
    }
    return std::make_unique<FileInPlace>(standardOutput, std::move(copy));
}

std::unique_ptr<OutputFile> openEmptied(std::string_view path) {
    return std::make_unique<FileInPlace>(path, openOwn(path, writing | O_CREAT | O_TRUNC));
}

std::unique_ptr<InputFile> openRegular(std::string_view path) {
    return std::make_unique<RegularFile>(
        path, openOrThrow(path, nativeOf(path, NotDone::read), O_RDONLY | O_NONBLOCK | O_NOCTTY));
}

std::unique_ptr<InputFile> openOwnRegular(std::string_view path) {
    return std::make_unique<RegularFile>(path, openOwnForReading(path));
}

} // namespace platform
