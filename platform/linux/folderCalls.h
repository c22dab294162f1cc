#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/folders.h"
#include "platform/linux/descriptor.h"

// The system's calls on folders, by absolute native paths without a "/" at the end. They wait for the volume
// for as long as it takes. Results are 0 or the system's error code.
struct stat;

namespace platform {

// Takes an entry's facts and its native name.
using TakeEntry = std::function<void(const EntryFacts&, const char*)>;

// Opens what a path leads to, from an open folder.
using OpenFrom = Descriptor (*)(int start, const char* path, int flags);

// Opens folders by paths of any length. A path that is too long for the system is opened in pieces; the
// descriptors of the pieces are kept for the next path that begins the same way.
class LongPathOpener {
public:
    explicit LongPathOpener(OpenFrom how) : open_(how) {}

    // From here on, paths start from this folder.
    void startFrom(std::shared_ptr<const Descriptor> folder);
    [[nodiscard]] const std::shared_ptr<const Descriptor>& startFolder() const noexcept { return start_; }

    // Not open, with errno set, if that fails.
    Descriptor open(std::string_view native, int flags);

private:
    struct Piece {
        std::string path;
        Descriptor folder;
    };

    [[nodiscard]] int start() const;

    OpenFrom open_;
    std::shared_ptr<const Descriptor> start_;
    std::vector<Piece> pieces_;
    std::string rest_;
};

// What is known of an entry before it is asked for its facts.
enum class NameKind : char {
    folder = 'd',
    mountPoint = 'm', // which is not asked for its facts, as what is mounted there may not answer
    other = 'o'
};
using TakeName = std::function<void(NameKind kind, const char* name)>;

// Reads folders as FolderReader does.
class FolderCalls {
public:
    FolderCalls();

    int startAt(const std::string& native);
    // From here on, reads below the other's start.
    void startWith(const FolderCalls& other);

    int read(const std::string& native, const TakeEntry& take);

    int readNames(const std::string& native, const TakeEntry& take);

    // The same folder as `read` in two steps: its names, then their facts, each in the order of the names. Of
    // a name that is gone, the facts' error is ENOENT.
    int list(const std::string& native, const TakeName& take);
    int facts(const std::string& native, std::span<const std::string_view> names, const TakeEntry& take);

    void setGoesOn(std::function<bool()> goesOn) {
        goesOn_ = std::move(goesOn);
        lastLook_ = std::chrono::steady_clock::now();
    }

    // Has the facts of a large folder's entries asked for by several threads (FolderReader::Distribute).
    using Distribute =
        std::function<bool(std::size_t count, const std::function<void(std::size_t part)>& work)>;
    void setDistribute(Distribute distribute) { distribute_ = std::move(distribute); }

private:
    static constexpr std::size_t bufferSize = std::size_t{64} << 10;
    using MountPoints = std::map<std::string, std::set<std::string, std::less<>>, std::less<>>;

    Descriptor open(const std::string& native, int flags = 0);
    void noteMountPoints(const std::string& native);
    [[nodiscard]] NameKind kindOf(const std::string& folder, const char* name, unsigned char type) const;
    [[nodiscard]] bool mayGoOn();
    template <class TakeRecords>
    int forEachBuffer(const Descriptor& folder, TakeRecords take);
    template <class Take>
    int forEachEntry(const Descriptor& folder, Take take);
    int distribute(const std::shared_ptr<const Descriptor>& folder, const std::string& native,
                   std::string_view records, const TakeEntry& take);

    LongPathOpener opener_; // for folders outside of the start
    std::string start_;     // with "/" at its end; empty if there is none
    LongPathOpener beneathStart_;
    MountPoints mountPoints_;            // names, by folder
    std::shared_ptr<Descriptor> folder_; // of the last one read; kept for its memory
    std::function<bool()> goesOn_;
    std::chrono::steady_clock::time_point lastLook_; // whether to go on
    unsigned entriesSinceLook_ = 0;
    Distribute distribute_;
    alignas(std::max_align_t) std::array<char, bufferSize> buffer_;
};

[[nodiscard]] EntryFacts factsOf(const struct stat& status);

// With links followed. Paths may be of any length.
int folderStatus(const std::string& native, EntryFacts& facts);

// Without following a link at the end.
int entryStatus(const std::string& native, EntryFacts& facts);

int tryToOpen(const std::string& native);

// Opens the folder and reads its first entries.
int tryToRead(const std::string& native);

} // namespace platform
