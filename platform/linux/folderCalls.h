#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/folders.h"
#include "platform/linux/descriptor.h"

// The system's calls on folders, by absolute native paths without a "/" at the end. They wait for the volume
// for as long as it takes. Results are 0 or the system's error code.
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
    void startFrom(Descriptor folder);

    // Not open, with errno set, if that fails.
    Descriptor open(std::string_view native, int flags);

private:
    struct Piece {
        std::string path;
        Descriptor folder;
    };

    [[nodiscard]] int start() const;

    OpenFrom open_;
    Descriptor start_;
    std::vector<Piece> pieces_;
    std::string rest_;
};

// Reads folders as FolderReader does.
class FolderCalls {
public:
    FolderCalls();

    // Mount points below the start are not asked for their facts, as what is mounted there may not answer.
    int startAt(const std::string& native);
    int read(const std::string& native, const TakeEntry& take);

    int readNames(const std::string& native, const TakeEntry& take);

    void setGoesOn(std::function<bool()> goesOn) { goesOn_ = std::move(goesOn); }

private:
    static constexpr std::size_t bufferSize = std::size_t{64} << 10;

    Descriptor open(const std::string& native);
    void noteMountPoints(const std::string& native);
    template <class Take>
    int forEachEntry(const Descriptor& folder, Take take);

    LongPathOpener opener_; // for folders outside of the start
    std::string start_;     // with "/" at its end; empty if there is none
    LongPathOpener beneathStart_;
    std::map<std::string, std::set<std::string, std::less<>>, std::less<>> mountPoints_; // names, by folder
    std::function<bool()> goesOn_;
    alignas(std::max_align_t) std::array<char, bufferSize> buffer_;
};

// With links followed. Paths may be of any length.
int folderStatus(const std::string& native, EntryFacts& facts);

// Without following a link at the end.
int entryStatus(const std::string& native, EntryFacts& facts);

int tryToOpen(const std::string& native);

// Opens the folder and reads its first entries.
int tryToRead(const std::string& native);

} // namespace platform
