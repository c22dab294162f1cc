#include "platform/shellIcons.h"

namespace platform {

bool hasShellIcons() noexcept {
    return false;
}

std::optional<int> shellIconIndex(std::string_view /*internalPath*/, unsigned /*sizeFlag*/) {
    return std::nullopt;
}

std::optional<IconPicture> shellIconPicture(int /*index*/) {
    return std::nullopt;
}

} // namespace platform
