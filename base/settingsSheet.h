#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/settingRemark.h"
#include "base/settingsTable.h"

class clsRegSettings;
class clsSettings;

// The settings as a person looks at them and changes them, read once. A value is a text: "0" or "1" of what
// is on or off, a number, a path, which is empty for the default, or the lines of all excludes.
class SettingsSheet {
public:
    using Values = std::map<std::string_view, std::string>; // by the names of keys

    // Nothing is owned. The application folder is an internal path.
    SettingsSheet(const clsRegSettings& store, const clsSettings& settings,
                  std::string_view applicationFolder);

    [[nodiscard]] const std::string& applicationFolder() const noexcept { return applicationFolder_; }
    // The path of settings.ini, which need not exist.
    [[nodiscard]] const std::string& file() const noexcept;
    // Why nothing can be stored in it, in a sentence; empty if it can be.
    [[nodiscard]] std::string whyNotWritable() const;

    // The value at hand; empty if the file has a text that stands for none. The keys that the window changes
    // have its state.
    [[nodiscard]] const std::string& value(const modSettings::Key& key) const { return values_.at(key.name); }
    // What settings.ini has; empty if the key is missing.
    [[nodiscard]] const std::string& fileText(const modSettings::Key& key) const {
        return texts_.at(key.name);
    }
    // What there is to say about it. Never an error, because the program works with it.
    [[nodiscard]] modSettings::Remark fileRemark(const modSettings::Key& key) const;
    // The value that restores the default.
    [[nodiscard]] static std::string standard(const modSettings::Key& key);
    // Why the value cannot be changed here; empty if it can be.
    [[nodiscard]] std::string whyFixed(const modSettings::Key& key) const;

    // Writes the values that are other than value() to settings.ini and reads them back. An empty value
    // stays as it is where it means nothing. Returns the names of the keys that could not be stored.
    [[nodiscard]] std::vector<std::string_view> store(const Values& values);
    // All that have been stored, by any of the calls.
    [[nodiscard]] const std::vector<std::string_view>& stored() const noexcept { return stored_; }

private:
    void read(const modSettings::Key& key);
    [[nodiscard]] bool isChanged(const modSettings::Key& key, const std::string& wanted) const;
    [[nodiscard]] bool write(const modSettings::Key& key, const std::string& wanted) const;

    const clsRegSettings& store_;
    const clsSettings& settings_;
    const std::string applicationFolder_;
    Values texts_;
    Values values_;
    std::map<std::string_view, bool> isInFile_;
    std::vector<std::string_view> stored_;
};
