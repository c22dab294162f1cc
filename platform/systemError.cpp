#include "platform/systemError.h"

#include <algorithm>

namespace platform {

RuntimeError systemError(std::int64_t code, std::string_view path, NotDone notDone) {
    const std::span<const SystemErrorNumber> known = systemErrorNumbers();
    const auto found = std::ranges::find(known, code, &SystemErrorNumber::code);
    if (found != known.end()) {
        return fileError(found->number, path, notDone);
    }
    return fileError(errorNumber::pathFileAccess, systemMessage(code), path, notDone);
}

} // namespace platform
