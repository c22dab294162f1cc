// The table of mounts, which whoever may mount something (FUSE) writes part of; in its first line, a path.

#include "fuzz/support/input.h"
#include "fuzz/support/require.h"
#include "platform/linux/mountTable.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::string_view path = input.upTo('\n');
    const platform::MountTable table = platform::MountTable::parse(input.rest());
    for (const platform::Mount& mount : table.mounts()) {
        const std::string root = mount.driveRoot();
        require(root.ends_with('\\') && isUtf8(root), "a drive is an internal path");
        const std::string share = mount.share();
        require(share.empty() || share == root, "a share is a drive");
        require(share.empty() || table.shareAt(share) != nullptr, "a share is found by its path");
        require(mount.isKernelFileSystem() || table.hasVolumeAt(mount.mountPoint), "a volume is found");
    }
    if (const platform::Mount* volume = table.volumeOf(path)) {
        require(path.starts_with(volume->mountPoint) && !volume->isKernelFileSystem(),
                "a path is on its volume");
    }
    return 0;
}
