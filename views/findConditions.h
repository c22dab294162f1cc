#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "views/changes.h"

// What somebody looks for among the recorded files and folders, and the texts in which they say it.
namespace modFind {

enum class Kind { files, folders, emptyFolders };
enum class Date { modified, accessed };

// Of an item without an extension of its own, or without an owner: what to type to find it.
inline constexpr std::string_view none = "(none)";

// Texts are as typed, with names as they are on the disk; an empty one is no condition.
struct Conditions {
    Kind kind = Kind::files;
    std::string name;      // text anywhere in the name or, if it has a * or ?, a pattern of the whole name
    std::string extension; // the whole extension, or a pattern of it; with or without its dot
    std::string owner;     // the same
    std::optional<double> larger; // than so many bytes
    std::optional<double> smaller;
    Date date = Date::modified; // the one of the next two
    std::optional<platform::LocalTime> older;
    std::optional<platform::LocalTime> newer;
    // Only what differs from an earlier scan: in any way, or in this one. Not for empty folders.
    bool onlyChanged = false;
    std::optional<modChanges::State> state;
    bool tellsCaseOfExtensions = false; // as the setting caseSensitiveExtensions

    [[nodiscard]] bool operator==(const Conditions&) const = default;
};

// The bytes that a text such as "500", "10M", "1.5 GB" or "20 KiB" means; a unit is 1,024 times the one
// before it. Nothing if it means none.
[[nodiscard]] std::optional<double> parseSize(std::string_view text);

// The moment that lies so many days before `now` ("30"), or so many weeks, months of 30 days or years of 365
// ("2w", "6m", "1y"), or the beginning of a day ("03/31/2024"). Nothing if it means none.
[[nodiscard]] std::optional<platform::LocalTime> parseMoment(std::string_view text, platform::Seconds now);

// The moment so many days before `now`; nothing if the calendar has none.
[[nodiscard]] std::optional<platform::LocalTime> daysBefore(double days, platform::Seconds now);

// --- For whoever looks ------------------------------------------------------------------------------------

[[nodiscard]] bool isPattern(std::string_view typed) noexcept;

// The pattern (db/jetLike.h) of what was typed, in which only * and ? have a meaning. Names have the internal
// form.
enum class Form { name, plain };
[[nodiscard]] std::string likePattern(std::string_view typed, Form form);

// The condition of a statement that extension and owner make, such as ` and owner="me"`; empty for none.
[[nodiscard]] std::string textConditions(const Conditions& conditions);

} // namespace modFind
