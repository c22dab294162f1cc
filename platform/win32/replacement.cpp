#include <cstddef>
#include <cstring>
#include <vector>

#include "platform/files.h"
#include "platform/openFiles.h"
#include "platform/systemError.h"
#include "platform/win32/fileInformation.h"
#include "platform/win32/opening.h"
#include "platform/win32/wide.h"

namespace platform {

namespace {

// Best effort: keeps the file's access rights, and whether it is hidden.
void keepPermissions(HANDLE file, const std::wstring& name, const std::wstring& target) {
    DWORD size = 0;
    ::GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> list(size);
    if (size > 0 &&
        ::GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, list.data(), size, &size) != 0) {
        ::SetFileSecurityW(name.c_str(), DACL_SECURITY_INFORMATION, list.data());
    }
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                           FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    FILE_BASIC_INFO information{}; // times of 0 leave those of the file unchanged
    information.FileAttributes = ::GetFileAttributesW(target.c_str()) & kept;
    if (information.FileAttributes != 0) {
        ::SetFileInformationByHandle(file, FileBasicInfo, &information, sizeof information);
    }
}

// Nobody else may open the file while it is being written, so it can be neither read nor removed: a file that
// can be deleted was left by a program that was killed.
class ReplacementFile final : public OutputFile {
public:
    ReplacementFile(std::string_view path, std::wstring target) : path_(path), target_(std::move(target)) {
        requireWritable(path, target_, NotDone::written);
        const std::size_t nameStart = target_.rfind(L'\\') + 1;
        folder_ = target_.substr(0, nameStart);
        name_ = narrow(std::wstring_view(target_).substr(nameStart));
        for (int number = 1; number <= mostReplacements; ++number) {
            removeIfLeft(nameOf(number));
        }
        openNamed();
        if (::GetFileAttributesW(target_.c_str()) != INVALID_FILE_ATTRIBUTES) {
            keepPermissions(file_.get(), temporary_, target_);
        }
    }
    ~ReplacementFile() override {
        if (file_.isOpen()) {
            file_.reset();
            ::DeleteFileW(temporary_.c_str());
        }
    }
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    void write(std::string_view text) override { writeAll(file_.get(), text, path_); }

    // Flushed to the disk before the rename: otherwise a power failure might leave neither content.
    void finish() override {
        if (::FlushFileBuffers(file_.get()) == 0 && ::GetLastError() != ERROR_INVALID_FUNCTION) {
            throw systemError(::GetLastError(), path_,
                              NotDone::written); // ignored where the system does not support it
        }
        if (!renameOpen()) {
            throw lastError(target_, path_, NotDone::written);
        }
        file_.reset();
    }

private:
    [[nodiscard]] std::wstring nameOf(int number) const {
        return folder_ + wide(replacementName(name_, number));
    }

    static void removeIfLeft(const std::wstring& file) {
        const DWORD attributes = ::GetFileAttributesW(file.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES &&
            (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == 0) {
            ::DeleteFileW(file.c_str());
        }
    }

    // A name may be refused only because a deleted file with that name is still open somewhere.
    void openNamed() {
        DWORD cause = ERROR_SUCCESS;
        for (int number = 1; number <= mostReplacements; ++number) {
            temporary_ = nameOf(number);
            file_ = Handle(::CreateFileW(temporary_.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                         FILE_ATTRIBUTE_NORMAL, nullptr));
            if (file_.isOpen()) {
                return;
            }
            cause = ::GetLastError();
            if (cause != ERROR_FILE_EXISTS && cause != ERROR_SHARING_VIOLATION &&
                cause != ERROR_ACCESS_DENIED) {
                break;
            }
        }
        throw cause == ERROR_ACCESS_DENIED ? noRoomBeside(path_)
                                           : systemError(cause, path_, NotDone::written);
    }

    // Renamed while it is open: once it is closed, another program might take it for a leftover.
    [[nodiscard]] bool renameOpen() const {
        const std::size_t length = target_.size() * sizeof(wchar_t);
        std::vector<std::byte> memory(sizeof(FILE_RENAME_INFO) + length);
        auto* information = reinterpret_cast<FILE_RENAME_INFO*>(memory.data()); // NOLINT
        information->ReplaceIfExists = TRUE;
        information->FileNameLength = static_cast<DWORD>(length);
        std::memcpy(information->FileName, target_.c_str(), length + sizeof(wchar_t));
        return ::SetFileInformationByHandle(file_.get(), FileRenameInfo, information,
                                            static_cast<DWORD>(memory.size())) != 0;
    }

    std::string path_;
    std::wstring target_;
    std::wstring folder_; // with its "\"
    std::string name_;
    std::wstring temporary_;
    Handle file_;
};

} // namespace

// A new file has the permissions that its folder gives.
std::unique_ptr<OutputFile> openReplacement(std::string_view path, NewFile /*newFile*/) {
    if (path == standardOutput) {
        return openStandardOutput();
    }
    const std::wstring wide = wideOf(path, NotDone::written);
    const auto there = informationOf(wide);
    if (there && there->facts.isFolder) {
        throw noRegularFile(path, true, NotDone::written);
    }
    if (there && !there->isRegular) {
        return openEmptied(path); // a device takes the bytes itself
    }
    return std::make_unique<ReplacementFile>(path, isLink(wide) ? finalPath(wide).value_or(wide) : wide);
}

} // namespace platform
