#include "platform/linux/strangers.h"

#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <utility>

#include "platform/openFiles.h"
#include "platform/paths.h"

namespace platform {

namespace {

constexpr int mostLinks = 40; // the system's own limit

std::string folderOf(const std::string& native) {
    return native.substr(0, native.rfind('/') + 1);
}

// Where a link leads; empty if it is none.
std::string targetOf(const std::string& native) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink(native.c_str(), target.data(), target.size());
    return length < 0 ? std::string() : std::string(target.data(), static_cast<std::size_t>(length));
}

bool isInProc(const std::string& native) {
    struct statfs volume {};
    return ::statfs(folderOf(native).c_str(), &volume) == 0 && volume.f_type == PROC_SUPER_MAGIC;
}

} // namespace

bool isStrangers(const struct stat& status, const std::string& native) noexcept {
    if (status.st_uid == ::geteuid() || status.st_uid == 0) {
        return false;
    }
    try {
        const std::string folder = folderOf(native);
        struct stat above {};
        return ::stat(folder.empty() ? "." : folder.c_str(), &above) != 0 || above.st_uid != status.st_uid;
    } catch (...) {
        return true;
    }
}

// Whose link it is comes first: a stranger can put one in place at any time, but cannot replace the user's.
Followed follow(std::string native, NotDone notDone) {
    struct stat status {};
    for (int count = 0; count < mostLinks; ++count) {
        if (::lstat(native.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) {
            break;
        }
        if (isInProc(native)) {
            return {native, true};
        }
        if (isStrangers(status, native)) {
            throw strangersFile(toInternal(native), notDone);
        }
        const std::string target = targetOf(native);
        native = target.starts_with('/') ? target : folderOf(native).append(target);
    }
    return {std::move(native), false};
}

std::string strangersLinkOn(const std::string& native) {
    std::string done;
    std::string rest = native;
    for (int links = 0; !rest.empty() && links < mostLinks;) {
        const std::string name = rest.substr(0, rest.find('/'));
        rest.erase(0, name.size() + 1);
        if (name == "..") {
            done.erase(std::min(done.rfind('/'), done.size()));
        }
        if (name.empty() || name == "." || name == "..") {
            continue;
        }
        std::string path = std::string(done).append("/").append(name);
        struct stat status {};
        if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) {
            done = path;
            continue;
        }
        if (isStrangers(status, path)) {
            return path;
        }
        const std::string target = targetOf(path);
        done = target.starts_with('/') ? std::string() : done;
        rest.insert(0, target + "/");
        ++links;
    }
    return {};
}

} // namespace platform
