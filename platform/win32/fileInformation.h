#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "platform/folders.h"

namespace platform {

// What an opened file says of itself.
struct FileInformation {
    EntryFacts facts;
    bool isRegular = false; // neither a folder nor a device
    DWORD volume = 0;       // together with the number it tells files apart
    std::uint64_t number = 0;
};

// Links followed; nothing when nothing is there. What may not be opened has no number.
[[nodiscard]] std::optional<FileInformation> informationOf(const std::wstring& path);

// The facts in a find record. A link (a junction, a mount point, a symbolic link) is no folder.
[[nodiscard]] EntryFacts factsOf(const WIN32_FIND_DATAW& entry);

// True for a link, to whatever.
[[nodiscard]] bool isLink(const std::wstring& path);

// An entry's own facts, links not followed; nothing when there is none.
[[nodiscard]] std::optional<EntryFacts> ownFacts(const std::wstring& path);

} // namespace platform
