#include "platform/openFiles.h"

#include "platform/files.h"
#include "platform/systemError.h"
#include "platform/win32/opening.h"

namespace platform {

namespace {

class FileInPlace final : public OutputFile {
public:
    // An existing file is emptied, not created anew, because the system does not create a hidden file anew.
    explicit FileInPlace(std::string_view path)
        : path_(path), file_(openOwn(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS)) {
        if (::GetFileType(file_.get()) == FILE_TYPE_DISK && ::SetEndOfFile(file_.get()) == 0) {
            throw systemError(::GetLastError(), path, NotDone::written);
        }
    }
    void write(std::string_view text) override { writeAll(file_.get(), text, path_); }
    void finish() override {
        if (::CloseHandle(file_.release()) == 0) {
            throw systemError(::GetLastError(), path_, NotDone::written);
        }
    }

private:
    std::string path_;
    Handle file_;
};

// Not closed, because others write to it too.
class StandardOutput final : public OutputFile {
public:
    void write(std::string_view text) override {
        writeAll(::GetStdHandle(STD_OUTPUT_HANDLE), text, standardOutput);
    }
    void finish() override {}
};

class RegularFile final : public InputFile {
public:
    explicit RegularFile(std::string_view path)
        : path_(path),
          file_(openOrThrow(path, wideOf(path, NotDone::read), GENERIC_READ, shareAll, OPEN_EXISTING)) {
        if (::GetFileType(file_.get()) != FILE_TYPE_DISK) {
            throw noRegularFile(path, false, NotDone::read);
        }
    }
    std::size_t read(std::span<char> block) override {
        DWORD count = 0;
        if (::ReadFile(file_.get(), block.data(), static_cast<DWORD>(block.size()), &count, nullptr) == 0) {
            throw systemError(::GetLastError(), path_, NotDone::read);
        }
        return count;
    }

private:
    std::string path_;
    Handle file_;
};

} // namespace

std::unique_ptr<OutputFile> openStandardOutput() {
    return std::make_unique<StandardOutput>();
}

std::unique_ptr<OutputFile> openEmptied(std::string_view path) {
    return std::make_unique<FileInPlace>(path);
}

std::unique_ptr<InputFile> openRegular(std::string_view path) {
    return std::make_unique<RegularFile>(path);
}

} // namespace platform
