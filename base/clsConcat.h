#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Builds a long text from many small pieces in a buffer that grows ahead of need. Counts characters; texts
// are passed as UTF-8.
class clsConcat {
public:
    // Empties the builder.
    void ReInit();

    // The built text. After a piece that did not fit (see SConcat), it may be shorter than the pieces
    // together.
    [[nodiscard]] std::string GetString() const;

    // Fills the buffer with the text and spare room. Odd on purpose: the count of used characters does not
    // change, so SConcat on a new builder then overwrites the text.
    void SetString(std::string_view text);

    // Appends the text. Odd on purpose: a piece of more than 15000 characters that is no longer than the text
    // so far is cut to the room that one growth step adds, but counted in full. Throws 6 if the count exceeds
    // the 32-bit range.
    void SConcat(std::string_view text);

private:
    std::u32string buffer_; // padded with NUL characters
    std::int32_t used_ = 0;
};
