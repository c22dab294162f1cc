#include "base/excludeLines.h"

#include <algorithm>
#include <vector>

#include "base/clsRegSettings.h"
#include "base/excludePattern.h"
#include "base/excludes.h"
#include "base/settingValues.h"
#include "platform/profile.h"
#include "platform/text.h"

using modSettings::Remark;
using Weight = Remark::Weight;

namespace {

constexpr std::string_view section = modExcludes::section;

struct Entry {
    std::string key;
    std::string line;
};

// The same for all texts that stand for one pattern.
std::string uniform(std::string_view line) {
    return modExcludes::toStored(modExcludes::fromStored(line));
}

// Of a key that occurs twice, the first one counts.
std::vector<Entry> entriesOf(const clsRegSettings& store) {
    std::vector<Entry> entries;
    for (const std::string& key : store.keys(section)) {
        const bool isKnown = std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
            return platform::equalIgnoringAsciiCase(entry.key, key);
        });
        const std::string line = uniform(store.storedText(section, key).value_or(""));
        if (!isKnown && !line.empty()) {
            entries.push_back({key, line});
        }
    }
    return entries;
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (!platform::trimmed(line).empty()) {
            lines.push_back(uniform(line));
        }
    }
    return lines;
}

// False if it is not there.
bool takeFrom(std::vector<std::string>& lines, const std::string& line) {
    const auto found = std::find(lines.begin(), lines.end(), line);
    const bool isThere = found != lines.end();
    if (isThere) {
        lines.erase(found);
    }
    return isThere;
}

std::vector<std::string> without(std::vector<std::string> lines, const std::vector<std::string>& others) {
    for (const std::string& other : others) {
        takeFrom(lines, other);
    }
    return lines;
}

// Also where the key stands several times.
bool removeKey(const clsRegSettings& store, const std::string& key) {
    for (std::size_t tries = store.keys(section).size(); tries > 0 && store.storedText(section, key);
         --tries) {
        store.DeleteSetting(section, key, stpIni);
    }
    return !store.storedText(section, key);
}

bool fitsEverything(std::string_view pattern) {
    pattern.remove_prefix(pattern.starts_with('/') ? 1 : 0);
    return !pattern.empty() && pattern.find_first_not_of('*') == std::string_view::npos;
}

Remark remarkOnLine(const std::string& line) {
    Remark remark;
    const std::string quoted =
        '"' + std::string(platform::firstCharacters(line, 60)) + (line.size() > 60 ? "…\"" : "\"");
    if (const std::size_t length = platform::characterCount(line); length > platform::longestProfileValue) {
        remark.add(Weight::error, quoted + " has " + std::to_string(length) + " characters; at most " +
                                      std::to_string(platform::longestProfileValue) + " can be read back.");
        return remark;
    }
    const std::string value = clsRegSettings::expandEnvironmentName(line);
    std::string pattern = modExcludes::fromStored(value);
    ExcludePattern::makeComparable(pattern, ExcludePattern::systemRules());
    if (value != line) {
        remark.add(Weight::note, quoted + " is the name of an environment variable, whose value \"" + value +
                                     "\" is used.");
    }
    if (pattern.size() > 1 && pattern.ends_with('/')) {
        remark.add(Weight::warning, quoted + " leaves out nothing, because of the separator at its end.");
    } else if (fitsEverything(pattern)) {
        remark.add(Weight::warning, quoted + " fits everything, so scans find nothing.");
    } else if (ExcludePattern(pattern).hasOpenSet()) {
        remark.add(Weight::note, quoted + " has a [ without a ], which stands for itself.");
    }
    if (platform::trimmed(line) != line) {
        remark.add(Weight::note, quoted + " has a blank at its beginning or end, which counts.");
    }
    return remark;
}

} // namespace

std::string modExcludes::lines(const clsRegSettings& store) {
    std::string text;
    for (const Entry& entry : entriesOf(store)) {
        text.append(text.empty() ? "" : "\n").append(entry.line);
    }
    return text;
}

// The gravest ones, or the text would grow with the lines.
Remark modExcludes::remarkOnLines(std::string_view text) {
    constexpr std::size_t mostShown = 3;
    std::vector<Remark> remarks;
    for (const std::string& line : linesOf(text)) {
        remarks.push_back(remarkOnLine(line));
    }
    std::erase_if(remarks, [](const Remark& remark) { return remark.weight == Weight::none; });
    std::stable_sort(remarks.begin(), remarks.end(),
                     [](const Remark& one, const Remark& other) { return one.weight > other.weight; });
    Remark result;
    for (std::size_t i = 0; i < std::min(remarks.size(), mostShown); ++i) {
        result.add(remarks[i].weight, remarks[i].text);
    }
    if (remarks.size() > mostShown) {
        result.add(Weight::note, "There is something to say about " +
                                     std::to_string(remarks.size() - mostShown) + " more.");
    }
    return result;
}

Remark modExcludes::remarkOnFile(const clsRegSettings& store) {
    Remark remark = remarkOnLines(lines(store));
    remark.weight = std::min(remark.weight, Weight::warning);
    for (const Entry& entry : entriesOf(store)) {
        if (store.isCut(section, entry.key)) {
            remark.add(Weight::warning, "The file has a longer text for the key " + entry.key +
                                            " than can be read, so it is not used as it is meant.");
        }
    }
    return remark;
}

// What is new is written before anything is removed.
bool modExcludes::saveLines(const clsRegSettings& store, std::string_view before, std::string_view after) {
    std::vector<std::string> removed = without(linesOf(before), linesOf(after));
    std::vector<Entry> entries = entriesOf(store);
    const auto spareFrom = std::stable_partition(
        entries.begin(), entries.end(), [&](const Entry& entry) { return !takeFrom(removed, entry.line); });
    std::vector<Entry> spare(spareFrom, entries.end());
    entries.erase(spareFrom, entries.end());
    for (const std::string& line : without(linesOf(after), linesOf(before))) {
        if (std::any_of(entries.begin(), entries.end(),
                        [&](const Entry& entry) { return entry.line == line; })) {
            continue;
        }
        std::string key = freeKey(store);
        if (!spare.empty()) {
            key = spare.front().key;
            spare.erase(spare.begin());
        }
        store.SaveSetting(section, key, modSettings::asWritten(line), stpIni);
        if (store.storedText(section, key) != line) {
            return false;
        }
        entries.push_back({key, line});
    }
    return std::all_of(spare.begin(), spare.end(),
                       [&](const Entry& entry) { return removeKey(store, entry.key); });
}
