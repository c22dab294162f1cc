#include "platform/registry.h"

#include "platform/linux/iniFile.h"

namespace platform {

namespace {

constexpr std::string_view unnamedValue = "@";

std::string sectionOf(RegistryRoot root, std::string_view keyPath) {
    std::string section(root == RegistryRoot::localMachine ? "HKEY_LOCAL_MACHINE\\" : "HKEY_CURRENT_USER\\");
    return section.append(keyPath);
}

std::string_view storedName(std::string_view valueName) {
    return valueName.empty() ? unnamedValue : valueName;
}

} // namespace

Registry::Registry(std::string_view folder) {
    if (!folder.empty()) {
        file_.append(folder).append("registry.ini");
    }
}

std::optional<std::string> Registry::readText(RegistryRoot root, std::string_view keyPath,
                                              std::string_view valueName) const noexcept {
    if (const auto text = readIniFile(file_)) {
        const auto value = text->value(sectionOf(root, keyPath), storedName(valueName));
        if (value && !value->empty()) {
            return std::string(unquoted(*value));
        }
    }
    return {};
}

bool Registry::writeText(RegistryRoot root, std::string_view keyPath, std::string_view valueName,
                         std::string_view text) const noexcept {
    // A value that really had this name would become the unnamed one.
    if (valueName == unnamedValue) {
        return false;
    }
    return editIniFile(file_, [=](IniText& ini) {
        const std::string quoted = '"' + std::string(text) + '"';
        return ini.setValue(sectionOf(root, keyPath), storedName(valueName), quoted);
    });
}

bool Registry::deleteValue(RegistryRoot root, std::string_view keyPath,
                           std::string_view valueName) const noexcept {
    return editIniFile(
        file_, [=](IniText& ini) { return ini.removeKey(sectionOf(root, keyPath), storedName(valueName)); });
}

bool Registry::deleteSubkey(RegistryRoot root, std::string_view keyPath,
                            std::string_view subkey) const noexcept {
    return editIniFile(file_, [=](IniText& ini) {
        return ini.removeSection(sectionOf(root, keyPath).append("\\").append(subkey));
    });
}

} // namespace platform
