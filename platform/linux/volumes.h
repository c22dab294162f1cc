#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/linux/mountTable.h"

namespace platform {

// The mounts that are drives of this machine, one per volume, ordered by mount point (see platform/drives.h).
// Network shares are not included. `isFolder` tests the native path where part of a
// volume is mounted, which may be a file. No volume that may not answer is asked.
[[nodiscard]] std::vector<Mount> localVolumes(const MountTable& table,
                                              const std::function<bool(const std::string&)>& isFolder);

// The kind of drive (platform/drives.h) of a mount. `sysRoot` is the location of /sys, without a trailing
// "/".
[[nodiscard]] int driveTypeOf(const Mount& mount, const std::string& sysRoot);

} // namespace platform
