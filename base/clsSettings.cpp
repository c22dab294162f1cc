#include "base/clsSettings.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <variant>

#include "base/clsRegSettings.h"
#include "base/errorTrap.h"
#include "base/modGlobal.h"
#include "platform/paths.h"
#include "platform/profile.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

constexpr std::string_view applicationSection = "APPLICATION_SETTINGS";
constexpr std::string_view userSection = "User_Settings";
constexpr std::string_view ownerKey = "getOwnerInfo";
constexpr std::string_view exactKey = "exact";

// Nothing if the text is not a decimal number. Throws 6 if the number is too large for a double.
std::optional<double> toNumber(std::string_view text) {
    text = platform::trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc::result_out_of_range && stop == end) {
        throw RuntimeError(errorNumber::overflow);
    }
    if (error != std::errc{} || stop != end || !std::isfinite(number)) {
        return {};
    }
    return number;
}

void convert(std::string_view text, std::string& target) {
    target = text;
}

void convert(std::string_view text, bool& target) {
    for (const bool value : {false, true}) {
        if (platform::equalIgnoringAsciiCase(platform::trimmed(text), value ? "true" : "false")) {
            target = value;
            return;
        }
    }
    const auto number = toNumber(text);
    if (!number) {
        throw RuntimeError(errorNumber::typeMismatch);
    }
    target = *number != 0;
}

void convert(std::string_view text, std::int16_t& target) {
    const auto number = toNumber(text);
    if (!number) {
        throw RuntimeError(errorNumber::typeMismatch);
    }
    const double rounded = std::nearbyint(*number); // halves are rounded to even
    using Range = std::numeric_limits<std::int16_t>;
    if (rounded < Range::min() || rounded > Range::max()) {
        throw RuntimeError(errorNumber::overflow);
    }
    target = static_cast<std::int16_t>(rounded);
}

} // namespace

// A default that is a text is the name of a file in the application folder.
struct clsSettings::Key {
    std::string_view section;
    std::string_view name;
    std::string_view defaultText;
    std::variant<std::string clsSettings::*, std::int16_t clsSettings::*, bool clsSettings::*> property;
};

// In the order in which they are read. The numbers are saved in the same order.
constexpr std::array<clsSettings::Key, 14> clsSettings::keys{{
    {applicationSection, "caseSensitiveExtensions", "0", &clsSettings::caseSensitiveExt_},
    {applicationSection, ownerKey, "1", &clsSettings::getOwnerInfo_},
    {applicationSection, "getExtensionInfo", "1", &clsSettings::getExtensionInfo_},
    {applicationSection, "databasePath", "main.dat", &clsSettings::databasePath_},
    {userSection, "DetailListSortColumn", "2", &clsSettings::lvwFSortColumn_},
    {userSection, "DetailListSortOrder", "1", &clsSettings::lvwFSortOrder_},
    {userSection, "FileTypeListSortColumn", "3", &clsSettings::lvwTSortColumn_},
    {userSection, "FileTypeListSortOrder", "1", &clsSettings::lvwTSortOrder_},
    {userSection, "UserListSortColumn", "2", &clsSettings::lvwUSortColumn_},
    {userSection, "UserListSortOrder", "1", &clsSettings::lvwUSortOrder_},
    {applicationSection, "fullFileSizes", "0", &clsSettings::fullFileSizes_},
    {applicationSection, exactKey, "0", &clsSettings::exact_},
    {applicationSection, "readOnly", "0", &clsSettings::readOnly_},
    {applicationSection, "readers", "-1", &clsSettings::readers_},
}};

void clsSettings::assign(const Key& key, std::string_view text) {
    try {
        std::visit([&](auto member) { convert(text, this->*member); }, key.property);
    } catch (const RuntimeError& error) {
        throw RuntimeError::about(error.number(), std::string(key.name).append("=").append(text));
    }
}

void clsSettings::load(clsRegSettings& store, std::string_view applicationFolder) {
    const std::string folder = modGlobal::addBackslash(applicationFolder);
    store.setINIPath(folder + "settings.ini");
    for (const Key& key : keys) {
        const bool isFile = std::holds_alternative<std::string clsSettings::*>(key.property);
        const std::string defaultText = (isFile ? folder : "") + std::string(key.defaultText);
        assign(key, defaultText);
        modGlobal::trapped("frmMain", "form_load", [&] {
            if (isFile && store.isCut(key.section, key.name)) { // part of it would name another file
                throw RuntimeError(errorNumber::invalidCall,
                                   "The setting " + std::string(key.name) + " is longer than " +
                                       std::to_string(platform::longestProfileValue) +
                                       " characters; in its place " + platform::displayPath(defaultText) +
                                       " is used");
            }
            assign(key, store.GetSetting(key.section, key.name, defaultText, stpIni));
        });
    }
}

void clsSettings::save(const clsRegSettings& store) const {
    for (const Key& key : keys) {
        const auto* member = std::get_if<std::int16_t clsSettings::*>(&key.property);
        if (member != nullptr && key.section == userSection) {
            store.SaveSetting(key.section, key.name, std::to_string(this->**member), stpIni);
        }
    }
    store.SaveSetting("Application_Settings", ownerKey, getOwnerInfo_ ? "1" : "0", stpIni);
}

bool clsSettings::isExactChosen(const clsRegSettings& store) {
    return !store.GetSetting(applicationSection, exactKey, "", stpIni).empty();
}

void clsSettings::saveExact(const clsRegSettings& store) const {
    const std::string wanted = exact_ ? "1" : "0";
    store.SaveSetting(applicationSection, exactKey, wanted, stpIni);
    if (store.GetSetting(applicationSection, exactKey, "", stpIni) != wanted) {
        throw RuntimeError(errorNumber::permissionDenied,
                           "The choice cannot be stored in settings.ini and is forgotten at the end");
    }
}

bool dontUseNetwork(const clsRegSettings& store) {
    return store.GetSetting("startup", "dontUseNetwork", "0", stpIni) != "0";
}
