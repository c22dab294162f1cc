#pragma once

#include <string>
#include <string_view>

// Paths of any system as they are on its disk, on any system; and back.
namespace modDiskPaths {

// The separator of the system that has folders of such a key: "/" or "\". A share (`\\server\share\`) may be
// mounted on Linux; `system` is the name of the one that scanned it.
[[nodiscard]] char separatorOf(std::string_view key, std::string_view system);

// `/home\me\` becomes `/home/me/`, `\\server\share\` of Linux `//server/share/`. A path of Windows stays.
void appendPath(std::string& result, std::string_view internalPath, char separator);
// One name, or part of one.
void appendName(std::string& result, std::string_view internalName, char separator);

// Back. For whatever the functions above have been given they may return something else, unless it was an
// internal path or a name of a scan.
[[nodiscard]] std::string internalDrive(std::string_view disk, char separator);
// `drive` is internal, and `diskDrive` its form on the disk.
[[nodiscard]] std::string internalFolder(std::string_view disk, std::string_view drive,
                                         std::string_view diskDrive, char separator);
[[nodiscard]] std::string internalName(std::string_view disk, char separator);

} // namespace modDiskPaths
