#include "base/clsSettings.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "base/clsRegSettings.h"
#include "base/errorTrap.h"
#include "base/excludes.h"
#include "base/modGlobal.h"
#include "base/settingValues.h"
#include "base/settingsTable.h"
#include "platform/paths.h"
#include "platform/profile.h"
#include "platform/runtimeError.h"

namespace {

constexpr std::string_view ownerKey = "getOwnerInfo";
constexpr std::string_view exactKey = "exact";

void convert(std::string_view text, std::string& target) {
    target = text;
}

void convert(std::string_view text, bool& target) {
    target = modSettings::flagOf(text);
}

void convert(std::string_view text, std::int16_t& target) {
    target = modSettings::numberOf(text);
}

std::string written(const std::string& value) {
    return value;
}

std::string written(bool value) {
    return value ? "1" : "0";
}

std::string written(std::int16_t value) {
    return std::to_string(value);
}

} // namespace

struct clsSettings::Property {
    std::string_view name;
    std::variant<std::string clsSettings::*, std::int16_t clsSettings::*, bool clsSettings::*> member;
};

// In the order in which they are read. The lists' numbers are saved in the same order.
constexpr std::array<clsSettings::Property, 15> clsSettings::properties{{
    {"caseSensitiveExtensions", &clsSettings::caseSensitiveExt_},
    {ownerKey, &clsSettings::getOwnerInfo_},
    {"getExtensionInfo", &clsSettings::getExtensionInfo_},
    {"databasePath", &clsSettings::databasePath_},
    {"DetailListSortColumn", &clsSettings::lvwFSortColumn_},
    {"DetailListSortOrder", &clsSettings::lvwFSortOrder_},
    {"FileTypeListSortColumn", &clsSettings::lvwTSortColumn_},
    {"FileTypeListSortOrder", &clsSettings::lvwTSortOrder_},
    {"UserListSortColumn", &clsSettings::lvwUSortColumn_},
    {"UserListSortOrder", &clsSettings::lvwUSortOrder_},
    {"fullFileSizes", &clsSettings::fullFileSizes_},
    {exactKey, &clsSettings::exact_},
    {"onDisk", &clsSettings::onDisk_},
    {"readOnly", &clsSettings::readOnly_},
    {"readers", &clsSettings::readers_},
}};

clsSettings::clsSettings() : excludes_(std::make_shared<const Excludes>()) {}

void clsSettings::setExcludes(Excludes excludes) {
    excludes_ = std::make_shared<const Excludes>(std::move(excludes));
}

void clsSettings::assign(const Property& property, std::string_view text) {
    try {
        std::visit([&](auto member) { convert(text, this->*member); }, property.member);
    } catch (const RuntimeError& error) {
        throw RuntimeError::about(error.number(), std::string(property.name).append("=").append(text));
    }
}

const clsSettings::Property* clsSettings::propertyNamed(std::string_view name) noexcept {
    const auto* const found = std::find_if(properties.begin(), properties.end(),
                                           [&](const Property& property) { return property.name == name; });
    return found == properties.end() ? nullptr : found;
}

std::string clsSettings::text(std::string_view name) const {
    const Property* const property = propertyNamed(name);
    return property == nullptr
               ? std::string()
               : std::visit([this](auto member) { return written(this->*member); }, property->member);
}

void clsSettings::setText(std::string_view name, std::string_view text) {
    if (const Property* const property = propertyNamed(name)) {
        assign(*property, text);
    }
}

void clsSettings::load(clsRegSettings& store, std::string_view applicationFolder) {
    store.setINIPath(modGlobal::addBackslash(applicationFolder) + "settings.ini");
    setExcludes(modExcludes::load(store));
    for (const Property& property : properties) {
        const modSettings::Key& key = modSettings::keyNamed(property.name);
        const std::string defaultText = modSettings::defaultOf(key, applicationFolder);
        assign(property, defaultText);
        modGlobal::trapped("frmMain", "form_load", [&] {
            if (modSettings::isPath(key.kind) &&
                store.isCut(key.section, key.name)) { // part of it would name another file
                throw RuntimeError(errorNumber::invalidCall,
                                   "The setting " + std::string(key.name) + " is longer than " +
                                       std::to_string(platform::longestProfileValue) +
                                       " characters; in its place " + platform::displayPath(defaultText) +
                                       " is used");
            }
            assign(property, store.GetSetting(key.section, key.name, defaultText, stpIni));
        });
    }
}

void clsSettings::save(const clsRegSettings& store) const {
    for (const Property& property : properties) {
        const modSettings::Key& key = modSettings::keyNamed(property.name);
        if (modSettings::isOfList(key.kind)) {
            store.SaveSetting(key.section, key.name, text(key.name), stpIni);
        }
    }
    store.SaveSetting("Application_Settings", ownerKey, written(getOwnerInfo_), stpIni);
}

bool clsSettings::isExactChosen(const clsRegSettings& store) {
    return !store.GetSetting(modSettings::keyNamed(exactKey).section, exactKey, "", stpIni).empty();
}

void clsSettings::saveChoice(const clsRegSettings& store, std::string_view key, bool choice) {
    const std::string wanted = written(choice);
    const std::string_view section = modSettings::keyNamed(key).section;
    store.SaveSetting(section, key, wanted, stpIni);
    if (store.GetSetting(section, key, "", stpIni) != wanted) {
        throw RuntimeError(errorNumber::permissionDenied,
                           "The choice cannot be stored in settings.ini and is forgotten at the end");
    }
}

bool dontUseNetwork(const clsRegSettings& store) {
    return store.GetSetting("startup", "dontUseNetwork", "0", stpIni) != "0";
}
