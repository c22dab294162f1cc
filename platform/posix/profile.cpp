#include "platform/profile.h"

#include "platform/posix/iniFile.h"
#include "platform/text.h"

namespace platform {

std::string readProfileValue(std::string_view section, std::string_view key, std::string_view defaultText,
                             std::string_view filePath) {
    if (const auto text = readIniFile(filePath)) {
        if (const auto value = text->value(section, key)) {
            return std::string(firstCharacters(unquoted(*value), longestProfileValue));
        }
    }
    return std::string(defaultText);
}

bool writeProfileValue(std::string_view section, std::string_view key, std::string_view value,
                       std::string_view filePath) noexcept {
    return editIniFile(filePath, [=](IniText& text) { return text.setValue(section, key, value); });
}

bool deleteProfileKey(std::string_view section, std::string_view key, std::string_view filePath) noexcept {
    return editIniFile(filePath, [=](IniText& text) {
        text.removeKey(section, key);
        return true;
    });
}

bool deleteProfileSection(std::string_view section, std::string_view filePath) noexcept {
    return editIniFile(filePath, [=](IniText& text) {
        text.removeSection(section);
        return true;
    });
}

} // namespace platform
