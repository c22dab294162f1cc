#pragma once

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

// Appends the text in lower case, letter by letter (no letter becomes two).
void appendLowerCase(std::string& result, std::string_view text);
[[nodiscard]] std::string lowerCase(std::string_view text);

// While one lives, the C library of this thread writes numbers with a decimal point whatever the region is.
// For libraries that print numbers into files.
class PlainNumbers {
public:
    PlainNumbers();
    ~PlainNumbers();
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

private:
    void* previous_ = nullptr;
};

} // namespace platform
