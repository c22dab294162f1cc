#pragma once

#include <optional>
#include <string>

namespace platform {

// The native path with all links followed; nothing if it leads nowhere, or to a volume that does not answer
// (platform/answering.h).
[[nodiscard]] std::optional<std::string> realPath(const std::string& nativePath);

// The same, however long the volumes on the way take.
[[nodiscard]] std::optional<std::string> resolvedPath(const std::string& nativePath);

} // namespace platform
