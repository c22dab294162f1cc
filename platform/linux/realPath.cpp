#include "platform/linux/realPath.h"

#include <cstdlib>
#include <memory>

std::optional<std::string> platform::realPath(const std::string& nativePath) {
    const std::unique_ptr<char, decltype(&std::free)> path(::realpath(nativePath.c_str(), nullptr),
                                                           &std::free);
    return path ? std::optional<std::string>(path.get()) : std::nullopt;
}
