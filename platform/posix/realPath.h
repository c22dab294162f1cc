#pragma once

#include <optional>
#include <string>

namespace platform {

// The native path with every link in it followed; nothing when it leads nowhere.
[[nodiscard]] std::optional<std::string> realPath(const std::string& nativePath);

} // namespace platform
