#include "platform/profile.h"

#include "platform/linux/iniFile.h"
#include "platform/text.h"

namespace platform {

namespace {

// Nothing if there is no such file, section or key.
std::optional<std::string> wholeValue(std::string_view section, std::string_view key,
                                      std::string_view filePath) {
    const auto text = readIniFile(filePath);
    const auto value = text ? text->value(section, key) : std::nullopt;
    return value ? std::optional<std::string>(unquoted(*value)) : std::nullopt;
}

} // namespace

std::string readProfileValue(std::string_view section, std::string_view key, std::string_view defaultText,
                             std::string_view filePath) {
    const auto value = wholeValue(section, key, filePath);
    return std::string(value ? firstCharacters(*value, longestProfileValue) : defaultText);
}

bool profileValueIsCut(std::string_view section, std::string_view key, std::string_view filePath) {
    return characterCount(wholeValue(section, key, filePath).value_or("")) > longestProfileValue;
}

std::vector<std::string> profileKeys(std::string_view section, std::string_view filePath) {
    const auto text = readIniFile(filePath);
    return text ? text->keys(section) : std::vector<std::string>();
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
