#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What depends on the user's regional settings.
namespace platform {

struct NumberSeparators {
    std::string grouping; // "," if the region does not say; may be empty or have more than one byte
    std::string decimal;  // "." if the region does not say
};

// The separators of the user's regional settings, read from the environment once per process.
[[nodiscard]] const NumberSeparators& numberSeparators();

// Never more than one letter.
[[nodiscard]] char32_t lowerCaseLetter(char32_t letter);

// Appends the text in lower case, letter by letter.
void appendLowerCase(std::string& result, std::string_view text);
[[nodiscard]] std::string lowerCase(std::string_view text);

// True if the system treats file names that differ only in case as the same. The program then compares texts
// in the same way, in the database and elsewhere.
[[nodiscard]] bool namesIgnoreCase() noexcept;

// Below 0, 0 or above 0: compares two texts by their letters in lower case.
[[nodiscard]] int compareIgnoringCase(std::string_view left, std::string_view right);

// Below 0, 0 or above 0: the order in which the database sorts names and paths; 0 if they are the same to the
// system.
[[nodiscard]] int compareNames(std::string_view left, std::string_view right);

// Whether two names or paths are the same to the system.
[[nodiscard]] bool sameName(std::string_view left, std::string_view right);

// A key that sorts texts, byte by byte, in the alphabetical order of a language (such as "en-GB"), ignoring
// case; with `numbers`, digits are sorted by the number that they form. Nothing if the system has no such
// keys.
[[nodiscard]] std::optional<std::string> sortKey(std::string_view text, std::string_view language,
                                                 bool numbers);

// For containers of names or paths.
struct NameHash {
    [[nodiscard]] std::size_t operator()(std::string_view name) const;
};
struct NameEqual {
    [[nodiscard]] bool operator()(std::string_view left, std::string_view right) const {
        return sameName(left, right);
    }
};

// While an object lives, the C library writes numbers with a decimal point in this thread, whatever the
// region. For libraries that write numbers to files.
class PlainNumbers {
public:
    PlainNumbers();
    ~PlainNumbers(); // NOLINT(performance-trivially-destructible): not on every system
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

private:
    void* previous_ = nullptr;
};

} // namespace platform
