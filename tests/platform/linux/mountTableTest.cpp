#include "platform/linux/mountTable.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(MountTable, makesSharesOfWhatNamesAServer) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"cifs", "//server/share/deep/", "\\\\server\\share/deep\\"},
        {"cifs", "server:/share", ""},
        {"nfs4", "[fe80::1]:/", "\\\\[fe80::1]\\/\\"},
        {"nfs", "nowhere", ""},
        {"ceph", "10.0.0.1:6789:/data", "\\\\10.0.0.1:6789\\data\\"},
        {"fuse.glusterfs", "server:/volume", "\\\\server\\volume\\"},
        {"fuse.sshfs", "me@host:/srv/x", "\\\\me@host\\srv/x\\"},
        {"fuse.sshfs", "me@host:srv", "\\\\me@host\\~/srv\\"}, // differs from the one above it
        {"fuse.sshfs", "host:", "\\\\host\\~\\"},
        {"fuse", "https://cloud.example/dav/me/", "\\\\cloud.example\\dav/me\\"},
        {"9p", "hostshare", ""},
        {"ext4", "/dev/sda1", ""},
    };
    for (const auto& [type, source, share] : cases) {
        Mount mount;
        mount.type = type;
        mount.source = source;
        EXPECT_EQ(mount.share(), share) << type << ' ' << source;
    }
}

TEST(MountTable, tellsTheVolumeOfAPath) {
    const MountTable table = MountTable::parse("22 1 254:0 / / rw,relatime - ext4 /dev/vda rw\n"
                                               "23 22 0:20 / /proc rw - proc proc rw\n"
                                               "garbage\n"
                                               "24 22 254:1 / /home rw shared:1 - ext4 /dev/vdb rw\n"
                                               "25 22 0:40 / /mnt/my\\040disk rw - tmpfs tmpfs rw\n"
                                               "26 22 0:41 / /mnt/nas rw - cifs //server/share rw\n"
                                               "27 22 0:42 / /mnt/export rw - nfs4 server:/export/deep rw\n"
                                               "28 24 254:9 / /home rw - xfs /dev/vdc rw\n"
                                               "29 30 0:43 / /home/covered/on/it rw - tmpfs tmpfs rw\n"
                                               "30 24 0:44 / /home/covered rw - tmpfs tmpfs rw\n"
                                               "31 28 0:45 / /home/seen rw - tmpfs tmpfs rw\n"
                                               "32 22 0:46 / /mnt/a/m rw - tmpfs tmpfs rw\n"
                                               "33 22 0:47 / /mnt/a rw - tmpfs tmpfs rw\n");
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"/usr/lib", "", "/\\"},
        {"/homework", "", "/\\"},
        {"/home", "/home", "/home\\"},
        {"/home/me", "/home", "/home\\"},
        {"/proc/1", "", "/\\"}, // kernel file systems are not drives
        {"/mnt/my disk/x", "/mnt/my disk", "/mnt/my disk\\"},
        {"/mnt/nas/x", "/mnt/nas", "\\\\server\\share\\"},
        {"/mnt/export", "/mnt/export", "\\\\server\\export/deep\\"},
    };
    for (const auto& [path, mountPoint, root] : cases) {
        const Mount* mount = table.volumeOf(path);
        ASSERT_NE(mount, nullptr) << path;
        EXPECT_EQ(mount->mountPoint, mountPoint) << path;
        EXPECT_EQ(mount->driveRoot(), root) << path;
    }
    EXPECT_EQ(table.volumeOf("/home/me")->type, "xfs") << "the last one mounted is on top";
    EXPECT_FALSE(table.hasVolumeAt("/proc"));
    EXPECT_FALSE(table.hasVolumeAt("/home/covered"));
    EXPECT_FALSE(table.hasVolumeAt("/home/covered/on/it"));
    EXPECT_TRUE(table.hasVolumeAt("/home/seen"));
    EXPECT_FALSE(table.hasVolumeAt("/mnt/a/m")) << "/mnt/a was mounted over it";
    ASSERT_NE(table.shareAt("\\\\server\\share\\"), nullptr);
    EXPECT_EQ(table.shareAt("\\\\server\\other\\"), nullptr);
    EXPECT_EQ(MountTable::parse("").volumeOf("/usr"), nullptr);
}

} // namespace
} // namespace platform
