#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What depends on the user's regional settings.
namespace platform {

struct NumberSeparators {
    std::string grouping; // "," where the region says nothing; may be empty or more than one byte
    std::string decimal;  // "." where the region says nothing
};

// The separators of the user's regional settings. Read from the environment once per process.
[[nodiscard]] const NumberSeparators& numberSeparators();

// No letter becomes two.
[[nodiscard]] char32_t lowerCaseLetter(char32_t letter);

// Appends the text in lower case, letter by letter.
void appendLowerCase(std::string& result, std::string_view text);
[[nodiscard]] std::string lowerCase(std::string_view text);

// True where the system takes file names that differ in case alone for the same. Texts of the program are
// then compared so too, in the database and out of it.
[[nodiscard]] bool namesIgnoreCase() noexcept;

// Below 0, 0 or above 0: the order of two texts by their letters in lower case.
[[nodiscard]] int compareIgnoringCase(std::string_view left, std::string_view right);

// Whether two names or paths are the same to the system.
[[nodiscard]] bool sameName(std::string_view left, std::string_view right);

// What texts are sorted by, byte by byte, in the alphabetical order of a language (as "en-GB"), whatever the
// letters' case; with `numbers` digits count as the number they make. Nothing where the system has no such
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

// While one lives, the C library of this thread writes numbers with a decimal point whatever the region is.
// For libraries that print numbers into files.
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
