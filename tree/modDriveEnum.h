#pragma once

#include <QString>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/drives.h"

class FolderTree;

// The drives below the tree's computer node. Each function traps its errors and logs them.
namespace modDriveEnum {

// The source of the drives: the system, unless a test provides another.
struct DriveSource {
    std::function<std::vector<std::string>()> driveRoots = platform::driveRoots;
    std::function<int(std::string_view)> driveType = platform::driveType;
};

// Adds a node for each drive, with its root as the key, as the parent's last children. Network drives are
// left out, because they have their own branch. Stops at an error, such as a key that already exists.
void enumerateLocalDrives(std::string_view parentNode, FolderTree& tree, const DriveSource& source = {});

// The roots of all drives; none if the list is not available.
[[nodiscard]] std::vector<std::string> driveRoots(const DriveSource& source = {});

// The same as one text, each followed by NUL.
[[nodiscard]] std::string getDriveString(const DriveSource& source = {});

// "Hard Drive", "Network", …; empty for an unknown type.
[[nodiscard]] QString getDriveDescription(std::string_view drive, const DriveSource& source = {});

} // namespace modDriveEnum
