#include "platform/systemError.h"

#include <algorithm>

#include "platform/paths.h"

namespace platform {

RuntimeError systemError(std::int64_t code, std::string_view path) {
    const std::span<const SystemErrorNumber> known = systemErrorNumbers();
    const auto found = std::ranges::find(known, code, &SystemErrorNumber::code);
    if (found != known.end()) {
        return RuntimeError::about(found->number, displayPath(path));
    }
    return RuntimeError::about(errorNumber::pathFileAccess,
                               displayPath(path) + " (" + systemMessage(code) + ")");
}

} // namespace platform
