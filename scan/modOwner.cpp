#include "scan/modOwner.h"

std::string modOwner::fileOwner(std::string_view path) {
    return std::string(platform::OwnerNames().ownerOf(path, platform::entryFacts(path)));
}
