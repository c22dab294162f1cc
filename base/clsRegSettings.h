#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
class Registry;
}

// The stores for the operations of clsRegSettings. With any other number, an operation does nothing.
inline constexpr std::int32_t stpRegistry = 0;
inline constexpr std::int32_t stpIni = 2;

// Named text settings, kept in the system's registry or in an INI file. One shared instance lives as long as
// the program; nothing stays open between calls. No operation raises an error or shows a message.
class clsRegSettings {
public:
    clsRegSettings();

    // The INI file: an internal path, or any path that a user may type. Kept as given.
    [[nodiscard]] const std::string& INIPath() const noexcept { return iniPath_; }
    void setINIPath(std::string_view path) { iniPath_ = path; }

    // The two names in the registry key "Software\Company\AppName". They are trimmed; an empty text restores
    // the initial name.
    [[nodiscard]] const std::string& Company() const noexcept { return company_; }
    void setCompany(std::string_view name);
    [[nodiscard]] const std::string& AppName() const noexcept { return appName_; }
    void setAppName(std::string_view name);

    // Removes one value, or the whole section if `Key` is empty. In the registry, the result tells whether it
    // was removed; for the other stores, it is always True. In the registry, here and below, the key "*" is
    // the section's unnamed value.
    bool DeleteSetting(std::string_view section, std::string_view Key, std::int32_t stp) const;

    // The value, or `Default` if it is missing or unreadable. Values from the INI file have at most 254
    // characters; if the text is the name of an environment variable that is set, that variable's value is
    // returned instead.
    [[nodiscard]] std::string GetSetting(std::string_view section, std::string_view Key,
                                         std::string_view Default, std::int32_t stp) const;

    // The value as the INI file has it, of at most 254 characters, even if it is the name of an environment
    // variable. Nothing if it is missing or unreadable.
    [[nodiscard]] std::optional<std::string> storedText(std::string_view section, std::string_view Key) const;

    // True if the value in the INI file has more than those 254 characters, so that GetSetting returns a
    // part.
    [[nodiscard]] bool isCut(std::string_view section, std::string_view Key) const noexcept;

    // The keys of a section of the INI file that have a value, in their order.
    [[nodiscard]] std::vector<std::string> keys(std::string_view section) const;

    // Writes one value, creating the section if needed. True if the registry stored it. Odd on purpose: the
    // INI store returns False whether it was written or not.
    bool SaveSetting(std::string_view section, std::string_view Key, std::string_view Setting,
                     std::int32_t stp) const;

    // What GetSetting makes of a text in the INI file.
    [[nodiscard]] static std::string expandEnvironmentName(std::string text);

private:
    [[nodiscard]] std::string keyPath(std::string_view section) const;
    [[nodiscard]] platform::Registry registry() const;

    std::string iniPath_;
    std::string company_;
    std::string appName_;
};
