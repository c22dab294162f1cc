#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

// One line of the system's table of mounted file systems.
struct Mount {
    std::string mountPoint; // native, without trailing "/" (the root is empty)
    std::string type;       // ext4, nfs4, proc, …
    std::string source;     // /dev/sda1, //server/share, server:/export, …
    std::string device;     // its number: 8:1
    std::string root;       // what of the file system is mounted: "/" for all of it
    std::string subvolume;  // btrfs: which one, as a path

    // Kernel file systems hold no files of anybody's: they are no drives.
    [[nodiscard]] bool isKernelFileSystem() const;
    // `\\server\share\` for a network share whose source names its server, else empty.
    [[nodiscard]] std::string share() const;
    // The internal path of its root: the share, or the mount point followed by "\".
    [[nodiscard]] std::string driveRoot() const;
};

class MountTable {
public:
    // As the system has it now; a table it cannot give is empty.
    [[nodiscard]] static MountTable read();
    // From text in the form of /proc/self/mountinfo. Of several at one mount point the last is on top.
    [[nodiscard]] static MountTable parse(std::string_view text);

    [[nodiscard]] const std::vector<Mount>& mounts() const noexcept { return mounts_; }

    // The volume that a native absolute path lies on; null when the table does not tell.
    [[nodiscard]] const Mount* volumeOf(std::string_view nativePath) const;
    [[nodiscard]] bool hasVolumeAt(std::string_view mountPoint) const;
    [[nodiscard]] const Mount* shareAt(std::string_view driveRoot) const;

private:
    std::vector<Mount> mounts_;
};

} // namespace platform
