#include "platform/paths.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "platform/environment.h"
#include "platform/linux/mountTable.h"
#include "platform/linux/realPath.h"
#include "platform/movedNames.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace platform {

constinit const std::string_view lineEnd = "\n";
constinit const char displaySeparator = '/';

namespace {

constexpr bool startsUnc(std::string_view path) {
    return path.starts_with("\\\\");
}

// The length of the drive part: up to and including the first "\", or for `\\server\share\` the last one.
std::size_t driveLength(std::string_view path) {
    std::size_t end = path.find('\\', startsUnc(path) ? 2 : 0);
    if (startsUnc(path) && end != std::string_view::npos) {
        const std::size_t shareEnd = path.find('\\', end + 1);
        end = shareEnd == std::string_view::npos ? path.size() - 1 : shareEnd;
    }
    return end == std::string_view::npos ? 0 : end + 1;
}

std::string currentFolder() {
    const std::unique_ptr<char, decltype(&std::free)> folder(::getcwd(nullptr, 0), &std::free);
    if (!folder || *folder != '/') {
        throw RuntimeError(errorNumber::pathNotFound, "The current folder is gone.");
    }
    return folder.get();
}

std::string homeFolder() {
    const std::string named = environmentVariable("HOME").value_or("");
    const passwd* account = named.starts_with('/') ? nullptr : ::getpwuid(::geteuid());
    return account != nullptr && account->pw_dir != nullptr ? account->pw_dir : named;
}

// The absolute form of a typed native path; a "/" at the end is kept. "." and ".." are resolved; after a
// link, ".." leads to the parent of the link's target.
std::string absoluteNative(std::string_view typed) {
    std::string text;
    if (typed.front() == '~' && (typed.size() == 1 || typed[1] == '/')) {
        text = homeFolder();
        typed.remove_prefix(1);
    } else if (typed.front() != '/') {
        text = currentFolder() + '/';
    }
    text += typed;

    std::string result;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('/'), rest.size());
        const std::string_view name = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (name == "..") {
            result = realPath(result).value_or(result);
            result.resize(std::min(result.rfind('/'), result.size()));
        } else if (!name.empty() && name != ".") {
            result.append("/").append(name);
        }
    }
    const bool namesFolder = text.ends_with('/') || text.ends_with("/.") || text.ends_with("/..");
    return namesFolder || result.empty() ? result + '/' : result;
}

// The internal path of an absolute native path: its drive is the longest mount point that contains it.
std::string internalOfNative(const std::string& native, const MountTable& mounts) {
    const Mount* mount = mounts.volumeOf(native);
    std::string result = mount != nullptr ? mount->driveRoot() : "/\\";
    std::string_view rest = native;
    rest.remove_prefix(mount != nullptr ? mount->mountPoint.size() : 0);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('/'), rest.size());
        appendInternalName(result, rest.substr(0, end));
        rest.remove_prefix(end);
        if (!rest.empty()) {
            rest.remove_prefix(1);
            if (result.back() != '\\') {
                result += '\\';
            }
        }
    }
    return result;
}

bool isInternal(std::string_view path, const MountTable& mounts) {
    if (startsUnc(path)) {
        return true;
    }
    const std::size_t end = path.find('\\');
    if (end == std::string_view::npos || path.front() != '/') {
        return false;
    }
    std::string mountPoint;
    appendNativeName(mountPoint, path.substr(0, end));
    return mounts.hasVolumeAt(mountPoint);
}

} // namespace

void appendInternalName(std::string& result, std::string_view nativeName) {
    appendMovedName(result, nativeName);
}

std::string internalName(std::string_view nativeName) {
    std::string result;
    appendInternalName(result, nativeName);
    return result;
}

void appendNativeName(std::string& result, std::string_view internalName) {
    for (std::size_t position = 0; position < internalName.size();) {
        const std::size_t start = position;
        if (static_cast<unsigned char>(internalName[position]) < 0x80) {
            result.push_back(internalName[position] == '\\' ? '/' : internalName[position]);
            ++position;
            continue;
        }
        const char32_t c = decodeCodePoint(internalName, position);
        if (isMovedByte(c)) {
            result.push_back(static_cast<char>(c - movedBytes));
        } else if (isMovedCharacter(c)) {
            result.push_back(static_cast<char>(c - movedCharacters));
        } else {
            result.append(internalName.substr(start, position - start));
        }
    }
}

std::string toInternal(std::string_view typedPath) {
    if (typedPath.empty() || typedPath.starts_with("/\\")) { // the root volume's do not need the mounts
        return std::string(typedPath);
    }
    const MountTable mounts = MountTable::read();
    if (isInternal(typedPath, mounts)) {
        return std::string(typedPath);
    }
    return internalOfNative(absoluteNative(typedPath), mounts);
}

std::string toNative(std::string_view internalPath) {
    std::string result;
    const std::size_t driveEnd = driveLength(internalPath);
    if (startsUnc(internalPath)) {
        const MountTable mounts = MountTable::read();
        const Mount* share = mounts.shareAt(internalPath.substr(0, driveEnd));
        if (share == nullptr) {
            return {};
        }
        result = share->mountPoint;
    } else if (driveEnd > 0) {
        appendNativeName(result, internalPath.substr(0, driveEnd - 1));
    }
    std::string_view rest = internalPath.substr(driveEnd);
    if (rest.ends_with('\\')) {
        rest.remove_suffix(1);
    }
    if (!rest.empty()) {
        if (driveEnd > 0 && !result.ends_with('/')) {
            result += '/';
        }
        appendNativeName(result, rest);
    }
    return result;
}

void appendDisplayPath(std::string& result, std::string_view internalPath) {
    if (internalPath.starts_with("/\\")) {
        internalPath.remove_prefix(1);
    }
    appendUnmovedName(result, internalPath, '/');
}

std::string displayPath(std::string_view internalPath) {
    std::string result;
    appendDisplayPath(result, internalPath);
    return result;
}

std::string displayName(std::string_view internalName) {
    std::string result;
    appendUnmovedName(result, internalName, '\\');
    return result;
}

} // namespace platform
