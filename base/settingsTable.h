#pragma once

#include <span>
#include <string>
#include <string_view>

// The keys of settings.ini: where they stand, what they mean, and what people are told about them.
namespace modSettings {

enum class Kind {
    flag,     // modSettings::flagOf
    notZero,  // False only for exactly "0"
    column,   // the position of a list's column, from 1
    order,    // 0: ascending; any other number: descending
    readers,  // a number of threads; any negative one for as many as help
    database, // the path of the working database; the default is the name of a file in the application folder
    errorLog, // the path of an error log; the same
    patterns, // all of a section, whose keys have names of their own, as lines (base/excludeLines.h)
};

// The part of the program that a key is about.
enum class Topic { scanning, excludes, filesList, fileTypesList, ownersList, files, window };

enum class Effect { none, atOnce, nextScan, nextStart };

struct Key {
    std::string_view section;
    std::string_view name;
    std::string_view defaultText;
    Kind kind;
    Topic topic;
    Effect effect;
    bool isLive;                  // the window changes it too, so its state counts, not the file
    std::string_view caption;     // with "&" before its access key
    std::string_view explanation; // for people who have never seen the file
};

// In the order in which people are shown them.
[[nodiscard]] std::span<const Key> keys() noexcept;

// Throws 5 if there is no such key.
[[nodiscard]] const Key& keyNamed(std::string_view name);

[[nodiscard]] constexpr bool isPath(Kind kind) noexcept {
    return kind == Kind::database || kind == Kind::errorLog;
}

// Part of a list's sort order, which the window saves when it closes.
[[nodiscard]] constexpr bool isOfList(Kind kind) noexcept {
    return kind == Kind::column || kind == Kind::order;
}

// "Takes effect at once." and so on.
[[nodiscard]] std::string_view effectText(Effect effect) noexcept;

// The default; of a path, as an internal path in the application folder.
[[nodiscard]] std::string defaultOf(const Key& key, std::string_view applicationFolder);

} // namespace modSettings
