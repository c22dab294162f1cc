#pragma once

#include <optional>
#include <string>

namespace platform {

// The native path with all links followed; nothing if it leads nowhere.
[[nodiscard]] std::optional<std::string> realPath(const std::string& nativePath);

} // namespace platform
