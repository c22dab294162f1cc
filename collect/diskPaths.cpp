#include "collect/diskPaths.h"

#include <algorithm>

#include "platform/movedNames.h"

namespace {

constexpr char otherSeparator = '\\'; // of internal paths, and of Windows
constexpr std::string_view shareStart = "\\\\";
constexpr std::string_view diskShareStart = "//";

// The names between the separators, which become "\".
void appendNames(std::string& result, std::string_view disk, char between) {
    while (!disk.empty()) {
        const std::size_t end = std::min(disk.find('/'), disk.size());
        platform::appendMovedName(result, disk.substr(0, end));
        disk.remove_prefix(end);
        if (!disk.empty()) {
            result.push_back(between);
            disk.remove_prefix(1);
        }
    }
}

} // namespace

char modDiskPaths::separatorOf(std::string_view key, std::string_view system) {
    const bool isWindows =
        key.starts_with(shareStart) ? system.starts_with("Windows") : !key.starts_with('/');
    return isWindows ? '\\' : '/';
}

void modDiskPaths::appendPath(std::string& result, std::string_view internalPath, char separator) {
    if (separator == otherSeparator) {
        result.append(internalPath);
        return;
    }
    if (internalPath.starts_with("/\\")) {
        internalPath.remove_prefix(1);
    }
    platform::appendUnmovedName(result, internalPath, separator);
}

void modDiskPaths::appendName(std::string& result, std::string_view internalName, char separator) {
    if (separator == otherSeparator || platform::isUnmovedName(internalName)) {
        result.append(internalName);
    } else {
        platform::appendUnmovedName(result, internalName, otherSeparator);
    }
}

// The drive of a mounted volume has its separators inside: `/media/usb\`.
std::string modDiskPaths::internalDrive(std::string_view disk, char separator) {
    std::string result;
    if (separator == otherSeparator) {
        return result.append(disk);
    }
    if (disk.starts_with(diskShareStart)) {
        appendNames(result, disk, otherSeparator);
    } else if (disk == "/") {
        result = "/\\";
    } else {
        const bool isWhole = disk.ends_with('/');
        appendNames(result, disk.substr(0, disk.size() - (isWhole ? 1 : 0)), '/');
        result.append(isWhole ? "\\" : "");
    }
    return result;
}

std::string modDiskPaths::internalFolder(std::string_view disk, std::string_view drive,
                                         std::string_view diskDrive, char separator) {
    std::string result;
    if (separator == otherSeparator) {
        return result.append(disk);
    }
    if (!diskDrive.empty() && disk.starts_with(diskDrive)) {
        result.append(drive);
        disk.remove_prefix(diskDrive.size());
    }
    appendNames(result, disk, otherSeparator);
    return result;
}

std::string modDiskPaths::internalName(std::string_view disk, char separator) {
    std::string result;
    if (separator == otherSeparator) {
        result.append(disk);
    } else {
        platform::appendMovedName(result, disk);
    }
    return result;
}
