#include "platform/drives.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <set>

#include "platform/linux/volumes.h"
#include "platform/paths.h"

namespace platform {

namespace {

constexpr std::string_view systemRoot = "/\\"; // which the table may lack, as in a chroot

bool isFolder(const std::string& nativePath) {
    struct stat status {};
    return ::stat(nativePath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::vector<std::string> sharesOf(const MountTable& table) {
    std::set<std::string> shares; // a share may be mounted at several places
    for (const Mount& mount : table.mounts()) {
        shares.insert(mount.share());
    }
    shares.erase(std::string());
    return {shares.begin(), shares.end()};
}

} // namespace

// The root volume is always listed, even if the table lacks it, as in a chroot.
std::vector<std::string> driveRoots() {
    const MountTable table = MountTable::read();
    if (table.mounts().empty()) {
        return {};
    }
    std::vector<std::string> roots;
    for (const Mount& volume : localVolumes(table, isFolder)) {
        roots.push_back(volume.driveRoot());
    }
    const std::vector<std::string> shares = sharesOf(table);
    roots.insert(roots.end(), shares.begin(), shares.end());
    if (roots.empty() || roots.front() != systemRoot) {
        roots.insert(roots.begin(), std::string(systemRoot));
    }
    return roots;
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
        return root == systemRoot ? drive::fixed : drive::noRoot;
    }
    return driveTypeOf(*found, "/sys");
}

// A file system that is a program may take long to answer, too.
std::optional<DriveSpace> driveSpace(std::string_view root) {
    const MountTable table = MountTable::read();
    const auto& mounts = table.mounts();
    const bool isAnswered =
        root == systemRoot || std::any_of(mounts.begin(), mounts.end(), [&](const Mount& mount) {
            return !mount.isKernelFileSystem() && !mount.mayNotAnswer() && mount.driveRoot() == root;
        });
    struct statvfs facts {};
    if (!isAnswered || ::statvfs(toNative(root).c_str(), &facts) != 0 || facts.f_blocks == 0) {
        return std::nullopt;
    }
    const auto unit = static_cast<double>(facts.f_frsize);
    const double used = static_cast<double>(facts.f_blocks - facts.f_bfree) * unit;
    const double free = static_cast<double>(facts.f_bavail) * unit;
    return DriveSpace{used + free, used, free};
}

std::vector<std::string> networkShares() {
    return sharesOf(MountTable::read());
}

} // namespace platform
