#include "platform/help.h"

namespace platform {

bool showCompiledHelp(std::uintptr_t /*window*/, std::string_view /*internalPath*/) {
    return false;
}

} // namespace platform
