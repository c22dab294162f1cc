#pragma once

#include <string_view>

namespace platform {

// Shows the entry, selected, in the desktop's file manager, or at least the folder that it is in. Does not
// wait for it. False if there is no such program. A folder's path may end in "\".
[[nodiscard]] bool showInFileManager(std::string_view internalPath);

} // namespace platform
