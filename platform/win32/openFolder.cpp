#include "platform/win32/openFolder.h"

namespace platform {

OpenFolder::OpenFolder(const std::wstring& path)
    : handle_(::CreateFileW(path.c_str(), FILE_LIST_DIRECTORY,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                            FILE_FLAG_BACKUP_SEMANTICS, nullptr)),
      error_(handle_.isOpen() ? DWORD{ERROR_SUCCESS} : ::GetLastError()) {}

// Both are asked of the file system alone. A path with a drive letter would cost a question to the manager of
// volumes, one without short names another for each folder above on a share.
std::optional<FolderPlace> OpenFolder::place(std::span<std::byte> buffer) const {
    const auto size = static_cast<DWORD>(buffer.size());
    if (::GetFileInformationByHandleEx(handle_.get(), FileNameInfo, buffer.data(), size) == 0) {
        return std::nullopt;
    }
    const auto& found = *reinterpret_cast<const FILE_NAME_INFO*>(buffer.data());
    FolderPlace result;
    result.path.assign(found.FileName, found.FileNameLength / sizeof(wchar_t));
    if (result.path.ends_with(L'\\')) {
        result.path.pop_back();
    }
    ::GetVolumeInformationByHandleW(handle_.get(), nullptr, 0, &result.volume, nullptr, nullptr, nullptr, 0);
    return result;
}

DWORD OpenFolder::fill(FILE_INFO_BY_HANDLE_CLASS kind, std::span<std::byte> buffer, bool isFirst,
                       bool& hasMore) const {
    const auto size = static_cast<DWORD>(buffer.size());
    hasMore = ::GetFileInformationByHandleEx(handle_.get(), kind, buffer.data(), size) != 0;
    if (hasMore) {
        return ERROR_SUCCESS;
    }
    switch (const DWORD error = ::GetLastError()) {
    case ERROR_NO_MORE_FILES:
        return ERROR_SUCCESS;
    case ERROR_FILE_NOT_FOUND: // the root of an empty drive contains nothing, not even itself
        return isFirst ? DWORD{ERROR_SUCCESS} : error;
    case ERROR_INVALID_PARAMETER: // it is a file, or a file system without numbers of files
    case ERROR_INVALID_LEVEL:
    case ERROR_NOT_SUPPORTED:
        if (!isFirst) {
            return error;
        }
        return kind == FileIdBothDirectoryInfo ? DWORD{ERROR_NOT_SUPPORTED} : DWORD{ERROR_DIRECTORY};
    default:
        return error;
    }
}

} // namespace platform
