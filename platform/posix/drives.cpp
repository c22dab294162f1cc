#include "platform/drives.h"

#include <sys/stat.h>

#include <algorithm>
#include <set>

#include "platform/posix/volumes.h"

namespace platform {

namespace {

bool isFolder(const std::string& nativePath) {
    struct stat status {};
    return ::stat(nativePath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::vector<std::string> sharesOf(const MountTable& table) {
    std::set<std::string> shares; // one may be mounted at several places
    for (const Mount& mount : table.mounts()) {
        shares.insert(mount.share());
    }
    shares.erase(std::string());
    return {shares.begin(), shares.end()};
}

} // namespace

// The system's root is always there, though in a chroot the table does not tell of it.
std::optional<std::string> logicalDriveStrings() {
    const MountTable table = MountTable::read();
    if (table.mounts().empty()) {
        return std::nullopt;
    }
    std::string roots;
    for (const Mount& volume : localVolumes(table, isFolder)) {
        roots.append(volume.driveRoot()).push_back('\0');
    }
    for (const std::string& share : sharesOf(table)) {
        roots.append(share).push_back('\0');
    }
    constexpr std::string_view rootEntry("/\\\0", 3);
    return roots.starts_with(rootEntry) ? roots : std::string(rootEntry) + roots;
}

int driveType(std::string_view root) {
    const MountTable table = MountTable::read();
    const std::vector<Mount>& mounts = table.mounts();
    if (mounts.empty()) {
        return drive::unknown;
    }
    const auto found = std::find_if(mounts.begin(), mounts.end(), [&](const Mount& mount) {
        return !mount.isKernelFileSystem() && mount.driveRoot() == root;
    });
    if (found == mounts.end()) {
        return root == "/\\" ? drive::fixed : drive::noRoot;
    }
    return driveTypeOf(*found, "/sys");
}

std::vector<std::string> networkShares() {
    return sharesOf(MountTable::read());
}

} // namespace platform
