// Serves a volume that stops answering: deadVolume MOUNT_POINT MODE.
//   unread      takes no request at all
//   unanswered  takes requests, and answers none but the first, which mounting needs
//   N           answers N requests, then takes further ones without an answer
// The volume has 200 folders of three files each. Prints a line as soon as it is mounted; ends when killed.

#include <fcntl.h>
#include <linux/fuse.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr std::uint64_t root = FUSE_ROOT_ID;
constexpr std::uint64_t folderCount = 200;
constexpr std::uint64_t filesPerFolder = 3;
constexpr std::uint64_t firstFolder = 1000; // inodes; the files of folder n are n * 10 and so on
constexpr std::size_t requestSize = std::size_t{128} << 10;

bool isFolder(std::uint64_t inode) {
    return inode == root || (inode >= firstFolder && inode < firstFolder + folderCount);
}

std::uint64_t childOf(std::uint64_t folder, std::uint64_t index) {
    return folder == root ? firstFolder + index : folder * 10 + index;
}

std::uint64_t countOf(std::uint64_t folder) {
    return folder == root ? folderCount : filesPerFolder;
}

fuse_attr attributesOf(std::uint64_t inode) {
    fuse_attr result{};
    result.ino = inode;
    result.mode = isFolder(inode) ? S_IFDIR | 0755 : S_IFREG | 0644;
    result.size = isFolder(inode) ? 0 : 100;
    result.nlink = 1;
    result.blksize = 4096;
    return result;
}

template <class Part>
std::string bytesOf(const Part& part) {
    return {reinterpret_cast<const char*>(&part), sizeof part};
}

// All entries at once; nothing at a later offset.
std::string listing(std::uint64_t folder, const fuse_read_in& request) {
    std::string result;
    for (std::uint64_t i = request.offset; i < countOf(folder); ++i) {
        const std::uint64_t inode = childOf(folder, i);
        const std::string name = std::to_string(inode);
        fuse_dirent entry{};
        entry.ino = inode;
        entry.off = i + 1;
        entry.namelen = static_cast<std::uint32_t>(name.size());
        entry.type = isFolder(inode) ? 4 : 8;
        std::string bytes(reinterpret_cast<const char*>(&entry), FUSE_NAME_OFFSET);
        bytes += name;
        bytes.resize(FUSE_DIRENT_ALIGN(bytes.size()));
        if (result.size() + bytes.size() > request.size) {
            break;
        }
        result += bytes;
    }
    return result;
}

std::string firstAnswer() {
    fuse_init_out init{};
    init.major = FUSE_KERNEL_VERSION;
    init.minor = FUSE_KERNEL_MINOR_VERSION;
    init.max_write = 4096;
    return bytesOf(init);
}

// The answer to a request; `error` is the negative code if there is none.
std::string answerTo(const fuse_in_header& header, const char* body, int& error) {
    switch (header.opcode) {
    case FUSE_INIT:
        return firstAnswer();
    case FUSE_GETATTR: {
        fuse_attr_out attributes{};
        attributes.attr = attributesOf(header.nodeid);
        return bytesOf(attributes);
    }
    case FUSE_LOOKUP: {
        fuse_entry_out entry{};
        entry.nodeid = std::strtoull(body, nullptr, 10);
        entry.attr = attributesOf(entry.nodeid);
        return bytesOf(entry);
    }
    case FUSE_OPENDIR:
        return bytesOf(fuse_open_out{});
    case FUSE_READDIR: {
        fuse_read_in request{};
        std::memcpy(&request, body, sizeof request);
        return listing(header.nodeid, request);
    }
    case FUSE_RELEASEDIR:
        return {};
    default:
        error = -ENOSYS;
        return {};
    }
}

void serve(int device, long answered) {
    std::array<char, requestSize> buffer{};
    for (long count = 0; ::read(device, buffer.data(), buffer.size()) > 0;) {
        fuse_in_header header{};
        std::memcpy(&header, buffer.data(), sizeof header);
        const bool isWithoutAnswer = header.opcode == FUSE_FORGET || header.opcode == FUSE_BATCH_FORGET ||
                                     header.opcode == FUSE_INTERRUPT;
        const bool isNeeded = header.opcode == FUSE_INIT;
        if (isWithoutAnswer || (!isNeeded && ++count > answered)) {
            continue;
        }
        fuse_out_header out{};
        const std::string answer = answerTo(header, buffer.data() + sizeof header, out.error);
        out.unique = header.unique;
        out.len = static_cast<std::uint32_t>(sizeof out + answer.size());
        const std::string bytes = bytesOf(out) + answer;
        static_cast<void>(::write(device, bytes.data(), bytes.size()));
    }
}

} // namespace

int main(int count, char** arguments) {
    const int device = ::open("/dev/fuse", O_RDWR | O_CLOEXEC);
    const std::string options = "fd=" + std::to_string(device) + ",rootmode=40000,user_id=0,group_id=0";
    if (count != 3 || device < 0 ||
        ::mount("dead", arguments[1], "fuse.dead", MS_NOSUID | MS_NODEV, options.c_str()) != 0) {
        std::perror("deadVolume");
        return 1;
    }
    std::puts("mounted");
    std::fflush(stdout);
    const std::string_view mode = arguments[2];
    if (mode == "unread") {
        ::pause();
    } else {
        serve(device, mode == "unanswered" ? 0 : std::strtol(arguments[2], nullptr, 10));
    }
    return 0;
}
