#include "platform/win32/fileInformation.h"

#include <algorithm>

#include "platform/win32/fileTime.h"
#include "platform/win32/handle.h"

namespace platform {

namespace {

// A reparse point is a link only if it stands for another name; others are files and folders that the system
// stores in a special way (in the cloud, compressed). If its kind is unknown, it is treated as a link.
bool isLink(DWORD attributes, DWORD reparseTag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (reparseTag == 0 || IsReparseTagNameSurrogate(reparseTag));
}

// Works for a find record and for an opened file, which have the same field names.
template <class Record>
EntryFacts factsOfRecord(const Record& record, DWORD reparseTag) {
    const bool isFolder = (record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
                          !isLink(record.dwFileAttributes, reparseTag);
    const auto size = static_cast<std::int64_t>(record.nFileSizeHigh) << 32 | record.nFileSizeLow;
    EntryFacts facts;
    facts.isFolder = isFolder;
    facts.known = true;
    facts.size = size;
    facts.accessed = secondsOf(record.ftLastAccessTime);
    facts.modified = secondsOf(record.ftLastWriteTime);
    return facts;
}

// The records of a listed folder have the same field names.
template <class Record>
EntryFacts factsOfListed(const Record& entry) {
    const DWORD reparseTag = entry.EaSize; // of a reparse point
    EntryFacts facts;
    facts.isFolder =
        (entry.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !isLink(entry.FileAttributes, reparseTag);
    facts.known = true;
    facts.size = entry.EndOfFile.QuadPart;
    facts.accessed = secondsOf(entry.LastAccessTime);
    facts.modified = secondsOf(entry.LastWriteTime);
    facts.sizeOnDisk = facts.isFolder ? 0 : std::max<std::int64_t>(entry.AllocationSize.QuadPart, 0);
    return facts;
}

// The facts about an entry that its folder has; links are not followed. A drive's root has no folder above
// it.
std::optional<WIN32_FIND_DATAW> ownEntry(const std::wstring& path) {
    WIN32_FIND_DATAW entry{};
    HANDLE search =
        ::FindFirstFileExW(path.c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr, 0);
    if (search != INVALID_HANDLE_VALUE) {
        ::FindClose(search);
        return entry;
    }
    WIN32_FILE_ATTRIBUTE_DATA record{};
    if (::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &record) == 0) {
        return std::nullopt;
    }
    entry.dwFileAttributes = record.dwFileAttributes;
    entry.ftLastAccessTime = record.ftLastAccessTime;
    entry.ftLastWriteTime = record.ftLastWriteTime;
    entry.nFileSizeHigh = record.nFileSizeHigh;
    entry.nFileSizeLow = record.nFileSizeLow;
    return entry;
}

// For a file that exists but may not be opened: what its folder says about it. The target of a link is
// unknown.
std::optional<FileInformation> informationOfClosed(const std::wstring& path) {
    const std::optional<WIN32_FIND_DATAW> entry = ownEntry(path);
    if (!entry || isLink(entry->dwFileAttributes, entry->dwReserved0)) {
        return std::nullopt;
    }
    FileInformation result;
    result.facts = factsOf(*entry);
    result.isRegular = !result.facts.isFolder;
    return result;
}

// With links followed.
Handle openForFacts(const std::wstring& path) {
    return Handle(::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

} // namespace

std::optional<FileInformation> informationOf(const std::wstring& path) {
    const Handle file = openForFacts(path);
    if (!file.isOpen()) {
        return ::GetLastError() == ERROR_ACCESS_DENIED ? informationOfClosed(path) : std::nullopt;
    }
    BY_HANDLE_FILE_INFORMATION record{};
    if (::GetFileType(file.get()) != FILE_TYPE_DISK ||
        ::GetFileInformationByHandle(file.get(), &record) == 0) {
        return FileInformation{};
    }
    record.dwFileAttributes &= ~static_cast<DWORD>(FILE_ATTRIBUTE_REPARSE_POINT); // the link was followed
    FileInformation result;
    result.facts = factsOfRecord(record, 0);
    result.isRegular = !result.facts.isFolder;
    result.volume = record.dwVolumeSerialNumber;
    result.number = static_cast<std::uint64_t>(record.nFileIndexHigh) << 32 | record.nFileIndexLow;
    return result;
}

DWORD nameCount(const std::wstring& path) {
    const Handle file = openForFacts(path);
    FILE_STANDARD_INFO found{};
    const bool isKnown = file.isOpen() && ::GetFileInformationByHandleEx(file.get(), FileStandardInfo, &found,
                                                                         sizeof found) != 0;
    return isKnown ? found.NumberOfLinks : 0;
}

EntryFacts factsOf(const FILE_FULL_DIR_INFO& entry) {
    return factsOfListed(entry);
}

EntryFacts factsOf(const FILE_ID_BOTH_DIR_INFO& entry) {
    EntryFacts facts = factsOfListed(entry);
    constexpr LONGLONG noNumber = -1; // of file systems that cannot tell it in so many bits
    const bool isNumbered = !facts.isFolder && entry.FileId.QuadPart != noNumber;
    facts.number = isNumbered ? static_cast<std::uint64_t>(entry.FileId.QuadPart) : 0;
    return facts;
}

EntryFacts factsOf(const WIN32_FIND_DATAW& entry) {
    return factsOfRecord(entry, entry.dwReserved0); // a reparse point's tag
}

bool isLink(const std::wstring& path) {
    const std::optional<WIN32_FIND_DATAW> entry = ownEntry(path);
    return entry && isLink(entry->dwFileAttributes, entry->dwReserved0);
}

std::optional<EntryFacts> ownFacts(const std::wstring& path) {
    const std::optional<WIN32_FIND_DATAW> entry = ownEntry(path);
    return entry ? std::optional(factsOf(*entry)) : std::nullopt;
}

} // namespace platform
