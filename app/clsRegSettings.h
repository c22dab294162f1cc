#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {
class Registry;
}

// The stores that each operation of clsRegSettings chooses from. Any other number makes it do nothing.
inline constexpr std::int32_t stpRegistry = 0;
inline constexpr std::int32_t stpIni = 2;

// Named text settings, kept in the system's registry or in an INI file. One shared instance lives as long as
// the program; it holds nothing open between calls. No operation raises an error or shows a message.
class clsRegSettings {
public:
    clsRegSettings();

    // The INI file: an internal path or any that a user may type. Kept as given.
    [[nodiscard]] const std::string& INIPath() const noexcept { return iniPath_; }
    void setINIPath(std::string_view path) { iniPath_ = path; }

    // The two names that make up the registry key "Software\Company\AppName". Trimmed; an empty text restores
    // the initial name.
    [[nodiscard]] const std::string& Company() const noexcept { return company_; }
    void setCompany(std::string_view name);
    [[nodiscard]] const std::string& AppName() const noexcept { return appName_; }
    void setAppName(std::string_view name);

    // Removes one value, or the whole section when `Key` is empty. True when the registry did so; always True
    // for the other stores. In the registry the key "*" is the section's unnamed value, here and below.
    bool DeleteSetting(std::string_view section, std::string_view Key, std::int32_t stp) const;

    // The value, or `Default` when it is missing or cannot be read. From the INI file at most 254 characters;
    // a text that is the name of a set environment variable is replaced by the variable's value.
    [[nodiscard]] std::string GetSetting(std::string_view section, std::string_view Key,
                                         std::string_view Default, std::int32_t stp) const;

    // Writes one value, making the section as needed. True when the registry took it; the INI store reports
    // False whether or not it was written, deliberately.
    bool SaveSetting(std::string_view section, std::string_view Key, std::string_view Setting,
                     std::int32_t stp) const;

private:
    [[nodiscard]] std::string keyPath(std::string_view section) const;
    [[nodiscard]] static std::string expandEnvironmentName(std::string text);
    [[nodiscard]] platform::Registry registry() const;

    std::string iniPath_;
    std::string company_;
    std::string appName_;
};
