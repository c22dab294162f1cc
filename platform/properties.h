#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/folders.h"

namespace platform {

// What the system tells of one entry itself; links are not followed.
struct Properties : EntryFacts {
    enum class Kind { file, folder, link, other };
    Kind kind = Kind::file;
    std::string linkTarget; // as it stands in the link, in the system's form
    std::string mode;       // "drwxr-xr-x"; on Windows the attributes: "read-only, hidden", often none
};

// What people call the mode.
extern constinit const std::string_view modeName;

// Reads them from the disk. A folder's path may end in "\". Nothing if that cannot be done.
[[nodiscard]] std::optional<Properties> propertiesOf(std::string_view internalPath);

} // namespace platform
