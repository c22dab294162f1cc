#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/linux/folderCalls.h"
#include "platform/linux/volumeProcess.h"

// The calls of folderCalls.h on volumes that may never answer (platform/answering.h). They are made by
// another process. A volume that does not answer gives ETIMEDOUT.
namespace platform {

// True if the native path leads, or could lead through links, to such a volume.
[[nodiscard]] bool couldHang(std::string_view native);

class VolumeCalls {
public:
    // The path tells which volume; all calls of an object are on it.
    explicit VolumeCalls(std::string_view native);
    ~VolumeCalls();
    VolumeCalls(const VolumeCalls&) = delete;
    VolumeCalls& operator=(const VolumeCalls&) = delete;

    // From here on, reads below the other's start.
    void startWith(const VolumeCalls& other) { start_ = other.start_; }

    // Below a start, a pause may last longer. ECANCELED if goesOn says no.
    int startAt(const std::string& native);
    int read(const std::string& native, const TakeEntry& take);
    int readNames(const std::string& native, const TakeEntry& take);
    int list(const std::string& native, const TakeName& take);
    int facts(const std::string& native, std::span<const std::string_view> names, const TakeEntry& take);
    int folderStatus(const std::string& native, EntryFacts& facts);
    int entryStatus(const std::string& native, EntryFacts& facts);
    int tryToOpen(const std::string& native);
    int tryToRead(const std::string& native);
    int resolve(const std::string& native, std::string& path);

    void setGoesOn(std::function<bool()> goesOn) { goesOn_ = std::move(goesOn); }

private:
    int askWithinWalk(char call, const std::string& native, std::string_view rest,
                      const VolumeProcess::Piece& take);
    int ask(char call, const std::string& request, const VolumeProcess::Piece& take,
            std::chrono::milliseconds longestPause);

    std::string volume_;
    std::unique_ptr<VolumeProcess> process_;
    std::string start_; // if there is one, the process keeps it open
    std::function<bool()> goesOn_;
};

} // namespace platform
