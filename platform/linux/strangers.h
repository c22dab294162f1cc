#pragma once

#include <sys/stat.h>

#include <string>

#include "platform/fileError.h"

// What other users may have put in the user's way. Paths are the system's.
namespace platform {

// Whether another ordinary user made what has this status and this path. What belongs to the folder's owner
// is no stranger's: where everything on a volume has one owner, it may be anyone.
[[nodiscard]] bool isStrangers(const struct stat& status, const std::string& native) noexcept;

struct Followed {
    std::string native;
    bool isOpenFile = false; // through a link in /proc, which leads to an open file
};

// The file that a path leads to by its last name, following link by link, even if the file does not exist.
// Throws 75 at a stranger's link.
[[nodiscard]] Followed follow(std::string native, NotDone notDone);

// The first link of a stranger on the way to a file or folder; empty if there is none.
[[nodiscard]] std::string strangersLinkOn(const std::string& native);

} // namespace platform
