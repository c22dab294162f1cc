// Serves a made-up volume that takes its time for every answer, as a file server far away does:
// slow-tree MOUNT_POINT [--delay MICROSECONDS] [--folders N] [--files M]
// The volume has N folders, N in each of them, and M files in each of those. It runs in the background until
// `fusermount3 -u MOUNT_POINT`.

#define FUSE_USE_VERSION 35
#include <fuse3/fuse.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

struct Volume {
    std::chrono::microseconds delay{1000};
    int folders = 30;
    int files = 30;
};

Volume volume; // the library calls plain functions

constexpr int levelOfFiles = 3;

void takeTime() {
    std::this_thread::sleep_for(volume.delay);
}

int countAt(int level) {
    return level == levelOfFiles ? volume.files : volume.folders;
}

// "d7" for the folders' levels, "f7" for files.
std::string nameAt(int level, int number) {
    return (level == levelOfFiles ? "f" : "d") + std::to_string(number);
}

// How many names lead to the path from the root; -1 if there is nothing.
int levelOf(std::string_view path) {
    int level = 0;
    while (path.size() > 1) {
        path.remove_prefix(1);
        const std::string_view name = path.substr(0, path.find('/'));
        int number = -1;
        const auto [end, error] = std::from_chars(name.data() + 1, name.data() + name.size(), number);
        ++level;
        if (level > levelOfFiles || error != std::errc{} || number < 0 || number >= countAt(level) ||
            name != nameAt(level, number)) {
            return -1;
        }
        path.remove_prefix(name.size());
    }
    return level;
}

int describe(const char* path, struct stat* status, fuse_file_info* /*open*/) {
    constexpr mode_t folderMode = S_IFDIR | 0755;
    constexpr mode_t fileMode = S_IFREG | 0644;
    constexpr off_t fileSize = 1000;
    constexpr time_t someTime = 1'700'000'000;
    takeTime();
    const int level = levelOf(path);
    if (level < 0) {
        return -ENOENT;
    }
    const bool isFile = level == levelOfFiles;
    *status = {};
    status->st_mode = isFile ? fileMode : folderMode;
    status->st_nlink = 1;
    status->st_size = isFile ? fileSize : 0;
    status->st_atime = status->st_mtime = status->st_ctime = someTime;
    return 0;
}

int list(const char* path, void* buffer, fuse_fill_dir_t add, off_t /*offset*/, fuse_file_info* /*open*/,
         fuse_readdir_flags /*flags*/) {
    takeTime();
    const int level = levelOf(path);
    if (level < 0 || level == levelOfFiles) {
        return -ENOTDIR;
    }
    for (int i = 0; i < countAt(level + 1); ++i) {
        add(buffer, nameAt(level + 1, i).c_str(), nullptr, 0, fuse_fill_dir_flags{});
    }
    return 0;
}

void* forgetNothing(fuse_conn_info* /*connection*/, fuse_config* config) {
    config->entry_timeout = config->attr_timeout = config->negative_timeout = 0; // every question is asked
    return nullptr;
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::vector<char*> others;
    for (int i = 0; i < argumentCount; ++i) {
        const std::string_view name = arguments[i];
        const bool hasValue = i + 1 < argumentCount;
        if (name == "--delay" && hasValue) {
            volume.delay = std::chrono::microseconds(std::stol(arguments[++i]));
        } else if (name == "--folders" && hasValue) {
            volume.folders = std::stoi(arguments[++i]);
        } else if (name == "--files" && hasValue) {
            volume.files = std::stoi(arguments[++i]);
        } else {
            others.push_back(arguments[i]);
        }
    }
    std::string atOnce = "-omax_threads=64";
    others.push_back(atOnce.data());
    fuse_operations operations{};
    operations.init = forgetNothing;
    operations.getattr = describe;
    operations.readdir = list;
    return fuse_main(static_cast<int>(others.size()), others.data(), &operations, nullptr);
}
