#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/posix/mountTable.h"

namespace platform {

// The mounts that are drives of this machine, one per volume, by mount point (platform/drives.h says which).
// Network shares are none. `isFolder` tells of a native path; it is asked of nothing on the network.
[[nodiscard]] std::vector<Mount> localVolumes(const MountTable& table,
                                              const std::function<bool(const std::string&)>& isFolder);

// The kind of drive (platform/drives.h) that a mount is. `sysRoot` is the place of /sys, without trailing
// "/".
[[nodiscard]] int driveTypeOf(const Mount& mount, const std::string& sysRoot);

} // namespace platform
