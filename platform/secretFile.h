#pragma once

#include <string_view>

namespace platform {

// True if every user of this machine may read or change the file (links are followed): by its permissions or,
// on Windows, because they name everyone or all users. False if there is no such file.
[[nodiscard]] bool isOpenToAll(std::string_view path);

} // namespace platform
