#include "platform/files.h"

#include <optional>

#include "platform/openFiles.h"
#include "platform/paths.h"
#include "platform/systemError.h"
#include "platform/win32/fileInformation.h"
#include "platform/win32/opening.h"
#include "platform/win32/wide.h"

namespace platform {

namespace {

std::optional<FileInformation> informationAt(std::string_view path) noexcept {
    try {
        return informationOf(wideOf(path));
    } catch (...) { // not a valid path
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

// Other streams have no names here.
bool isStream(std::string_view path) noexcept {
    return path == standardOutput;
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
    const auto whole = finalPath(wideOf(path));
    return whole ? toInternal(narrow(*whole)) : resolveFolderLinks(path);
}

std::string resolveFolderLinks(std::string_view path) {
    const std::wstring given = wideOf(path);
    const std::size_t nameStart = given.rfind(L'\\') + 1;
    if (const auto folder = finalPath(given.substr(0, nameStart))) {
        const std::string above = toInternal(narrow(*folder));
        return above + (above.ends_with('\\') ? "" : "\\") + narrow(given.substr(nameStart));
    }
    return toInternal(path);
}

bool isLink(std::string_view path) noexcept {
    try {
        return isLink(wideOf(path));
    } catch (...) { // not a valid path
        return false;
    }
}

bool isSameFile(std::string_view left, std::string_view right) noexcept {
    const std::optional<FileInformation> one = informationAt(left);
    const std::optional<FileInformation> other = informationAt(right);
    return one && other && one->number != 0 && one->volume == other->volume && one->number == other->number;
}

void deleteFile(std::string_view path) {
    const std::wstring wide = wideOf(path, NotDone::deleted);
    if (isLink(wide)) {
        throw linkInsteadOfFile(path, NotDone::deleted);
    }
    requireWritable(path, wide, NotDone::deleted);
    if (::DeleteFileW(wide.c_str()) == 0) {
        throw lastError(wide, path, NotDone::deleted);
    }
}

void moveFile(std::string_view from, std::string_view to) {
    const std::wstring wide = wideOf(to);
    if (::MoveFileExW(wideOf(from).c_str(), wide.c_str(), MOVEFILE_REPLACE_EXISTING) == 0) {
        throw lastError(wide, to, NotDone::written);
    }
}

void appendToFile(std::string_view path, std::string_view text) {
    const Handle file = openOwn(path, FILE_APPEND_DATA, shareAll, OPEN_EXISTING);
    writeAll(file.get(), text, path);
}

void makeFolders(std::string_view path) {
    const std::wstring wide = wideOf(path, NotDone::created);
    // After `\\?\C:\` or `\\?\UNC\server\share\`.
    std::size_t end = wide.starts_with(L"\\\\?\\UNC\\") ? wide.find(L'\\', wide.find(L'\\', 8) + 1) : 6;
    while (end != std::wstring::npos) {
        end = wide.find(L'\\', end + 1);
        const std::wstring folder = wide.substr(0, end);
        if (::CreateDirectoryW(folder.c_str(), nullptr) == 0) {
            const DWORD cause = ::GetLastError();
            if (!isFolder(folder)) {
                throw systemError(cause, path, NotDone::created);
            }
        }
    }
}

std::unique_ptr<FileLock> FileLock::tryAcquire(std::string_view path) {
    const std::wstring wide = wideOf(path);
    if (isLink(wide)) {
        throw linkInsteadOfFile(path, NotDone::opened);
    }
    Handle file(::CreateFileW(wide.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!file.isOpen()) {
        if (::GetLastError() == ERROR_SHARING_VIOLATION) {
            return nullptr;
        }
        throw lastError(wide, path, NotDone::opened);
    }
    const auto handle = reinterpret_cast<std::intptr_t>(file.release()); // NOLINT
    return std::unique_ptr<FileLock>(new FileLock(handle, path));
}

FileLock::~FileLock() {
    const auto file = reinterpret_cast<HANDLE>(handle_); // NOLINT
    if (remove_) {
        FILE_DISPOSITION_INFO deleted{TRUE};
        ::SetFileInformationByHandle(file, FileDispositionInfo, &deleted, sizeof deleted);
    }
    ::CloseHandle(file);
}

} // namespace platform
