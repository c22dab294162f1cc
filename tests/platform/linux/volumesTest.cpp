#include "platform/linux/volumes.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "platform/drives.h"
#include "support/temporaryFolder.h"

namespace platform {
namespace {

using testing::ElementsAre;

std::vector<std::string> rootsOf(std::string_view table, std::string_view file = "no file") {
    std::vector<std::string> roots;
    for (const Mount& volume :
         localVolumes(MountTable::parse(table), [&](const std::string& path) { return path != file; })) {
        roots.push_back(volume.driveRoot());
    }
    return roots;
}

TEST(Volumes, areListedOnceEachOnADesktop) {
    EXPECT_THAT(rootsOf("1 0 8:17 / /media/STICK rw - vfat /dev/sdb1 rw\n"
                        "2 0 0:40 /@home /home rw - btrfs /dev/sda2 rw,subvolid=257,subvol=/@home\n"
                        "3 0 0:40 /@ / rw - btrfs /dev/sda2 rw,subvolid=256,subvol=/@,compress=no\n"
                        "4 0 0:40 /@home/me /srv/me rw - btrfs /dev/sda2 rw,subvolid=257,subvol=/@home\n"
                        "5 0 8:33 /backup /a rw - ext4 /dev/sdc1 rw\n"
                        "6 0 8:33 / /mnt/disk rw - ext4 /dev/sdc1 rw\n"
                        "7 0 8:33 / /mnt/again rw - ext4 /dev/sdc1 rw\n"
                        "8 0 7:1 / /snap/core/1 ro - squashfs /dev/loop1 ro\n"
                        "9 0 7:2 / /mnt/image ro - iso9660 /dev/loop2 ro\n"
                        "10 0 0:20 / /proc rw - proc proc rw\n"
                        "11 0 0:21 / /run rw - tmpfs tmpfs rw\n"
                        "12 0 0:22 / /dev/shm rw - tmpfs tmpfs rw\n"
                        "13 0 0:23 / /tmp rw - tmpfs tmpfs rw\n"
                        "14 11 0:24 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n"
                        "15 0 0:25 / /mnt/nas rw - nfs4 nas:/export rw\n"
                        "16 11 8:49 / /run/media/me/USB rw - ext4 /dev/sdd1 rw\n"
                        "17 0 0:26 / /mnt/host rw - 9p hostshare rw\n"
                        "18 0 0:27 / /var/lib/docker/x/merged rw - overlay overlay rw\n"),
                ElementsAre("/\\", "/dev/shm\\", "/home\\", "/media/STICK\\", "/mnt/disk\\", "/mnt/host\\",
                            "/mnt/image\\", "/run/media/me/USB\\", "/tmp\\"));
}

TEST(Volumes, areListedInAContainer) {
    EXPECT_THAT(rootsOf("1 0 0:50 / / rw - overlay overlay rw\n"
                        "2 0 0:51 / /dev rw - tmpfs tmpfs rw\n"
                        "3 0 0:52 / /proc/acpi ro - tmpfs tmpfs ro\n"
                        "4 0 8:1 /docker/hosts /etc/hosts rw - ext4 /dev/sda1 rw\n"
                        "5 0 8:1 /srv/data /data rw - ext4 /dev/sda1 rw\n",
                        "/etc/hosts"),
                ElementsAre("/\\", "/data\\"));
}

TEST(Volumes, tellTheirKind) {
    const TemporaryFolder sys;
    const auto disk = [&](const std::string& name, const std::string& removable) {
        sys.write("devices/" + name + "/removable", removable + "\n");
        sys.write("devices/" + name + "/" + name + "1/partition", "1\n");
    };
    const auto link = [&](const std::string& from, const std::string& to) {
        std::filesystem::create_directories((sys / from).parent_path());
        std::filesystem::create_directory_symlink(sys / ("devices/" + to), sys / from);
    };
    disk("sda", "0");
    disk("sdb", "1");
    disk("sr0", "1");
    disk("zram0", "0");
    link("dev/block/8:1", "sda/sda1");
    link("dev/block/8:16", "sdb");
    link("dev/block/8:17", "sdb/sdb1");
    link("dev/block/11:0", "sr0");
    link("dev/block/252:0", "zram0");
    link("class/block/sdb1", "sdb/sdb1");
    const std::tuple<const char*, const char*, const char*, int> cases[] = {
        {"8:1", "ext4", "/dev/sda1", drive::fixed},
        {"8:17", "vfat", "/dev/sdb1", drive::removable},
        {"8:16", "exfat", "/dev/sdb", drive::removable},
        {"0:40", "btrfs", "/dev/sdb1", drive::removable}, // recognised only by its source
        {"253:0", "ext4", "/dev/mapper/root", drive::fixed},
        {"0:41", "zfs", "pool/home", drive::fixed},
        {"0:42", "overlay", "overlay", drive::fixed},
        {"11:0", "hfs", "/dev/sr0", drive::cdRom},
        {"7:0", "udf", "/dev/loop0", drive::cdRom},
        {"252:0", "ext4", "/dev/zram0", drive::ramDisk},
        {"0:43", "tmpfs", "tmpfs", drive::ramDisk},
        {"0:44", "fuse.sshfs", "me@host:/srv", drive::remote},
        {"0:45", "9p", "hostshare", drive::fixed}, // it names no server, so the network branch cannot show it
    };
    for (const auto& [device, type, source, expected] : cases) {
        Mount mount;
        mount.device = device;
        mount.type = type;
        mount.source = source;
        EXPECT_EQ(driveTypeOf(mount, sys.path().string()), expected) << type << ' ' << source;
    }
}

TEST(Volumes, ofThisMachineBeginWithItsRoot) {
    const std::vector<std::string> roots = driveRoots();
    ASSERT_FALSE(roots.empty());
    EXPECT_EQ(roots.front(), "/\\");
    EXPECT_NE(driveType("/\\"), drive::noRoot);
    EXPECT_EQ(driveType("/no such place\\"), drive::noRoot);
    EXPECT_EQ(driveType("/proc\\"), drive::noRoot);
}

} // namespace
} // namespace platform
