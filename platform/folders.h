#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/clock.h"

// Reading folders. Failures are results here, not errors: a folder that cannot be read is empty.
namespace platform {

// What the system says of one entry itself; links are not followed.
struct EntryFacts {
    bool isFolder = false;   // a link to a folder is none
    bool known = false;      // false when only the name could be had: the rest is 0 then
    std::int64_t size = 0;   // bytes
    Seconds accessed = 0;    // last access
    Seconds modified = 0;    // last write
    std::uint32_t owner = 0; // the system's number of the owning account, where it has one (owners.h)
};

struct FolderEntry : EntryFacts {
    std::string_view name; // internal form (paths.h)
};

// The entries of one folder in the system's order, without "." and "..". An object is meant to be used for
// many folders: it keeps its memory.
class FolderListing {
public:
    [[nodiscard]] std::size_t size() const noexcept { return items_.size(); }
    [[nodiscard]] FolderEntry operator[](std::size_t index) const;

    void clear() noexcept;

private:
    friend class FolderReader;
    struct Item : EntryFacts {
        std::size_t nameStart = 0;
        std::size_t nameLength = 0;
    };
    void append(const EntryFacts& facts, std::string_view nativeName);

    std::string names_;
    std::vector<Item> items_;
};

// Opens, reads and closes folders; nothing of a folder is open once `read` has returned. Paths may be longer
// than what the system takes in one call.
class FolderReader {
public:
    FolderReader();
    ~FolderReader();
    FolderReader(const FolderReader&) = delete;
    FolderReader& operator=(const FolderReader&) = delete;

    // Fills the listing with the folder's entries. False when it cannot be read (no permission, vanished, no
    // folder); the listing then holds what was read so far. `followLink`: the path may be a link to the
    // folder.
    bool read(std::string_view internalFolder, FolderListing& listing, bool followLink = false);

    // The names alone with their isFolder, which is cheaper.
    bool readNames(std::string_view internalFolder, FolderListing& listing);

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

// True when the path names a folder, or a link to one.
[[nodiscard]] bool folderExists(std::string_view internalPath);

// An entry's own facts, links not followed; `known` is false when there is none.
[[nodiscard]] EntryFacts entryFacts(std::string_view internalPath);

// The folder's own facts, links followed; nothing when there is none.
[[nodiscard]] std::optional<EntryFacts> folderFacts(std::string_view internalFolder);

// True when what is at the path cannot be told, for a folder above it may not be entered.
[[nodiscard]] bool mayNotEnter(std::string_view internalPath);

// Why the folder cannot be read now, for people ("Permission denied"); empty when it can be.
[[nodiscard]] std::string whyUnreadable(std::string_view internalFolder);

// The folders below the given one that other volumes are mounted on, as internal paths of that folder's own
// volume, without trailing "\".
[[nodiscard]] std::unordered_set<std::string> mountPointsBelow(std::string_view internalFolder);

} // namespace platform
