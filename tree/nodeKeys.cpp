#include "tree/nodeKeys.h"

namespace modNodeKeys {

namespace {

constexpr std::string_view placeholderPrefix = "DUMMY";

} // namespace

std::string placeholderOf(std::string_view key) {
    return std::string(placeholderPrefix).append(key);
}

std::string_view parentOfPlaceholder(std::string_view placeholderKey) {
    return placeholderKey.starts_with(placeholderPrefix) ? placeholderKey.substr(placeholderPrefix.size())
                                                         : std::string_view();
}

bool isFolderKey(std::string_view key) {
    if (key.starts_with(placeholderPrefix)) {
        return false;
    }
    std::size_t driveEnd = key.find('\\');
    if (key.starts_with("\\\\")) { // a share's drive part ends at the second "\" behind the server's two
        const std::size_t serverEnd = key.find('\\', 2);
        driveEnd = serverEnd == std::string_view::npos ? serverEnd : key.find('\\', serverEnd + 1);
    }
    return driveEnd != std::string_view::npos;
}

std::string_view nameOf(std::string_view key) {
    if (key.ends_with('\\')) {
        key.remove_suffix(1);
    }
    return key.substr(key.rfind('\\') + 1); // npos + 1 is 0
}

} // namespace modNodeKeys
