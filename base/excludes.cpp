#include "base/excludes.h"

#include <algorithm>

#include "base/clsFile.h"
#include "base/clsRegSettings.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

bool isPlain(std::string_view character) {
    constexpr char firstPrintable = 0x20;
    return character.size() == 1 && character.front() >= firstPrintable && character.front() < 0x7F;
}

// Where an editor begins a new line: the separators of lines and paragraphs, and Qt's own of frames.
bool endsLine(char32_t character) {
    return character == 0x2028 || character == 0x2029 || character == 0xFDD0 || character == 0xFDD1;
}

std::string patternStored(const clsRegSettings& store, std::string_view key) {
    return modExcludes::fromStored(store.GetSetting(modExcludes::section, key, "", stpIni));
}

} // namespace

std::string modExcludes::fromStored(std::string_view stored) {
    std::string pattern;
    for (std::size_t position = 0; position < stored.size();) {
        const std::size_t start = position;
        const bool isAscii = static_cast<unsigned char>(stored[position]) < 0x80;
        static_cast<void>(platform::decodeCodePoint(stored, position));
        const std::string_view bytes = stored.substr(start, position - start);
        if (isAscii) {
            pattern.append(bytes);
        } else {
            platform::appendNativeName(pattern, bytes);
        }
    }
    return pattern;
}

std::string modExcludes::toStored(std::string_view pattern) {
    std::string stored;
    for (std::size_t position = 0; position < pattern.size();) {
        const std::size_t start = position;
        const char32_t character = platform::decodeCodePoint(pattern, position);
        const std::string_view bytes = pattern.substr(start, position - start);
        if (isPlain(bytes)) {
            stored.append(bytes);
        } else if (endsLine(character)) {
            for (const char& byte : bytes) {
                platform::appendInternalName(stored, {&byte, 1});
            }
        } else {
            platform::appendInternalName(stored, bytes);
        }
    }
    return stored;
}

void Excludes::add(std::string_view pattern) {
    if (!pattern.empty() && std::find(texts_.begin(), texts_.end(), pattern) == texts_.end()) {
        patterns_.emplace_back(pattern);
        texts_.emplace_back(pattern);
    }
}

void Excludes::addLines(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (!platform::trimmed(line).empty()) {
            add(line);
        }
    }
}

bool Excludes::take(std::string& nativePath) const {
    ExcludePattern::makeComparable(nativePath, ExcludePattern::systemRules());
    return std::any_of(patterns_.begin(), patterns_.end(),
                       [&](const ExcludePattern& pattern) { return pattern.fits(nativePath); });
}

modExcludes::Drive modExcludes::driveOf(std::string_view internalPath) {
    const std::string internal(clsFile(internalPath).drive());
    Drive drive{internal.size(), platform::toNative(internal)};
    if (drive.native.empty()) { // a share that is not mounted
        drive.native = platform::displayPath(internal);
    }
    while (drive.native.ends_with('/') || drive.native.ends_with('\\')) {
        drive.native.pop_back();
    }
    return drive;
}

void modExcludes::appendNativePath(std::string& result, std::string_view internalPath, const Drive& drive) {
    result.append(drive.native).append(1, platform::displaySeparator);
    std::string_view rest = internalPath.substr(drive.length);
    if (rest.ends_with('\\')) {
        rest.remove_suffix(1);
    }
    platform::appendNativeName(result, rest);
}

std::string modExcludes::patternOf(std::string_view internalPath) {
    std::string path;
    appendNativePath(path, internalPath, driveOf(internalPath));
    const bool takesEscapes = !ExcludePattern::systemRules().backslashSeparates;
    std::string pattern;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char c = path[i];
        const bool isLost = c == ' ' && i + 1 == path.size(); // a line's value has no blank at its end
        if (c == '*' || c == '?' || c == '[' || isLost) {
            pattern.append("[").append(1, c).append("]");
        } else {
            pattern.append(takesEscapes && c == '\\' ? 2 : 1, c);
        }
    }
    return pattern;
}

Excludes modExcludes::load(const clsRegSettings& store) {
    Excludes excludes;
    for (const std::string& key : store.keys(section)) {
        excludes.add(patternStored(store, key));
    }
    return excludes;
}

std::string modExcludes::freeKey(const clsRegSettings& store) {
    const std::vector<std::string> keys = store.keys(section);
    int number = 1;
    while (std::find(keys.begin(), keys.end(), std::to_string(number)) != keys.end()) {
        ++number;
    }
    return std::to_string(number);
}

void modExcludes::save(const clsRegSettings& store, std::string_view pattern) {
    const std::string key = freeKey(store);
    store.SaveSetting(section, key, toStored(pattern), stpIni);
    if (patternStored(store, key) == pattern) {
        return;
    }
    if (store.isCut(section, key)) {
        store.DeleteSetting(section, key, stpIni);
        throw RuntimeError(errorNumber::overflow, "The path is too long to be kept in settings.ini");
    }
    throw RuntimeError(errorNumber::permissionDenied, "It cannot be stored in settings.ini");
}

std::string modExcludes::leftOutText(std::int64_t items) {
    return std::to_string(items) + (items == 1 ? " item was" : " items were") + " left out by excludes.";
}
