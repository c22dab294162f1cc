#include "platform/win32/opening.h"

#include <algorithm>

#include "platform/openFiles.h"
#include "platform/paths.h"
#include "platform/systemError.h"
#include "platform/win32/fileInformation.h"
#include "platform/win32/wide.h"

namespace platform {

namespace {

NotDone notDoneOf(DWORD access) {
    return access == GENERIC_READ ? NotDone::read : NotDone::written;
}

} // namespace

std::wstring wideOf(std::string_view path, NotDone notDone) {
    std::wstring result = widePath(toInternal(path));
    if (result.empty()) {
        throw systemError(ERROR_FILE_NOT_FOUND, path, notDone);
    }
    return result;
}

bool isFolder(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

RuntimeError errorOf(DWORD cause, const std::wstring& wide, std::string_view path, NotDone notDone) {
    return cause == ERROR_ACCESS_DENIED && isFolder(wide) ? noRegularFile(path, true, notDone)
                                                          : systemError(cause, path, notDone);
}

RuntimeError lastError(const std::wstring& wide, std::string_view path, NotDone notDone) {
    return errorOf(::GetLastError(), wide, path, notDone);
}

Handle openOrThrow(std::string_view path, const std::wstring& wide, DWORD access, DWORD share,
                   DWORD creation) {
    Handle file(
        ::CreateFileW(wide.c_str(), access, share, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.isOpen()) {
        throw lastError(wide, path, notDoneOf(access));
    }
    return file;
}

// What lies in the cloud or is compressed has a reparse point too, and is opened again without the flag.
Handle openOwn(std::string_view path, DWORD access, DWORD share, DWORD creation) {
    const std::wstring wide = wideOf(path, notDoneOf(access));
    Handle file(::CreateFileW(wide.c_str(), access | FILE_READ_ATTRIBUTES, share, nullptr, creation,
                              FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!file.isOpen()) {
        throw lastError(wide, path, notDoneOf(access));
    }
    FILE_ATTRIBUTE_TAG_INFO tag{};
    if (::GetFileInformationByHandleEx(file.get(), FileAttributeTagInfo, &tag, sizeof tag) == 0 ||
        (tag.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return file;
    }
    if (IsReparseTagNameSurrogate(tag.ReparseTag)) {
        throw linkInsteadOfFile(path, notDoneOf(access));
    }
    file.reset();
    return openOrThrow(path, wide, access, share, OPEN_EXISTING);
}

void writeAll(HANDLE file, std::string_view text, std::string_view path) {
    while (!text.empty()) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min(text.size(), std::size_t{1} << 30));
        if (::WriteFile(file, text.data(), count, &written, nullptr) == 0) {
            throw systemError(::GetLastError(), path, NotDone::written);
        }
        text.remove_prefix(written);
    }
}

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

void requireWritable(std::string_view path, const std::wstring& wide, NotDone notDone) {
    const DWORD attributes = ::GetFileAttributesW(wide.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        throw errorOf(ERROR_ACCESS_DENIED, wide, path, notDone);
    }
}

} // namespace platform
