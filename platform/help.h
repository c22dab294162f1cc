#pragma once

#include <cstdint>
#include <string_view>

namespace platform {

// Shows the table of contents of a compiled help file (an internal path) in the system's own viewer, on top
// of the window with this handle. False if the system has no such viewer.
[[nodiscard]] bool showCompiledHelp(std::uintptr_t window, std::string_view internalPath);

} // namespace platform
