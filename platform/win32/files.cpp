#include "platform/files.h"

#include <algorithm>
#include <atomic>
#include <vector>

#include "platform/paths.h"
#include "platform/win32/fileInformation.h"
#include "platform/win32/handle.h"
#include "platform/win32/systemError.h"
#include "platform/win32/wide.h"

namespace platform {

namespace {

constexpr std::size_t bufferSize = std::size_t{256} << 10;
constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::wstring wideOf(std::string_view path) {
    std::wstring result = widePath(toInternal(path));
    if (result.empty()) {
        throw systemError(ERROR_FILE_NOT_FOUND, path);
    }
    return result;
}

bool isFolder(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// A folder where a file is wanted is refused like a file that may not be opened; told apart here.
RuntimeError errorOf(DWORD cause, const std::wstring& wide, std::string_view path) {
    return systemError(cause == ERROR_ACCESS_DENIED && isFolder(wide) ? folderInsteadOfFile : cause, path);
}

// The last error of a call about a path.
RuntimeError lastError(const std::wstring& wide, std::string_view path) {
    return errorOf(::GetLastError(), wide, path);
}

Handle openOrThrow(std::string_view path, const std::wstring& wide, DWORD access, DWORD share,
                   DWORD creation) {
    Handle file(
        ::CreateFileW(wide.c_str(), access, share, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.isOpen()) {
        throw lastError(wide, path);
    }
    return file;
}

void writeAll(HANDLE file, std::string_view text, std::string_view path) {
    while (!text.empty()) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min(text.size(), std::size_t{1} << 30));
        if (::WriteFile(file, text.data(), count, &written, nullptr) == 0) {
            throw systemError(::GetLastError(), path);
        }
        text.remove_prefix(written);
    }
}

// Opens a file for writing from its beginning. Emptied rather than made anew, for the system does not make a
// hidden file anew.
Handle openForWriting(std::string_view path, const std::wstring& wide) {
    Handle file = openOrThrow(path, wide, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS);
    if (::GetFileType(file.get()) == FILE_TYPE_DISK && ::SetEndOfFile(file.get()) == 0) {
        throw systemError(::GetLastError(), path);
    }
    return file;
}

// Where a path leads to, links followed; nothing when that cannot be told.
std::optional<std::wstring> finalPath(const std::wstring& path) {
    const Handle file(::CreateFileW(path.c_str(), 0, shareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file.isOpen()) {
        return std::nullopt;
    }
    std::wstring result(::GetFinalPathNameByHandleW(file.get(), nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
    const auto room = static_cast<DWORD>(result.size());
    const DWORD length = ::GetFinalPathNameByHandleW(file.get(), result.data(), room, FILE_NAME_NORMALIZED);
    if (length == 0 || length >= room) {
        return std::nullopt;
    }
    result.resize(length);
    return result;
}

// What may not be written may not be replaced or deleted either.
void requireWritable(std::string_view path, const std::wstring& wide) {
    const DWORD attributes = ::GetFileAttributesW(wide.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        throw errorOf(ERROR_ACCESS_DENIED, wide, path);
    }
}

// The name of a file beside the one it is to replace; the file vanishes unless it is put in place.
class Replacement {
public:
    Replacement(std::string_view path, const std::wstring& wide)
        : path_(path), target_(isLink(wide) ? finalPath(wide).value_or(wide) : wide) {
        requireWritable(path, target_);
        // Short, for the target's own name may be as long as names can be.
        static std::atomic<unsigned> count = 0;
        temporary_ = target_.substr(0, target_.rfind(L'\\') + 1) + L".spannory-" +
                     std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
        ::DeleteFileW(temporary_.c_str());
    }
    ~Replacement() {
        if (!done_) {
            ::DeleteFileW(temporary_.c_str());
        }
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    [[nodiscard]] const std::wstring& temporary() const noexcept { return temporary_; }

    // On the disk before its name is: otherwise neither content might be there after a loss of power.
    void putInPlace() {
        Handle copy = openOrThrow(path_, temporary_, GENERIC_WRITE, shareAll, OPEN_EXISTING);
        if (::FlushFileBuffers(copy.get()) == 0 && ::GetLastError() != ERROR_INVALID_FUNCTION) {
            throw systemError(::GetLastError(), path_); // not where there is no such thing
        }
        copy.reset();
        if (::MoveFileExW(temporary_.c_str(), target_.c_str(),
                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
            throw lastError(target_, path_);
        }
        done_ = true;
    }

private:
    std::string_view path_;
    std::wstring target_;
    std::wstring temporary_;
    bool done_ = false;
};

Handle openRegularFile(std::string_view path) {
    Handle file = openOrThrow(path, wideOf(path), GENERIC_READ, shareAll, OPEN_EXISTING);
    if (::GetFileType(file.get()) != FILE_TYPE_DISK) {
        throw systemError(ERROR_INVALID_FUNCTION, path);
    }
    return file;
}

std::optional<FileInformation> informationAt(std::string_view path) noexcept {
    try {
        return informationOf(wideOf(path));
    } catch (...) { // a path that names nothing
        return std::nullopt;
    }
}

} // namespace

bool fileExists(std::string_view path) noexcept {
    const std::optional<FileInformation> found = informationAt(path);
    return found && found->isRegular;
}

std::uint64_t fileSize(std::string_view path) noexcept {
    const std::optional<FileInformation> found = informationAt(path);
    return found ? static_cast<std::uint64_t>(found->facts.size) : 0;
}

bool somethingExists(std::string_view path) noexcept {
    try {
        return ::GetFileAttributesW(wideOf(path).c_str()) != INVALID_FILE_ATTRIBUTES;
    } catch (...) {
        return false;
    }
}

bool fileIsWritable(std::string_view path) noexcept {
    try {
        const std::wstring wide = wideOf(path);
        const Handle file(::CreateFileW(wide.c_str(), GENERIC_WRITE, shareAll, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
        return file.isOpen() && (::GetFileAttributesW(wide.c_str()) & FILE_ATTRIBUTE_READONLY) == 0;
    } catch (...) {
        return false;
    }
}

std::string resolveLinks(std::string_view path) {
    const std::wstring given = wideOf(path);
    if (const auto whole = finalPath(given)) {
        return toInternal(narrow(*whole));
    }
    const std::size_t nameStart = given.rfind(L'\\') + 1;
    if (const auto folder = finalPath(given.substr(0, nameStart))) {
        const std::string above = toInternal(narrow(*folder));
        return above + (above.ends_with('\\') ? "" : "\\") + narrow(given.substr(nameStart));
    }
    return toInternal(path);
}

bool isSameFile(std::string_view left, std::string_view right) noexcept {
    const std::optional<FileInformation> one = informationAt(left);
    const std::optional<FileInformation> other = informationAt(right);
    return one && other && one->number != 0 && one->volume == other->volume && one->number == other->number;
}

void deleteFile(std::string_view path) {
    const std::wstring wide = wideOf(path);
    if (isLink(wide)) {
        throw systemError(ERROR_INVALID_FUNCTION, path);
    }
    requireWritable(path, wide);
    if (::DeleteFileW(wide.c_str()) == 0) {
        throw lastError(wide, path);
    }
}

void copyFile(std::string_view from, std::string_view to) {
    const std::wstring source = wideOf(from);
    const std::wstring target = wideOf(to);
    if (isFolder(target)) {
        throw systemError(folderInsteadOfFile, to);
    }
    openRegularFile(from).reset();
    Replacement copy(to, target);
    if (::CopyFileW(source.c_str(), copy.temporary().c_str(), FALSE) == 0) {
        throw lastError(target, to);
    }
    ::SetFileAttributesW(copy.temporary().c_str(), FILE_ATTRIBUTE_NORMAL); // a copy can be written
    copy.putInPlace();
}

std::string readFile(std::string_view path, std::uint64_t limit) {
    const Handle file = openRegularFile(path);
    std::vector<char> buffer(bufferSize);
    std::string content;
    for (;;) {
        DWORD count = 0;
        if (::ReadFile(file.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr) == 0) {
            throw systemError(::GetLastError(), path);
        }
        if (count == 0) {
            return content;
        }
        if (content.size() + count > limit) {
            throw RuntimeError::about(errorNumber::overflow, displayPath(path));
        }
        content.append(buffer.data(), count);
    }
}

void replaceFile(std::string_view path, std::string_view content) {
    const std::wstring wide = wideOf(path);
    if (const auto there = informationOf(wide); there && !there->isRegular && !there->facts.isFolder) {
        writeAll(openForWriting(path, wide).get(), content, path); // a device takes the bytes itself
        return;
    }
    Replacement target(path, wide);
    Handle file = openOrThrow(path, target.temporary(), GENERIC_WRITE, 0, CREATE_NEW);
    writeAll(file.get(), content, path);
    file.reset();
    target.putInPlace();
}

void appendToFile(std::string_view path, std::string_view text) {
    const Handle file = openOrThrow(path, wideOf(path), FILE_APPEND_DATA, shareAll, OPEN_EXISTING);
    writeAll(file.get(), text, path);
}

void makeFolders(std::string_view path) {
    const std::wstring wide = wideOf(path);
    // Behind `\\?\C:\` or `\\?\UNC\server\share\`.
    std::size_t end = wide.starts_with(L"\\\\?\\UNC\\") ? wide.find(L'\\', wide.find(L'\\', 8) + 1) : 6;
    while (end != std::wstring::npos) {
        end = wide.find(L'\\', end + 1);
        const std::wstring folder = wide.substr(0, end);
        if (::CreateDirectoryW(folder.c_str(), nullptr) == 0) {
            const DWORD cause = ::GetLastError();
            if (!isFolder(folder)) {
                throw systemError(cause, path);
            }
        }
    }
}

FileSink::FileSink(std::string_view path) : path_(path) {
    buffer_.reserve(bufferSize + bufferSize / 4);
    handle_ = reinterpret_cast<std::intptr_t>(openForWriting(path, wideOf(path)).release()); // NOLINT
}

FileSink::~FileSink() {
    if (handle_ != -1) {
        try {
            flush();
        } catch (...) { // the writer has failed already and reported why
        }
        ::CloseHandle(reinterpret_cast<HANDLE>(handle_)); // NOLINT
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
        writeAll(reinterpret_cast<HANDLE>(handle_), buffer_, path_); // NOLINT
    } catch (...) {
        buffer_.clear(); // not written twice by the destructor
        throw;
    }
    buffer_.clear();
}

void FileSink::close() {
    flush();
    if (::CloseHandle(reinterpret_cast<HANDLE>(std::exchange(handle_, -1))) == 0) { // NOLINT
        throw systemError(::GetLastError(), path_);
    }
}

std::unique_ptr<FileLock> FileLock::tryAcquire(std::string_view path) {
    const std::wstring wide = wideOf(path);
    Handle file(::CreateFileW(wide.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.isOpen()) {
        if (::GetLastError() == ERROR_SHARING_VIOLATION) {
            return nullptr;
        }
        throw lastError(wide, path);
    }
    return std::unique_ptr<FileLock>(new FileLock(reinterpret_cast<std::intptr_t>(file.release()))); // NOLINT
}

FileLock::~FileLock() {
    ::CloseHandle(reinterpret_cast<HANDLE>(handle_)); // NOLINT
}

} // namespace platform
