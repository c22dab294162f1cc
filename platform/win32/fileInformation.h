#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "platform/folders.h"

namespace platform {

// The facts that an opened file gives about itself.
struct FileInformation {
    EntryFacts facts;
    bool isRegular = false; // neither folder nor device
    DWORD volume = 0;       // identifies a file together with the number
    std::uint64_t number = 0;
};

// With links followed; nothing if there is no such file. A file that may not be opened has no number.
[[nodiscard]] std::optional<FileInformation> informationOf(const std::wstring& path);

// How many names the file has, in any folders; 0 if it may not be opened. Unlike informationOf(), it does
// not ask for the volume.
[[nodiscard]] DWORD nameCount(const std::wstring& path);

// The facts in a find record and in those of a listed folder. A link (a junction, a mount point, a symbolic
// link) is not a folder.
[[nodiscard]] EntryFacts factsOf(const WIN32_FIND_DATAW& entry);
[[nodiscard]] EntryFacts factsOf(const FILE_FULL_DIR_INFO& entry);
[[nodiscard]] EntryFacts factsOf(const FILE_ID_BOTH_DIR_INFO& entry);

// True for a link of any kind.
[[nodiscard]] bool isLink(const std::wstring& path);

// An entry's own facts, without following links; nothing if there is no such entry.
[[nodiscard]] std::optional<EntryFacts> ownFacts(const std::wstring& path);

} // namespace platform
