#pragma once

#include <sys/mount.h>

#include <filesystem>
#include <fstream>

// A volume of 256 KB, mounted on an empty folder during its lifetime. Only the superuser can create it.
class SmallDisk {
public:
    explicit SmallDisk(std::filesystem::path folder)
        : folder_(std::move(folder)),
          isThere_(::mount("small", folder_.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, "size=256k") == 0) {}
    ~SmallDisk() {
        if (isThere_) {
            ::umount2(folder_.c_str(), MNT_DETACH);
        }
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    [[nodiscard]] bool isThere() const noexcept { return isThere_; }

    // Fills all space with a file of that name.
    void fill(const char* name) const {
        std::ofstream file(folder_ / name, std::ios::binary);
        while (file.put(' ').flush()) {
        }
    }

private:
    std::filesystem::path folder_;
    bool isThere_;
};
