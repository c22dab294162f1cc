#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "platform/runtimeError.h"

namespace platform {

// The system's code for "this operation is not supported on a folder", which the compiler's headers lack.
inline constexpr DWORD folderInsteadOfFile = 336;

// The one place where the system's error codes become error numbers. `path` is what the failed call was
// about, in any form; it is shown in its display form. A system reason that the number does not tell is added
// in parentheses.
[[nodiscard]] RuntimeError systemError(DWORD errorCode, std::string_view path);

// The system's words for an error code, in the user's language.
[[nodiscard]] std::string systemMessage(DWORD errorCode);

} // namespace platform
