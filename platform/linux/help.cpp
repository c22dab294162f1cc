#include "platform/help.h"

namespace platform {

bool showCompiledHelp(std::uintptr_t /*window*/, std::string_view /*internalPath*/,
                      std::string_view /*page*/) {
    return false;
}

} // namespace platform
