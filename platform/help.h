#pragma once

#include <cstdint>
#include <string_view>

namespace platform {

// Shows a page of a compiled help file (an internal path) in the system's own viewer, on top of the window
// with this handle; without a page, the table of contents. False if the system has no such viewer.
[[nodiscard]] bool showCompiledHelp(std::uintptr_t window, std::string_view internalPath,
                                    std::string_view page = {});

} // namespace platform
