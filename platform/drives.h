#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The machine's drives: letters on Windows, mounted volumes on Linux. Roots are internal paths
// (platform/paths.h).
namespace platform {

// The numbers that driveType gives.
namespace drive {
inline constexpr int unknown = 0; // what is mounted cannot be told
inline constexpr int noRoot = 1;  // nothing is mounted there
inline constexpr int removable = 2;
inline constexpr int fixed = 3;
inline constexpr int remote = 4;
inline constexpr int cdRom = 5;
inline constexpr int ramDisk = 6;
} // namespace drive

// The roots of all drives, each followed by NUL: the root volume's first, then by mount point, then the
// network shares'. Nothing when the list cannot be had.
//
// One root per volume: what is mounted a second time, wholly or in part, counts once (a btrfs subvolume is a
// volume). Left out are kernel file systems, files mounted on files, the system's own memory file systems
// below /dev, /proc, /run and /sys (but not /dev/shm), overlays other than the root's, the images of
// installed packages, and the desktop's views of other places.
[[nodiscard]] std::optional<std::string> logicalDriveStrings();

// The kind of drive with that root.
[[nodiscard]] int driveType(std::string_view root);

// The roots `\\server\share\` of the network shares that are mounted, in alphabetical order.
[[nodiscard]] std::vector<std::string> networkShares();

} // namespace platform
