#pragma once

#include <string_view>

#include "platform/runtimeError.h"

namespace platform {

// The one place where errno becomes an error number. `path` is what the failed call was about, in any form;
// it is shown in its display form. A system reason that the number does not tell is added in parentheses.
[[nodiscard]] RuntimeError systemError(int errorCode, std::string_view path);

} // namespace platform
