#pragma once

#include <memory>
#include <string_view>

#include "platform/openFiles.h"

namespace platform {

enum class Making {
    unnamed, // if the volume supports it: a file without a name until it is complete
    named,   // a file with its own name beside its target
};

// platform::openReplacement, in either way.
[[nodiscard]] std::unique_ptr<OutputFile> openReplacement(std::string_view path, NewFile newFile,
                                                          Making making);

} // namespace platform
