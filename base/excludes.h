#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/excludePattern.h"

class clsRegSettings;

// The patterns of what shall not be counted.
class Excludes {
public:
    // An empty one, and one that is there already, change nothing.
    void add(std::string_view pattern);
    // Those of a text with one a line; blank lines are skipped.
    void addLines(std::string_view text);

    [[nodiscard]] bool isEmpty() const noexcept { return texts_.empty(); }
    [[nodiscard]] const std::vector<std::string>& texts() const noexcept { return texts_; }

    // A path as the system writes it (see modExcludes::appendNativePath), which is changed. May be called by
    // several threads at once.
    [[nodiscard]] bool take(std::string& nativePath) const;

private:
    std::vector<std::string> texts_;
    std::vector<ExcludePattern> patterns_;
};

namespace modExcludes {

// The drive of an internal path: how long it is there, and how the system writes it, without a separator at
// its end.
struct Drive {
    std::size_t length = 0;
    std::string native;
};
[[nodiscard]] Drive driveOf(std::string_view internalPath);

// Appends an internal path on the drive as the system writes it, without a separator at its end.
void appendNativePath(std::string& result, std::string_view internalPath, const Drive& drive);

// The pattern that only this internal path fits.
[[nodiscard]] std::string patternOf(std::string_view internalPath);

// Section [Excludes] of the INI file: the value of each key is a pattern.
inline constexpr std::string_view section = "Excludes";

// How patterns stand in the file, valid UTF-8 without any kind of line break: bytes that a line cannot hold
// are as internal names have them (platform/paths.h).
[[nodiscard]] std::string toStored(std::string_view pattern);
[[nodiscard]] std::string fromStored(std::string_view stored);

// The first number that is no key there.
[[nodiscard]] std::string freeKey(const clsRegSettings& store);

[[nodiscard]] Excludes load(const clsRegSettings& store);
// Adds one under a key of its own. Throws if the file does not hold it then.
void save(const clsRegSettings& store, std::string_view pattern);

// "3 items were left out by excludes."
[[nodiscard]] std::string leftOutText(std::int64_t items);

} // namespace modExcludes
