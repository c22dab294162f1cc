#pragma once

#include <algorithm>
#include <string>

#include "support/temporaryFolder.h"

// The internal path of an entry as if it were on the root volume: it leads there, and no call with it reads
// the system's table of mounts, which would take most of the time.
[[nodiscard]] inline std::string rootPath(const TemporaryFolder& folder, std::string_view name = {}) {
    std::string path = folder.typed(name);
    std::replace(path.begin(), path.end(), '/', '\\');
    return "/" + path;
}
