#include "base/settingRemark.h"

#include <algorithm>

#include "base/clsFile.h"
#include "base/clsRegSettings.h"
#include "base/excludeLines.h"
#include "base/settingValues.h"
#include "platform/answering.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/profile.h"
#include "platform/text.h"

namespace modSettings {

namespace {

using Weight = Remark::Weight;

std::string quotedText(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

void addOnForm(Remark& remark, const Key& key, const std::string& value) {
    try {
        if (key.kind == Kind::flag) {
            static_cast<void>(flagOf(value));
        } else if (isOfList(key.kind) || key.kind == Kind::readers) {
            static_cast<void>(numberOf(value));
        } else if (key.kind == Kind::notZero && value != "0" && value != "1") {
            remark.add(Weight::note,
                       "The file has " + quotedText(value) + ", and anything but 0 means yes here.");
        }
    } catch (const RuntimeError&) {
        const bool isFlag = key.kind == Kind::flag;
        remark.add(Weight::warning, "The file has " + quotedText(value) +
                                        (isFlag ? ", which is neither 0 nor 1" : ", which is no number") +
                                        ", so the default is used. Choose here to replace it.");
    }
}

// Of a path that is not absolute.
void addOnMeaning(Remark& remark, const std::string& value, const std::string& path) {
    const bool fromHome = value.starts_with('~');
    const bool absolute = value.starts_with('/') || value.starts_with('\\') || value.substr(1, 1) == ":";
    if (fromHome || !absolute) {
        remark.add(Weight::note,
                   "It stands for " + platform::displayPath(path) +
                       (fromHome ? "." : ", as long as the program is started in this folder."));
    }
}

void addOnFile(Remark& remark, const Key& key, const std::string& path) {
    const std::string shown = platform::displayPath(path);
    const std::string folder(clsFile(path).parentFolder());
    if (path.ends_with('\\') || platform::folderExists(path)) {
        remark.add(Weight::error, shown + " is a folder. Name a file in it.");
    } else if (!platform::folderExists(folder)) {
        remark.add(Weight::error, "There is no folder " + platform::displayPath(folder) + ".");
    } else if (platform::isLink(path)) {
        if (key.kind == Kind::errorLog) {
            remark.add(Weight::error, shown + " is a link, which the program does not write through.");
        }
    } else if (platform::somethingExists(path) && !platform::fileExists(path)) {
        remark.add(Weight::error, shown + " is not an ordinary file.");
    } else if (platform::fileExists(path) && !platform::fileIsWritable(path)) {
        remark.add(Weight::error, shown + " cannot be written.");
    } else if (!platform::fileExists(path) && !platform::folderIsWritable(folder)) {
        remark.add(Weight::error, "No file can be created in " + platform::displayPath(folder) + ".");
    } else if (!platform::fileExists(path) && key.name == "errorLogFile") {
        remark.add(Weight::note, "There is no such file yet. Until you create one, errors go to the file "
                                 "below.");
    }
}

void addOnPath(Remark& remark, const Key& key, const std::string& value) {
    if (value.empty()) {
        return;
    }
    try {
        const std::string path = platform::toInternal(value);
        addOnMeaning(remark, value, path);
        if (platform::mayNotAnswer(path)) {
            remark.add(Weight::note, "It is on a network volume, which is not looked at here.");
        } else {
            addOnFile(remark, key, path);
        }
    } catch (const RuntimeError& error) {
        remark.add(error);
    }
}

} // namespace

void Remark::add(Weight added, std::string_view sentence) {
    weight = std::max(weight, added);
    text.append(text.empty() ? "" : " ").append(sentence);
}

// Some descriptions are sentences, others only name the error.
void Remark::add(const RuntimeError& error) {
    const std::string description = error.what();
    add(Weight::error, description.ends_with('.') ? description : description + ".");
}

Remark remarkOn(const Key& key, std::string_view text) {
    if (key.kind == Kind::patterns) {
        return modExcludes::remarkOnLines(text);
    }
    Remark remark;
    if (text.find_first_of("\r\n") != std::string_view::npos) {
        remark.add(Weight::error, "A line break cannot be stored.");
        return remark;
    }
    if (const std::size_t length = platform::characterCount(text); length > platform::longestProfileValue) {
        remark.add(Weight::error, "It has " + std::to_string(length) + " characters; at most " +
                                      std::to_string(platform::longestProfileValue) + " can be read back.");
        return remark;
    }
    const std::string value = clsRegSettings::expandEnvironmentName(std::string(text));
    if (value != text) {
        remark.add(Weight::note, std::string(text) + " is the name of an environment variable, whose value " +
                                     quotedText(value) + " is used.");
    }
    isPath(key.kind) ? addOnPath(remark, key, value) : addOnForm(remark, key, value);
    return remark;
}

} // namespace modSettings
