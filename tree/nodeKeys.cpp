#include "tree/nodeKeys.h"

#include "base/clsFile.h"
#include "base/modGlobal.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace modNodeKeys {

namespace {

constexpr std::string_view placeholderPrefix = "DUMMY";

} // namespace

bool isSound(std::string_view key) {
    constexpr char32_t firstPrintable = U' ';
    constexpr std::u32string_view never = U"\"|*?<>";
    std::size_t count = 0;
    for (std::size_t position = 0; position < key.size(); ++count) {
        if (platform::loneSurrogateAt(key, position) != 0) { // in a name from Windows
            position += 3;
            continue;
        }
        const char32_t code = platform::decodeCodePoint(key, position);
        if (code < firstPrintable || code == platform::invalidCodePoint ||
            never.find(code) != std::u32string_view::npos) {
            return false;
        }
    }
    return count > 0 && count <= longest;
}

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
    if (key.starts_with("\\\\")) { // a share's drive part ends at the second "\" after the two at the start
        const std::size_t serverEnd = key.find('\\', 2);
        driveEnd = serverEnd == std::string_view::npos ? serverEnd : key.find('\\', serverEnd + 1);
    }
    return driveEnd != std::string_view::npos;
}

std::string above(std::string_view folderKey) {
    const clsFile folder(folderKey);
    if (!folder.fullPathNoDrive().empty()) {
        return std::string(folder.parentFolder());
    }
    if (folderKey.starts_with("\\\\")) {
        return {};
    }
    const std::string typed = platform::displayPath(folderKey) + platform::displaySeparator + "..";
    std::string key = modGlobal::addBackslash(platform::toInternal(typed));
    return platform::sameName(key, folderKey) ? std::string() : key;
}

std::string_view nameOf(std::string_view key) {
    if (key.ends_with('\\')) {
        key.remove_suffix(1);
    }
    return key.substr(key.rfind('\\') + 1); // npos + 1 is 0
}

} // namespace modNodeKeys
