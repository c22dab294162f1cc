#include "platform/linux/volumes.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <initializer_list>
#include <optional>
#include <tuple>

#include "platform/drives.h"
#include "platform/linux/realPath.h"

namespace platform {

namespace {

bool isOneOf(std::string_view type, std::initializer_list<std::string_view> types) {
    return std::find(types.begin(), types.end(), type) != types.end();
}

bool isMemory(const Mount& mount) {
    return isOneOf(mount.type, {"tmpfs", "ramfs"});
}

// The system's own data, kept in memory.
bool isSystems(std::string_view mountPoint) {
    if (mountPoint == "/dev/shm") {
        return false;
    }
    constexpr std::array<std::string_view, 4> places{"/dev", "/proc", "/run", "/sys"};
    return std::any_of(places.begin(), places.end(), [&](std::string_view place) {
        return mountPoint.starts_with(place) &&
               (mountPoint.size() == place.size() || mountPoint[place.size()] == '/');
    });
}

// A view of files that are elsewhere, or the content of an installed package.
bool isView(const Mount& mount) {
    if (isOneOf(mount.type, {"fuse.gvfsd-fuse", "fuse.portal", "fuse.lxcfs", "fuse.snapfuse"})) {
        return true;
    }
    return (mount.type == "overlay" && !mount.mountPoint.empty()) ||
           (mount.type == "squashfs" && mount.source.starts_with("/dev/loop"));
}

std::string baseName(std::string_view path) {
    return std::string(path.substr(path.rfind('/') + 1));
}

// The folder below /sys of the whole disk that contains the mount. A file system on several devices (btrfs)
// has no number there, but its source is one of them.
std::optional<std::string> diskFolder(const Mount& mount, const std::string& sysRoot) {
    std::optional<std::string> folder = realPath(sysRoot + "/dev/block/" + mount.device);
    if (!folder && mount.source.starts_with("/dev/")) {
        folder =
            realPath(sysRoot + "/class/block/" + baseName(realPath(mount.source).value_or(mount.source)));
    }
    if (folder && realPath(*folder + "/partition")) {
        folder->resize(folder->rfind('/')); // a partition is below its disk
    }
    return folder;
}

} // namespace

std::vector<Mount> localVolumes(const MountTable& table,
                                const std::function<bool(const std::string&)>& isFolder) {
    std::vector<Mount> volumes;
    for (const Mount& mount : table.mounts()) {
        const bool counts = !mount.isKernelFileSystem() && mount.share().empty() && !isView(mount) &&
                            !(isMemory(mount) && isSystems(mount.mountPoint));
        const bool isPart = mount.root != "/" && !mount.mountPoint.empty();
        if (counts && (!isPart || mount.mayNotAnswer() || isFolder(mount.mountPoint))) {
            volumes.push_back(mount);
        }
    }
    // The mount that shows most of a volume comes first and is kept.
    const auto volumeAndSize = [](const Mount& mount) {
        return std::tuple(std::string_view(mount.device), std::string_view(mount.subvolume),
                          mount.root.size(), mount.mountPoint.size(), std::string_view(mount.mountPoint));
    };
    std::sort(volumes.begin(), volumes.end(), [&](const Mount& left, const Mount& right) {
        return volumeAndSize(left) < volumeAndSize(right);
    });
    const auto same = [](const Mount& left, const Mount& right) {
        return left.device == right.device && left.subvolume == right.subvolume;
    };
    volumes.erase(std::unique(volumes.begin(), volumes.end(), same), volumes.end());
    std::sort(volumes.begin(), volumes.end(),
              [](const Mount& left, const Mount& right) { return left.mountPoint < right.mountPoint; });
    return volumes;
}

int driveTypeOf(const Mount& mount, const std::string& sysRoot) {
    if (!mount.share().empty()) {
        return drive::remote;
    }
    if (isMemory(mount)) {
        return drive::ramDisk;
    }
    if (isOneOf(mount.type, {"iso9660", "udf"})) {
        return drive::cdRom;
    }
    const std::optional<std::string> disk = diskFolder(mount, sysRoot);
    if (!disk) {
        return drive::fixed;
    }
    const std::string name = baseName(*disk);
    if (name.starts_with("sr")) {
        return drive::cdRom;
    }
    if (name.starts_with("zram") || name.starts_with("ram")) {
        return drive::ramDisk;
    }
    char removable = '0';
    std::ifstream(*disk + "/removable") >> removable;
    return removable == '1' ? drive::removable : drive::fixed;
}

} // namespace platform
