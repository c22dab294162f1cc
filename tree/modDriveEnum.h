#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/drives.h"

class FolderTree;

// The drives below the tree's computer node. Each routine traps its errors and logs them.
namespace modDriveEnum {

// Who knows the drives: the system, unless a test says otherwise.
struct DriveSource {
    std::function<std::optional<std::string>()> logicalDriveStrings = platform::logicalDriveStrings;
    std::function<int(std::string_view)> driveType = platform::driveType;
};

// Adds a node per drive, whose key is the drive's root, as the parent's last children. Network drives are
// left out; they have a branch of their own. An error, such as a key that is there already, ends it.
void enumerateLocalDrives(std::string_view parentNode, FolderTree& tree, const DriveSource& source = {});

// The roots, each followed by NUL; empty when the list cannot be had.
[[nodiscard]] std::string getDriveString(const DriveSource& source = {});

// The same, taken apart.
[[nodiscard]] std::vector<std::string> driveRoots(const DriveSource& source = {});

// "Hard Drive", "Network", …; empty for a type that is not known of.
[[nodiscard]] QString getDriveDescription(std::string_view drive, const DriveSource& source = {});

} // namespace modDriveEnum
