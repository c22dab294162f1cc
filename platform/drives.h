#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The machine's drives: letters on Windows, mounted volumes on Linux. Roots are internal paths
// (platform/paths.h).
namespace platform {

// The values that driveType returns.
namespace drive {
inline constexpr int unknown = 0; // the kind of volume is not known
inline constexpr int noRoot = 1;  // nothing is mounted there
inline constexpr int removable = 2;
inline constexpr int fixed = 3;
inline constexpr int remote = 4;
inline constexpr int cdRom = 5;
inline constexpr int ramDisk = 6;
} // namespace drive

// The roots of all drives: the root volume first, then the others by mount point, then
// the network shares. None if the list is not available.
//
// There is one root per volume: a volume that is mounted several times, wholly or in part, counts once (a
// btrfs subvolume is a volume). Left out are kernel file systems, files mounted on files, the system's own
// memory file systems below /dev, /proc, /run and /sys (but not /dev/shm), overlays other than the root, the
// images of installed packages, and the desktop's views of other places.
[[nodiscard]] std::vector<std::string> driveRoots();

// The kind of the drive with that root.
[[nodiscard]] int driveType(std::string_view root);

// The room on a drive, in bytes. What the system keeps for itself counts neither as used nor as free.
struct DriveSpace {
    double total = 0;
    double used = 0;
    double free = 0;
};

// Nothing if it is not known, as for network drives: those are not asked, because their answer may take long.
[[nodiscard]] std::optional<DriveSpace> driveSpace(std::string_view root);

// The roots `\\server\share\` of the mounted network shares, in alphabetical order.
[[nodiscard]] std::vector<std::string> networkShares();

} // namespace platform
