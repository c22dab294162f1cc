#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// One line of the system's table of mounted file systems.
struct Mount {
    std::string id;         // of this mount
    std::string parent;     // id of the mount it stands on
    std::string mountPoint; // native, without trailing "/" (the root is empty)
    std::string type;       // ext4, nfs4, proc, …
    std::string source;     // /dev/sda1, //server/share, server:/export, …
    std::string device;     // its number: 8:1
    std::string root;       // the part of the file system that is mounted: "/" for all of it
    std::string subvolume;  // btrfs: which one, as a path

    // A kernel file system contains nobody's files, so it is not a drive.
    [[nodiscard]] bool isKernelFileSystem() const;
    // True for a network share and for what a program serves. The root is relied on in any case.
    [[nodiscard]] bool mayNotAnswer() const;
    // `\\server\share\` for a network share whose source names its server, otherwise empty.
    [[nodiscard]] std::string share() const;
    // The internal path of its root: the share, or the mount point followed by "\".
    [[nodiscard]] std::string driveRoot() const;
};

class MountTable {
public:
    // The system's current table; empty if it is not available.
    [[nodiscard]] static MountTable read();
    // The same, read only when it has changed; the last one while it cannot be read.
    [[nodiscard]] static std::shared_ptr<const MountTable> current();
    // Reads text in the form of /proc/self/mountinfo. Of several mounts at one mount point, the last is on
    // top; mounts that no path leads to, because a later one covers them, are left out.
    [[nodiscard]] static MountTable parse(std::string_view text);

    [[nodiscard]] const std::vector<Mount>& mounts() const noexcept { return mounts_; }

    // The volume of a native absolute path; null if the table does not have it.
    [[nodiscard]] const Mount* volumeOf(std::string_view nativePath) const;
    [[nodiscard]] bool hasVolumeAt(std::string_view mountPoint) const;
    [[nodiscard]] const Mount* shareAt(std::string_view driveRoot) const;

private:
    static std::optional<MountTable> tryToRead();
    void removeCovered();

    std::vector<Mount> mounts_;
};

} // namespace platform
