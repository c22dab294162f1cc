#include "base/clsRegSettings.h"

#include "platform/environment.h"
#include "platform/paths.h"
#include "platform/profile.h"
#include "platform/registry.h"
#include "platform/text.h"

using platform::RegistryRoot;

namespace {

constexpr std::string_view defaultCompany = "Spannory Programs";
constexpr std::string_view productName = "Spannory";

std::string_view trimmedOr(std::string_view text, std::string_view standard) {
    const std::string_view result = platform::trimmed(text);
    return result.empty() ? standard : result;
}

std::string_view valueName(std::string_view key) {
    return key == "*" ? std::string_view{} : key;
}

} // namespace

clsRegSettings::clsRegSettings() : company_(defaultCompany), appName_(productName) {}

void clsRegSettings::setCompany(std::string_view name) {
    company_ = trimmedOr(name, defaultCompany);
}

void clsRegSettings::setAppName(std::string_view name) {
    appName_ = trimmedOr(name, productName);
}

// Odd on purpose: deletes go to another root of the registry than reads and writes.
bool clsRegSettings::DeleteSetting(std::string_view section, std::string_view Key, std::int32_t stp) const {
    try {
        if (stp == stpRegistry) {
            return Key.empty()
                       ? registry().deleteSubkey(RegistryRoot::currentUser, keyPath({}), section)
                       : registry().deleteValue(RegistryRoot::currentUser, keyPath(section), valueName(Key));
        }
        if (stp == stpIni && Key.empty()) {
            platform::deleteProfileSection(section, iniPath_);
        } else if (stp == stpIni) {
            platform::deleteProfileKey(section, Key, iniPath_);
        }
        return true;
    } catch (...) {
        return stp != stpRegistry;
    }
}

std::string clsRegSettings::GetSetting(std::string_view section, std::string_view Key,
                                       std::string_view Default, std::int32_t stp) const {
    std::string result(Default);
    try {
        if (stp == stpRegistry) {
            if (auto text =
                    registry().readText(RegistryRoot::localMachine, keyPath(section), valueName(Key))) {
                result = std::move(*text);
            }
        } else if (stp == stpIni) {
            result = expandEnvironmentName(platform::readProfileValue(section, Key, Default, iniPath_));
        }
    } catch (...) {
        // The result stays unchanged.
    }
    return result;
}

// A missing value is whatever default is asked for.
std::optional<std::string> clsRegSettings::storedText(std::string_view section, std::string_view Key) const {
    try {
        std::string text = platform::readProfileValue(section, Key, {}, iniPath_);
        if (text.empty() && !platform::readProfileValue(section, Key, "missing", iniPath_).empty()) {
            return {};
        }
        return text;
    } catch (...) {
        return {};
    }
}

bool clsRegSettings::isCut(std::string_view section, std::string_view Key) const noexcept {
    try {
        return platform::profileValueIsCut(section, Key, iniPath_);
    } catch (...) {
        return false;
    }
}

std::vector<std::string> clsRegSettings::keys(std::string_view section) const {
    try {
        return platform::profileKeys(section, iniPath_);
    } catch (...) {
        return {};
    }
}

bool clsRegSettings::SaveSetting(std::string_view section, std::string_view Key, std::string_view Setting,
                                 std::int32_t stp) const {
    try {
        if (stp == stpRegistry) {
            return registry().writeText(RegistryRoot::localMachine, keyPath(section), valueName(Key),
                                        Setting);
        }
        if (stp == stpIni) {
            platform::writeProfileValue(section, Key, Setting, iniPath_);
        }
    } catch (...) {
        // The value is lost.
    }
    return false;
}

std::string clsRegSettings::keyPath(std::string_view section) const {
    std::string path = "Software\\" + company_ + "\\" + appName_;
    if (!section.empty()) {
        path.append("\\").append(section);
    }
    return path;
}

std::string clsRegSettings::expandEnvironmentName(std::string text) {
    if (text.empty()) {
        return text;
    }
    auto value = platform::environmentVariable(text);
    return value && !value->empty() ? std::move(*value) : text;
}

platform::Registry clsRegSettings::registry() const {
    const std::string path = platform::toInternal(iniPath_);
    return platform::Registry(std::string_view(path).substr(0, path.rfind('\\') + 1));
}
