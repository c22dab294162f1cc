#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/fileError.h"

// Converts the system's error codes (errno, GetLastError) to the numbers of the program's errors. For
// platform/ only.
namespace platform {

// The only place where a code becomes an error. `path` is the path that the failed call was given, in any
// form. If the number does not express the system's reason, the cause is in the system's words.
[[nodiscard]] RuntimeError systemError(std::int64_t code, std::string_view path, NotDone notDone);

// --- what each system tells of its own codes; linux/ and win32/ implement it ----------------------------

struct SystemErrorNumber {
    std::int64_t code;
    int number;
};

// The codes that have their own number. All others become 75.
[[nodiscard]] std::span<const SystemErrorNumber> systemErrorNumbers() noexcept;

// The system's text for a code.
[[nodiscard]] std::string systemMessage(std::int64_t code);

} // namespace platform
