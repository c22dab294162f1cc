#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/clock.h"
#include "platform/locale.h"

// Reading folders. Failures are results here, not errors: an unreadable folder is empty. So is one on a
// volume that does not answer (platform/answering.h).
namespace platform {

// The system's facts about one entry itself; links are not followed.
struct EntryFacts {
    bool isFolder = false;       // false for a link to a folder
    bool known = false;          // false if only the name is known; the other facts are then 0
    std::int64_t size = 0;       // bytes
    Seconds accessed = 0;        // last access
    Seconds modified = 0;        // last write
    std::uint32_t owner = 0;     // the system's number for the owning account, if it has one (owners.h)
    std::int32_t error = 0;      // the system's code for why a listed entry is not known
    std::int64_t sizeOnDisk = 0; // bytes allocated; on Windows 0 for a folder
    // Identify a file that may have further names (hard links); else the number is 0.
    std::uint64_t volume = 0;
    std::uint64_t number = 0;
};

// The same in the system's words ("Permission denied").
[[nodiscard]] std::string whyUnknown(const EntryFacts& facts);

struct FolderEntry : EntryFacts {
    std::string_view name; // internal form (paths.h)
};

// The entries of one folder, without "." and "..", in the system's order. Reuse an object for many folders:
// it keeps its memory.
class FolderListing {
public:
    [[nodiscard]] std::size_t size() const noexcept { return items_.size(); }
    [[nodiscard]] FolderEntry operator[](std::size_t index) const;

    void clear() noexcept;

    // What it takes in memory, about.
    [[nodiscard]] std::size_t bytes() const noexcept { return names_.size() + items_.size() * sizeof(Item); }

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

// Opens, reads and closes folders. Paths may be longer than the system accepts in one call.
//
// A walk reads its start first, with `isStart`. From then on, folders below it are read only if they can be
// reached without a link and without leaving the volume, whatever becomes of the folders on the way there
// meanwhile. For this the start itself stays open on Linux, nothing else does.
class FolderReader {
public:
    FolderReader();
    ~FolderReader();
    FolderReader(const FolderReader&) = delete;
    FolderReader& operator=(const FolderReader&) = delete;

    // One more for the same walk, whose start this one has read; for another thread. It has neither the
    // function of setGoesOn nor that of setDistribute.
    [[nodiscard]] std::unique_ptr<FolderReader> another() const;

    // Fills the listing with the folder's entries. False if the folder cannot be read (no permission,
    // vanished, not a folder); the listing then has the entries read so far. `isStart`: the path may lead
    // through links, even at its end. Of a mount point below the start, only name and isFolder are known.
    bool read(std::string_view internalFolder, FolderListing& listing, bool isStart = false);

    // Whether the start that was read is on a volume that may never answer (answering.h), also where only a
    // link leads there.
    [[nodiscard]] bool mayNotAnswer() const;

    // A function that is called now and then while a large folder is read, and while the volume does not
    // answer. If it returns false, reading ends there as if the folder could not be read.
    void setGoesOn(std::function<bool()> goesOn);

    // Does one part of the work on a large folder. Several threads can do parts at once, each with a reader
    // of its own for the same walk.
    using Work = std::function<void(std::size_t part, FolderReader& reader)>;

    // Has parts 0 to count - 1 done, and returns true when all are. False if it gave up; parts may then still
    // run, and reading ends there as if the folder could not be read.
    using Distribute = std::function<bool(std::size_t count, const Work& work)>;

    // Without such a function, the reader does all the work itself.
    void setDistribute(Distribute distribute);

    // Whether what is needed to look up owners (owners.h) is read with the entries' facts.
    void setWithOwners(bool withOwners);

    // Whether the last failure was a lack of memory or open files, which may be over at the next try.
    [[nodiscard]] bool lacksResources() const;

    // Only the names and isFolder, which is cheaper.
    bool readNames(std::string_view internalFolder, FolderListing& listing);

    // Why the last folder could not be read, in the system's words ("Permission denied"). Call it only after
    // a failure.
    [[nodiscard]] std::string failure() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

// True if the path leads to a folder, possibly through a link.
[[nodiscard]] bool folderExists(std::string_view internalPath);

// The path by which a folder is recorded: on its own drive and, on Linux, without links, as the same folder
// could otherwise be recorded by several paths. Ends in "\". The path itself if there is no such folder.
[[nodiscard]] std::string recordedPath(std::string_view internalFolder);

// An entry's own facts, without following links; `known` is false if there is no such entry.
[[nodiscard]] EntryFacts entryFacts(std::string_view internalPath);

// Whether both paths are names of one file (hard links).
[[nodiscard]] bool areNamesOfOneFile(std::string_view left, std::string_view right);

// Whether a file whose facts have a number does have several names.
[[nodiscard]] bool hasFurtherNames(std::string_view internalPath);

// The folder's own facts, with links followed; nothing if there is no such folder.
[[nodiscard]] std::optional<EntryFacts> folderFacts(std::string_view internalFolder);

// Why it cannot be found out whether the path exists, in the system's words ("Permission denied", "Too many
// open files"); empty if it can.
[[nodiscard]] std::string whyHidden(std::string_view internalPath);

// The reason, in the system's words, why the folder cannot be read now ("Permission denied"); empty if it can
// be read.
[[nodiscard]] std::string whyUnreadable(std::string_view internalFolder);

// Internal paths without a trailing "\".
using PathSet = std::unordered_set<std::string, NameHash, NameEqual>;

// The mount points of other volumes below the folder, as paths on the folder's own volume. On Linux, a file
// may be one, too; on Windows, the entry of one is not a folder.
[[nodiscard]] PathSet mountPointsBelow(std::string_view internalFolder);

} // namespace platform
