#include "platform/ownership.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/linux/opening.h"
#include "platform/linux/strangers.h"
#include "platform/paths.h"
#include "platform/systemError.h"

namespace platform {

namespace {

constexpr mode_t ownerOnly = 0700;

std::string accountName(uid_t user) {
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 4096> texts{};
    const bool known =
        ::getpwuid_r(user, &entry, texts.data(), texts.size(), &found) == 0 && found != nullptr;
    return known ? entry.pw_name : "user " + std::to_string(user);
}

// The path without the "/" at its end, which would have a link followed.
std::string nativeEntry(std::string_view path) {
    std::string native = nativeOf(path);
    while (native.size() > 1 && native.ends_with('/')) {
        native.pop_back();
    }
    return native;
}

} // namespace

bool isOwnLink(std::string_view path) noexcept {
    try {
        const std::string native = nativeEntry(path);
        struct stat link {};
        struct stat target {};
        return ::lstat(native.c_str(), &link) == 0 && S_ISLNK(link.st_mode) &&
               ::stat(native.c_str(), &target) == 0 && S_ISREG(target.st_mode) &&
               link.st_uid == ::geteuid() && target.st_uid == ::geteuid();
    } catch (...) { // not a valid path
        return false;
    }
}

// Whoever may write to a folder with the sticky bit still cannot replace the files of others in it.
std::string whyForeign(std::string_view path) {
    const std::string native = nativeOf(path);
    struct stat status {};
    if (const std::string link = strangersLinkOn(native); !link.empty()) {
        return "another user has made the link " + displayPath(toInternal(link));
    }
    if (::stat(native.c_str(), &status) != 0) {
        return {};
    }
    if (status.st_uid != ::geteuid() && status.st_uid != 0) {
        return "it belongs to " + accountName(status.st_uid) + " and not to " + accountName(::geteuid()) +
               ", who runs this program";
    }
    if ((status.st_mode & S_IWOTH) != 0 && (status.st_mode & S_ISVTX) == 0) {
        return "everybody can write to it";
    }
    return {};
}

bool isStrangersFile(std::string_view path) noexcept {
    try {
        const std::string native = nativeOf(path);
        struct stat status {};
        return ::lstat(native.c_str(), &status) == 0 && isStrangers(status, native);
    } catch (...) { // not a valid path
        return false;
    }
}

bool makeOwnFolder(std::string_view path) {
    if (::mkdir(nativeEntry(path).c_str(), ownerOnly) == 0) {
        return true;
    }
    if (errno != EEXIST) {
        throw systemError(errno, path, NotDone::created);
    }
    return false;
}

bool isOwnFolder(std::string_view path) noexcept {
    try {
        struct stat status {};
        return ::lstat(nativeEntry(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
               status.st_uid == ::geteuid() && (status.st_mode & 07777) == ownerOnly;
    } catch (...) {
        return false;
    }
}

void removeOwnFolder(std::string_view path) noexcept {
    try {
        const std::string folder = nativeEntry(path);
        FolderListing listing;
        static_cast<void>(FolderReader().readNames(std::string(path), listing));
        for (std::size_t i = 0; i < listing.size(); ++i) {
            ::unlink(nativeOf(std::string(path).append(listing[i].name)).c_str());
        }
        ::rmdir(folder.c_str());
    } catch (...) { // what is left is removed another time
    }
}

} // namespace platform
