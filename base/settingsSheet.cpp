#include "base/settingsSheet.h"

#include <algorithm>

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "base/excludeLines.h"
#include "base/modGlobal.h"
#include "base/settingValues.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

using modSettings::Key;
using modSettings::Kind;
using modSettings::Remark;

namespace {

// Empty if the text stands for no value of that kind.
std::string normalised(const Key& key, const std::string& text) {
    try {
        switch (key.kind) {
        case Kind::flag:
            return modSettings::flagOf(text) ? "1" : "0";
        case Kind::notZero:
            return text == "0" ? "0" : "1";
        case Kind::column:
            return std::to_string(modSettings::numberOf(text));
        case Kind::readers:
            return std::to_string(std::max<int>(modSettings::numberOf(text), -1));
        case Kind::order:
            return modSettings::numberOf(text) == 0 ? "0" : "1";
        case Kind::database:
        case Kind::errorLog:
        case Kind::patterns:
            return text;
        }
    } catch (const RuntimeError&) { // no number, or too large
    }
    return {};
}

} // namespace

SettingsSheet::SettingsSheet(const clsRegSettings& store, const clsSettings& settings,
                             std::string_view applicationFolder)
    : store_(store), settings_(settings), applicationFolder_(modGlobal::addBackslash(applicationFolder)) {
    for (const Key& key : modSettings::keys()) {
        read(key);
    }
}

void SettingsSheet::read(const Key& key) {
    if (key.kind == Kind::patterns) {
        values_[key.name] = texts_[key.name] = modExcludes::lines(store_);
        return;
    }
    const auto text = store_.storedText(key.section, key.name);
    isInFile_[key.name] = text.has_value();
    texts_[key.name] = text.value_or("");
    if (isPath(key.kind)) {
        values_[key.name] = text.value_or("");
        return;
    }
    const std::string standardText(key.defaultText);
    const std::string inFile =
        normalised(key, store_.GetSetting(key.section, key.name, standardText, stpIni));
    const std::string state = key.isLive ? normalised(key, settings_.text(key.name)) : inFile;
    const bool isBad = inFile.empty() && (!key.isLive || state == standardText);
    values_[key.name] = isBad ? std::string() : state;
    if (!whyFixed(key).empty()) {
        values_[key.name] = "1";
    }
}

const std::string& SettingsSheet::file() const noexcept {
    return store_.INIPath();
}

std::string SettingsSheet::whyNotWritable() const {
    const std::string shown = platform::displayPath(file());
    const std::string folder = file().substr(0, file().rfind('\\') + 1);
    if (platform::somethingExists(file()) && !platform::fileExists(file())) {
        return shown + " is not an ordinary file, so nothing can be stored in it.";
    }
    if (platform::fileExists(file()) && !platform::fileIsWritable(file())) {
        return shown + " cannot be written, so nothing can be stored in it.";
    }
    if (!platform::folderIsWritable(folder)) {
        return "The folder " + platform::displayPath(folder) +
               " cannot be written, so nothing can be stored in settings.ini there.";
    }
    return {};
}

Remark SettingsSheet::fileRemark(const Key& key) const {
    using Weight = Remark::Weight;
    Remark remark;
    if (key.kind == Kind::patterns) {
        return modExcludes::remarkOnFile(store_);
    }
    if (!isInFile_.at(key.name)) {
        return remark;
    }
    if (isPath(key.kind) && fileText(key).empty()) {
        remark.add(Weight::warning, "The file names no path here. OK removes that line.");
    } else if (store_.isCut(key.section, key.name)) {
        remark.add(Weight::warning, "The file has a longer text than can be read, so it is not used as it is "
                                    "meant.");
    } else {
        remark = remarkOn(key, fileText(key));
        remark.weight = std::min(remark.weight, Weight::warning);
    }
    return remark;
}

std::string SettingsSheet::standard(const Key& key) {
    return isPath(key.kind) ? std::string() : std::string(key.defaultText);
}

std::string SettingsSheet::whyFixed(const Key& key) const {
    return key.name == "readOnly" && settings_.readOnlyForced()
               ? "The command line says --read-only, so it holds until the program ends, and what is stored "
                 "stays as it is."
               : "";
}

bool SettingsSheet::isChanged(const Key& key, const std::string& wanted) const {
    if (isPath(key.kind)) {
        return wanted != fileText(key) || wanted.empty() == isInFile_.at(key.name);
    }
    if (key.kind == Kind::patterns) {
        return wanted != value(key);
    }
    return !wanted.empty() && wanted != value(key) && whyFixed(key).empty();
}

// The default path is what is used without the key.
bool SettingsSheet::write(const Key& key, const std::string& wanted) const {
    if (key.kind == Kind::patterns) {
        return modExcludes::saveLines(store_, value(key), wanted);
    }
    if (isPath(key.kind)) {
        const std::string standardPath = modSettings::defaultOf(key, applicationFolder_);
        if (wanted.empty() || wanted == standardPath || wanted == platform::displayPath(standardPath)) {
            store_.DeleteSetting(key.section, key.name, stpIni);
            return !store_.storedText(key.section, key.name);
        }
    }
    store_.SaveSetting(key.section, key.name, modSettings::asWritten(wanted), stpIni);
    return store_.storedText(key.section, key.name) == wanted;
}

std::vector<std::string_view> SettingsSheet::store(const Values& values) {
    std::vector<std::string_view> failed;
    for (const Key& key : modSettings::keys()) {
        const auto wanted = values.find(key.name);
        if (wanted == values.end() || !isChanged(key, wanted->second)) {
            continue;
        }
        if (!write(key, wanted->second)) {
            failed.push_back(key.name);
            continue;
        }
        stored_.push_back(key.name);
        read(key);
        if (key.isLive) { // the window has not followed yet
            values_[key.name] = wanted->second;
        }
    }
    return failed;
}
