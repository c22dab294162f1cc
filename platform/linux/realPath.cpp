#include "platform/linux/realPath.h"

#include <cstdlib>
#include <memory>

#include "platform/linux/volumeCalls.h"

namespace platform {

std::optional<std::string> realPath(const std::string& nativePath) {
    if (!couldHang(nativePath)) {
        return resolvedPath(nativePath);
    }
    std::string path;
    const int error = VolumeCalls(nativePath).resolve(nativePath, path);
    return error == 0 ? std::optional<std::string>(std::move(path)) : std::nullopt;
}

std::optional<std::string> resolvedPath(const std::string& nativePath) {
    const std::unique_ptr<char, decltype(&std::free)> path(::realpath(nativePath.c_str(), nullptr),
                                                           &std::free);
    return path ? std::optional<std::string>(path.get()) : std::nullopt;
}

} // namespace platform
