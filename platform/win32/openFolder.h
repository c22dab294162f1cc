#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/win32/handle.h"

namespace platform {

// A folder that is open to be listed. What is asked about it and what is listed is the same folder, whatever
// becomes of its path.
class OpenFolder {
public:
    // `path` may lead through links, even at its end (widePath, wide.h).
    explicit OpenFolder(const std::wstring& path);

    // Why it is not open; ERROR_SUCCESS if it is.
    [[nodiscard]] DWORD error() const noexcept { return error_; }

    // Where it is once all links on the way to it are resolved: its device and its path there, without a
    // trailing "\". Nothing if the system does not tell. `buffer` is for the duration of the call, aligned
    // like a record and as large as a path can be.
    // On a share, another volume that the server puts in the place of a folder is not told apart from it.
    [[nodiscard]] std::optional<std::wstring> place(std::span<std::byte> buffer) const;

    // Whether its file system tells paths; otherwise all its folders have the place of their device.
    [[nodiscard]] bool tellsPath(std::span<std::byte> buffer) const;

    // Whether it is on another machine.
    [[nodiscard]] bool isRemote() const;

    // The serial number of its volume, which on a share is a question to the server; 0 if it has none.
    [[nodiscard]] DWORD volume() const;

    // Calls `take(record, name)` for each entry, until that returns an error. Returns that error or the
    // system's; ERROR_SUCCESS at the end. The record has the file's number where the file system gives such.
    template <class Take>
    DWORD forEachEntry(std::span<std::byte> buffer, Take take) const {
        const DWORD error = forEachRecord<FILE_ID_BOTH_DIR_INFO>(FileIdBothDirectoryInfo, buffer, take);
        return error == ERROR_NOT_SUPPORTED
                   ? forEachRecord<FILE_FULL_DIR_INFO>(FileFullDirectoryInfo, buffer, take)
                   : error;
    }

private:
    template <class Record, class Take>
    DWORD forEachRecord(FILE_INFO_BY_HANDLE_CLASS kind, std::span<std::byte> buffer, Take take) const {
        bool hasMore = true;
        DWORD error = fill(kind, buffer, true, hasMore);
        while (error == ERROR_SUCCESS && hasMore) {
            const std::byte* position = buffer.data();
            for (DWORD step = 1; error == ERROR_SUCCESS && step != 0; position += step) {
                const auto& record = *reinterpret_cast<const Record*>(position);
                const std::wstring_view name(record.FileName, record.FileNameLength / sizeof(wchar_t));
                error = name == L"." || name == L".." ? DWORD{ERROR_SUCCESS} : take(record, name);
                step = record.NextEntryOffset;
            }
            error = error == ERROR_SUCCESS ? fill(kind, buffer, false, hasMore) : error;
        }
        return error;
    }

    // ERROR_NOT_SUPPORTED at the first call: the file system has no records of that kind with numbers.
    [[nodiscard]] DWORD fill(FILE_INFO_BY_HANDLE_CLASS kind, std::span<std::byte> buffer, bool isFirst,
                             bool& hasMore) const;

    Handle handle_;
    DWORD error_;
};

} // namespace platform
