#include "platform/win32/openFolder.h"

#include <winternl.h>

namespace platform {

OpenFolder::OpenFolder(const std::wstring& path)
    : handle_(::CreateFileW(path.c_str(), FILE_LIST_DIRECTORY,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                            FILE_FLAG_BACKUP_SEMANTICS, nullptr)),
      error_(handle_.isOpen() ? DWORD{ERROR_SUCCESS} : ::GetLastError()) {}

// The name of the object, which the system knows by itself: a path with a drive letter would cost a question
// to the manager of volumes, the number of the volume one to the server of a share, and a path without short
// names another for each folder above. GetFinalPathNameByHandle fails for long paths on some systems.
std::optional<std::wstring> OpenFolder::place(std::span<std::byte> buffer) const {
    ULONG needed = 0;
    const NTSTATUS status = ::NtQueryObject(handle_.get(), ObjectNameInformation, buffer.data(),
                                            static_cast<ULONG>(buffer.size()), &needed);
    if (!NT_SUCCESS(status)) {
        ::SetLastError(::RtlNtStatusToDosError(status));
        return std::nullopt;
    }
    const UNICODE_STRING& name = reinterpret_cast<const OBJECT_NAME_INFORMATION*>(buffer.data())->Name;
    std::wstring result(name.Buffer, name.Length / sizeof(wchar_t));
    if (result.ends_with(L'\\')) {
        result.pop_back();
    }
    return result;
}

bool OpenFolder::tellsPath(std::span<std::byte> buffer) const {
    return ::GetFileInformationByHandleEx(handle_.get(), FileNameInfo, buffer.data(),
                                          static_cast<DWORD>(buffer.size())) != 0;
}

bool OpenFolder::isRemote() const {
    FILE_REMOTE_PROTOCOL_INFO found{};
    return ::GetFileInformationByHandleEx(handle_.get(), FileRemoteProtocolInfo, &found, sizeof found) != 0;
}

DWORD OpenFolder::volume() const {
    DWORD number = 0;
    ::GetVolumeInformationByHandleW(handle_.get(), nullptr, 0, &number, nullptr, nullptr, nullptr, 0);
    return number;
}

DWORD OpenFolder::fill(FILE_INFO_BY_HANDLE_CLASS kind, std::span<std::byte> buffer, bool isFirst,
                       bool& hasMore) const {
    const auto size = static_cast<DWORD>(buffer.size());
    hasMore = ::GetFileInformationByHandleEx(handle_.get(), kind, buffer.data(), size) != 0;
    if (hasMore) {
        return ERROR_SUCCESS;
    }
    const DWORD error = ::GetLastError();
    switch (error) {
    case ERROR_NO_MORE_FILES:
        return ERROR_SUCCESS;
    case ERROR_FILE_NOT_FOUND: // the root of an empty drive contains nothing, not even itself
        return isFirst ? DWORD{ERROR_SUCCESS} : error;
    case ERROR_ACCESS_DENIED:
        return error;
    default:
        break;
    }
    if (!isFirst) {
        return error == ERROR_NOT_SUPPORTED ? DWORD{ERROR_READ_FAULT} : error;
    }
    if (kind == FileIdBothDirectoryInfo) { // a file system without numbers of files, or it is a file
        return ERROR_NOT_SUPPORTED;
    }
    return error == ERROR_INVALID_PARAMETER ? DWORD{ERROR_DIRECTORY} : error;
}

} // namespace platform
